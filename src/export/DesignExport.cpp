#include "export/DesignExport.h"

#include <string>
#include <string_view>

#include "base/CException.h"
#include "base/TextOut.h"
#include "base/WholeFile.h"
#include "board/CBDboardContainer.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDparameter.h"
#include "export/CExportFormatter.h"
#include "export/CompanionFiles.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDtechnologyContainer.h"

namespace laminate {
namespace {

constexpr std::string_view kBoardFile = ".pcf";
constexpr std::string_view kFootprintFile = ".ftf";
constexpr std::string_view kTechnologyFile = ".tcf";
constexpr std::string_view kPackageFile = ".pkf";
constexpr std::string_view kPartsFile = ".cdf";
constexpr int kTechnologyIndent = 2;
constexpr int kPackageIndent = 4;

CString Stem(const CString& sPath) {
  std::string_view s = sPath.CView();
  if (s.ends_with(kBoardFile)) s.remove_suffix(kBoardFile.size());
  return CString(s);
}

CString FileName(const CString& sStem, std::string_view sEnding) {
  CString s(sStem);
  s += sEnding;
  return s;
}

// The unit is what the writers' lengths are in; the version is that of the format.
void WriteHeader(TextOut& out) {
  const auto header = Form<"(header\n">(out);
  out.Print<"(version 2.0)\n">();
  out.Print<"(unit MM)\n">();
  out.Print<"(timeZone \"\")\n">();
}

// A technology file has no lengths, and so no unit.
void WriteTechnologyHeader(TextOut& out) {
  const auto header = Form<"(header\n">(out);
  out.Print<"(version 2.0)\n">();
  out.Print<"(timeZone \"\")\n">();
}

void WriteBoardFile(TextOut& out, const ExportSet& set) {
  const auto root = Form<"(pcf\n">(out);
  WriteHeader(out);
  set.pTechnology->Write(out, TechnologySection::board);
  set.pBoard->Write(out);
  set.pParameter->Write(out);
  set.pLibraryEntities->Write(out, *set.pBoard, *set.pFootprints);
}

void WriteFootprintFile(TextOut& out, const ExportSet& set) {
  const auto root = Form<"(ftf\n">(out);
  WriteHeader(out);
  set.pFootprints->Write(out, *set.pTechnology);
}

void WriteTechnologyFile(TextOut& out, const ExportSet& set) {
  const auto root = Form<"(tcf\n">(out);
  WriteTechnologyHeader(out);
  set.pTechnology->Write(out, TechnologySection::board);
}

template <class Writer>
void WriteFile(const CString& sName, Writer&& writer) {
  WholeFile file(sName);
  writer(file.Text());
  file.Commit();
}

// The text passes through the formatter before it reaches the disk, so that no half-way state ever has the file's name.
template <class Writer>
void WriteIndentedFile(const CString& sName, int nIndentWidth, Writer&& writer) {
  std::string sText;
  {
    TextOut out(sText);
    writer(out);
    out.Flush();
  }
  WriteFile(sName, [&](TextOut& out) { IndentText(out, sText, nIndentWidth); });
}

}  // namespace

void ExportDesign(const CString& sPath, const ExportSet& set) {
  if (set.pTechnology == nullptr || set.pBoard == nullptr || set.pParameter == nullptr ||
      set.pLibraryEntities == nullptr || set.pFootprints == nullptr) {
    AfxThrowInvalidArgException();
  }
  const CString sStem = Stem(sPath);
  WriteFile(FileName(sStem, kBoardFile), [&](TextOut& out) { WriteBoardFile(out, set); });
  WriteFile(FileName(sStem, kFootprintFile), [&](TextOut& out) { WriteFootprintFile(out, set); });
  WriteIndentedFile(FileName(sStem, kTechnologyFile), kTechnologyIndent,
                    [&](TextOut& out) { WriteTechnologyFile(out, set); });
  if (set.pPackages != nullptr) {
    WriteIndentedFile(FileName(sStem, kPackageFile), kPackageIndent,
                      [&](TextOut& out) { WritePackageFile(out, *set.pPackages); });
  }
  WriteFile(FileName(sStem, kPartsFile),
            [&](TextOut& out) { WriteComponentDefinitionFile(out, set.pParts, set.pPinAssigns, set.pFunctions); });
}

}  // namespace laminate
