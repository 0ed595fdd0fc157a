// A design of any bytes, as far as it loads, drawn whole from both sides, and each of its first footprints placed and
// drawn. The board file ends at the first byte 255, behind which is the footprint file.
#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string_view>

#include "base/BKUtility.h"
#include "base/CException.h"
#include "base/HostInterface.h"
#include "board/CBDcomponent.h"
#include "facade/CBDesigner.h"
#include "fuzz/FuzzSupport.h"
#include "reader/MemoryFileSystem.h"
#include "render/Picture.h"
#include "render/Scene.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"

namespace {

using namespace laminate::cli;
using laminate::fuzz::Require;

struct Silent : CHostInterface {
  int OnAfxMessageBox(const CString&, UINT, UINT) override { return IDOK; }
};

void Draw(const Scene& scene) {
  const Box frame = BoundsOf(scene);
  for (const PictureFormat format : {PictureFormat::svg, PictureFormat::png, PictureFormat::pdf}) {
    std::size_t nBytes = 0;
    try {
      DrawPicture(scene, frame, {.format = format, .pixels = 64},
                  [&nBytes](std::string_view s) { nBytes += s.size(); });
      Require(nBytes > 0);
    } catch (const std::range_error&) {
      Require(nBytes == 0);
    }
  }
}

void PlaceAndDraw(const CBDesigner& root, View side) {
  constexpr INT_PTR kMost = 3;
  const CBDfootprintArray& footprints = *root.m_pFootprintContainer->m_pFootprintArray;
  for (INT_PTR i = 0; i < std::min(kMost, footprints.GetSize()); ++i) {
    Scene scene(root, {.layers = {}, .side = side});
    std::unique_ptr<CBDcomponent> pComponent;
    try {
      pComponent.reset(footprints.GetAt(i)->pGetComponentFromFootprint(
          root.m_pTechnology, side == View::sideB ? "B" : "A", 30, CPointD(1, 2), 2));
    } catch (const CInvalidArgException&) {
      continue;
    }
    scene.AddComponent(*pComponent);
    Draw(scene);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
  laminate::fuzz::Input input(pData, nSize);
  MemoryFileSystem files;
  files.folders = {"/in", "/data"};
  files.files["/in/b.pcf"] = input.UpTo('\xff');
  files.files["/in/b.ftf"] = input.Rest();
  const laminate::FileSystemScope scope(files);
  BKUtility::GetInstance()->SetDataPath("/data");
  Silent silent;
  CHostInterfaceScope host(silent);
  CBDesigner root;
  try {
    root.vParseFTF("/in/b.ftf");
    root.vParsePCF("/in/b.pcf");
  } catch (const CInvalidArgException&) {
  }
  for (const View side : {View::sideA, View::sideB}) {
    Scene scene(root, {.layers = {}, .side = side});
    scene.AddBoard();
    Draw(scene);
    PlaceAndDraw(root, side);
  }
  BKUtility::GetInstance()->SetDataPath(CString());
  return 0;
}
