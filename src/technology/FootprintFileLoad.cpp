#include "technology/FootprintFileLoad.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>

#include "base/CException.h"
#include "base/TextOut.h"
#include "reader/CECadCls.h"
#include "reader/FormReader.h"
#include "reader/LineReader.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDtechnologyContainer.h"
#include "technology/LibraryForms.h"

namespace laminate {

namespace {

// Lines of the log, each flushed at once. The stream is that which the host has set by then.
class LoadLog {
 public:
  explicit LoadLog(std::FILE* const* pLogFile) : m_pLogFile(pLogFile) {}
  template <PrintFormat kFormat, class... Args>
  void Line(const Args&... args) const {
    std::FILE* fp = m_pLogFile == nullptr ? nullptr : *m_pLogFile;
    if (fp == nullptr) return;
    PrintTo(fp, [&](TextOut& out) { out.Print<kFormat>(args...); });
    std::fflush(fp);
  }

 private:
  std::FILE* const* m_pLogFile;
};

// The line in the file of a line that is counted from a form on; 0 where either is unknown.
int LineOfFile(int nLine, std::optional<int> linesBefore) {
  return nLine == 0 || !linesBefore ? 0 : nLine + *linesBefore;
}

// Runs a step of the load; a form that lacks something is told to the status and the host with its line in the file.
// `linesBefore()` gives how many lines stand before those that the forms count.
template <class Step, class LinesBefore>
void Watch(const CString& sPath, LoadStatus& status, Step&& step, LinesBefore&& linesBefore) {
  try {
    step();
  } catch (CInvalidArgException& e) {
    // Every form of a file has a line: without one it is a host's pointer, or what a message box raised.
    if (e.m_nLine != 0) {
      e.m_nLine = LineOfFile(e.m_nLine, linesBefore());
      status.Set(LoadStatus::Result::invalidContent, sPath, e.m_nLine, 0, e.what());
    }
    throw;
  }
}
template <class Step>
void Watch(const CString& sPath, LoadStatus& status, Step&& step) {
  Watch(sPath, status, step, [] { return 0; });
}

void TakeOver(LoadStatus& status, const LoadStatus& ofReader, std::optional<int> linesBefore = 0) {
  if (ofReader.IsOk()) return;
  const int nLine = LineOfFile(ofReader.m_nLine, linesBefore);
  status.Set(ofReader.m_result, ofReader.m_sFile, nLine, ofReader.m_nColumn, ofReader.m_sText);
}

// The children of a section that bear the record's keyword.
template <class Array, class Read>
void ReadRecords(const CECadClsLvl& section, std::string_view sKeyword, Array* pArray, LibraryContext& context,
                 Read&& read) {
  if (pArray == nullptr) AfxThrowInvalidArgException();
  ForEachChild(section, sKeyword, [&](const CECadClsLvl& child) { AppendOwned(*pArray, read(child, context)); });
}

struct Section {
  std::string_view sKeyword;
  void (*read)(const CECadClsLvl&, CBDfootprintContainer&, LibraryContext&);
};

void ReadPads(const CECadClsLvl& node, CBDfootprintContainer& container, LibraryContext& context) {
  ReadRecords(node, "pad", container.m_pPadArray, context, ReadPad);
}
void ReadPadstacks(const CECadClsLvl& node, CBDfootprintContainer& container, LibraryContext& context) {
  ReadRecords(node, "padstack", container.m_pPadstackArray, context, ReadPadstack);
}
void ReadFootprints(const CECadClsLvl& node, CBDfootprintContainer& container, LibraryContext& context) {
  ReadRecords(node, "footprint", container.m_pFootprintArray, context, ReadFootprint);
}

constexpr Section kSections[] = {{"pads", ReadPads}, {"padstacks", ReadPadstacks}, {"footprints", ReadFootprints}};

void ReadContainer(const CECadClsLvl& node, FootprintFileTarget& target, LibraryContext& context, const LoadLog& log) {
  ForEachChild(node, [&](const CECadClsLvl& child) {
    log.Line<"%s\n">(child.m_sName);
    for (const Section& section : kSections) {
      if (child.m_sName.View() == section.sKeyword) section.read(child, target.footprints, context);
    }
  });
}

// How many lines end before an offset of the file, if that can be told; only asked for a fault, which must not be
// hidden by another one.
std::optional<int> LinesBefore(const CString& sPath, ULONGLONG nOffset) {
  try {
    LineReader lines(sPath);
    std::ptrdiff_t nLines = 0;
    ULONGLONG nAt = 0;
    for (std::string_view s; nAt < nOffset && lines.NextBlock(s); nAt += s.size()) {
      s = s.substr(0, static_cast<std::size_t>(std::min<ULONGLONG>(nOffset - nAt, s.size())));
      nLines += std::count(s.begin(), s.end(), '\n');
    }
    if (lines.Error() == 0) return static_cast<int>(nLines);
  } catch (const std::bad_alloc&) {
  }
  return {};
}

void ReadFile(const CECadCls& reader, FootprintFileTarget& target, const LoadLog& log) {
  const CString& sPath = reader.m_sFileName;
  const CECadClsLvl* pRoot = reader.m_pRootArray->pFind("ftf");
  if (pRoot == nullptr) {
    target.status.Set(LoadStatus::Result::notWellFormed, sPath, 0, 0, "the file has no form \"ftf\"");
    return;
  }
  LibraryContext context;
  context.onRecord = [&](const CString& sKeyword, const CString& sName) {
    context.pBoardShapes = target.boardShapes();
    log.Line<"%s-%s\n">(sKeyword, sName);
  };
  Watch(sPath, target.status, [&] {
    log.Line<"Translating technologyContainer to BD Data base\n">();
    if (const CECadClsLvl* p = FindChild(*pRoot, "technologyContainer")) ReadFootprintTechnology(*p, target.technology);
    log.Line<"Translating footprintContainer to BD Data base\n">();
    if (const CECadClsLvl* p = FindChild(*pRoot, "footprintContainer")) ReadContainer(*p, target, context, log);
  });
  log.Line<"Complete Translating FTF file to BD Database\n">();
}

void LoadWhole(const CString& sPath, FootprintFileTarget& target) {
  const LoadLog log(target.pLogFile);
  const auto pReader = std::make_unique<CECadCls>();
  pReader->m_sFileName = sPath;
  log.Line<"FTF file parsing\n">();
  pReader->nParseFile(0);
  log.Line<"Complete FTF file parsing\n">();
  TakeOver(target.status, pReader->m_status);
  ReadFile(*pReader, target, log);
}

void LoadByName(const CString& sPath, CStringArray& arrNames, FootprintFileTarget& target) {
  const auto pReader = std::make_unique<CECadCls>();
  pReader->m_sFileName = sPath;
  pReader->vCollectFormOffsets("footprint", arrNames);
  TakeOver(target.status, pReader->m_status);
  if (target.footprints.m_pFootprintArray == nullptr) AfxThrowInvalidArgException();

  LibraryContext context;
  context.bWhole = false;
  context.onRecord = [&](const CString&, const CString&) { context.pBoardShapes = target.boardShapes(); };
  FormReader forms(*pReader);
  for (const ULONGLONG nOffset : pReader->m_arrOffset) {
    const std::unique_ptr<CECadClsLvl> pNode = forms.At(nOffset);
    const auto linesBefore = [&] { return LinesBefore(sPath, nOffset); };
    if (target.status.IsOk() && !pReader->m_status.IsOk()) {
      TakeOver(target.status, pReader->m_status, linesBefore());
    }
    if (pNode == nullptr) continue;
    Watch(
        sPath, target.status,
        [&] { AppendOwned(*target.footprints.m_pFootprintArray, ReadFootprint(*pNode, context)); }, linesBefore);
  }
}

void LoadPads(const CString& sPath, FootprintFileTarget& target) {
  const auto pReader = std::make_unique<CECadCls>();
  pReader->m_sFileName = sPath;
  LibraryContext context;
  context.bWhole = false;
  context.onRecord = [&](const CString&, const CString&) { context.pBoardShapes = target.boardShapes(); };
  // One form at a time is in memory.
  const auto withForm = [&](const char* szName, auto&& read) {
    pReader->m_pRootArray->DeleteAll();
    pReader->nParseNamedForm(szName);
    TakeOver(target.status, pReader->m_status);
    const CECadClsLvl* pForm = pReader->m_pRootArray->pFind(szName);
    if (pForm != nullptr) Watch(sPath, target.status, [&] { read(*pForm); });
  };
  withForm("technologyContainer", [&](const CECadClsLvl& form) { ReadFootprintTechnology(form, target.technology); });
  withForm("pads", [&](const CECadClsLvl& form) { ReadPads(form, target.footprints, context); });
  withForm("padstacks", [&](const CECadClsLvl& form) { ReadPadstacks(form, target.footprints, context); });
}

}  // namespace

void LoadFootprintFile(const CString& sPath, FootprintFileTarget& target) {
  WithPlatformFailures([&] { LoadWhole(sPath, target); });
}

void ReadFootprintFile(const CECadCls& reader, FootprintFileTarget& target) {
  WithPlatformFailures([&] {
    TakeOver(target.status, reader.m_status);
    ReadFile(reader, target, LoadLog(nullptr));
  });
}

void LoadFootprintsByName(const CString& sPath, CStringArray& arrNames, FootprintFileTarget& target) {
  WithPlatformFailures([&] { LoadByName(sPath, arrNames, target); });
}

void LoadPadsAndPadstacks(const CString& sPath, FootprintFileTarget& target) {
  WithPlatformFailures([&] { LoadPads(sPath, target); });
}

}  // namespace laminate
