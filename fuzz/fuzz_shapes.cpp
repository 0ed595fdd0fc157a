// Bytes to a tree, to shapes, to text, and that text to shapes and text again. The first byte chooses the mode of
// writing; the rest is the file. Beside that nothing may crash or leak, the second text is where writing comes to rest:
// what is read of it writes it again.
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include "base/HostInterface.h"
#include "base/TextOut.h"
#include "drawobj/CBDdrawObj.h"
#include "drawobj/DrawObjReader.h"
#include "fuzz/FuzzSupport.h"
#include "reader/CECadCls.h"
#include "reader/MemoryFileSystem.h"

namespace {

struct Quiet : CHostInterface {
  int OnAfxMessageBox(const CString&, UINT, UINT) override { return IDOK; }
};

// What hosts may do with a shape beside writing it.
void Use(CBDdrawObj& shape, int nMode) {
  std::string s;
  laminate::TextOut out(s);
  shape.WriteHeader(out);
  shape.GetLineWidthFromDrawObj(&shape);
  try {
    const std::unique_ptr<CBDdrawObj> pCopy(shape.pCopy());
    if (pCopy == nullptr) return;
    pCopy->vMoveRotate(1.5, -2.5, 30, "B");
    pCopy->vSetScale(0.5);
    pCopy->Write(out, nMode);
  } catch (const CInvalidArgException&) {
    // A round thermal, or what holds one, cannot be copied.
  }
  out.Flush();
}

// Reads the text and writes the shapes that it holds.
std::string Road(const std::string& text, int nMode) {
  MemoryFileSystem memory;
  const laminate::FileSystemScope files(memory);
  memory.files["text"] = text;
  CECadCls reader;
  reader.m_sFileName = "text";
  reader.nParseFile(0);
  CBDdrawObjArray board;
  laminate::ShapeContext context;
  context.nLayerNumber = 3;
  context.sLayerName = "3";
  context.pBoardShapes = &board;
  std::string s;
  laminate::TextOut out(s);
  for (const CECadClsLvl* pNode : *reader.m_pRootArray) {
    try {
      const auto pShape = laminate::ReadDrawObj(*pNode, context);
      if (pShape == nullptr) continue;
      Use(*pShape, nMode);
      pShape->Write(out, nMode);
    } catch (const CInvalidArgException&) {
      // A value is missing.
    }
  }
  out.Flush();
  return s;
}

// Texts that are written as they stand come back only if they are plain words, percent signs double each time, and an
// oval hole may lose the points of its numbers one after the other.
bool ComesToRest(std::string_view text) {
  constexpr std::string_view kOther = "\"%\\/#'";
  const auto isPlain = [kOther](char ch) {
    return ch == '\n' || (ch >= ' ' && ch <= '~' && kOther.find(ch) == std::string_view::npos);
  };
  return std::all_of(text.begin(), text.end(), isPlain) && text.find("ovalHole") == std::string_view::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
  Quiet quiet;
  const CHostInterfaceScope host(quiet);
  laminate::fuzz::Input input(pData, nSize);
  const int nMode = 1 + static_cast<int>(input.Byte() % 3);
  const std::string text = input.Rest();
  const std::string first = Road(text, nMode);
  const std::string second = Road(first, nMode);
  if (ComesToRest(text)) laminate::fuzz::RequireSame(Road(second, nMode), second);
  return 0;
}
