#include "facade/FileCheck.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <vector>

#include "base/CException.h"
#include "base/FileSystem.h"
#include "base/HeldFile.h"
#include "base/HostInterface.h"
#include "designdata/CPC_BD_OutClsGet.h"
#include "facade/CBDesigner.h"
#include "reader/CECadCls.h"

namespace laminate {

namespace {

struct KindName {
  std::string_view name;
  FileKind kind;
};

constexpr KindName kEndings[] = {
    {".pcf", FileKind::board}, {".tcf", FileKind::board},    {".pnf", FileKind::board}, {".ftf", FileKind::footprints},
    {".rul", FileKind::rules}, {".pkf", FileKind::packages}, {".cdf", FileKind::parts}, {".cmp", FileKind::components}};

// The word that begins the first form.
constexpr KindName kFirstWords[] = {
    {"pcf", FileKind::board},        {"tcf", FileKind::board},       {"pnf", FileKind::board},
    {"ftf", FileKind::footprints},   {"design", FileKind::rules},    {"unit", FileKind::packages},
    {"package", FileKind::packages}, {"function", FileKind::parts},  {"pinAssign", FileKind::parts},
    {"part", FileKind::parts},       {"$COMP", FileKind::components}};

const KindName* Find(const KindName* pBegin, const KindName* pEnd, std::string_view s) {
  for (const KindName* p = pBegin; p != pEnd; ++p) {
    if (p->name == s) return p;
  }
  return nullptr;
}

// The first words of the lines of a text, without an opening bracket.
template <class Visit>
void ForEachFirstWord(std::string_view s, Visit&& visit) {
  while (!s.empty()) {
    const std::size_t nEnd = std::min(s.find('\n'), s.size());
    std::string_view line = s.substr(0, nEnd);
    s.remove_prefix(std::min(nEnd + 1, s.size()));
    const std::size_t nFrom = line.find_first_not_of(" \t\r(");
    if (nFrom == std::string_view::npos || line.starts_with("//")) continue;
    line.remove_prefix(nFrom);
    if (visit(line.substr(0, line.find_first_of(" \t\r()\"")))) return;
  }
}

// Passes the message boxes on and remembers them.
class Listener : public CHostInterface {
 public:
  int OnAfxMessageBox(const CString& sText, UINT nType, UINT nIDHelp) override {
    Remember(sText);
    const Outside outside(*this);
    return AfxMessageBox(sText, nType, nIDHelp);
  }
  int OnMessageBox(HWND hOwner, const CString& sText, const CString& sCaption, UINT nType) override {
    Remember(sText);
    const Outside outside(*this);
    return MessageBoxA(hOwner, sText, sCaption, nType);
  }
  void Listen() { m_pScope = std::make_unique<CHostInterfaceScope>(*this); }

  struct Box {
    CString text;
    int count;
  };
  std::vector<Box> boxes;

 private:
  // While a box is passed on, whoever listened before is in charge again.
  class Outside {
   public:
    explicit Outside(Listener& listener) : m_listener(listener) { m_listener.m_pScope.reset(); }
    ~Outside() { m_listener.Listen(); }
    Outside(const Outside&) = delete;
    Outside& operator=(const Outside&) = delete;

   private:
    Listener& m_listener;
  };
  void Remember(const CString& sText) {
    const auto [it, bNew] = m_index.try_emplace(std::string(sText.View()), boxes.size());
    if (bNew) {
      boxes.push_back({sText, 1});
    } else {
      ++boxes[it->second].count;
    }
  }
  std::unordered_map<std::string, std::size_t> m_index;
  std::unique_ptr<CHostInterfaceScope> m_pScope;
};

// Runs a load that tells its outcome by a status and may raise besides.
template <class Load, class Status>
LoadStatus Outcome(const CString& sPath, Load&& load, Status&& getStatus) {
  LoadStatus status;
  try {
    load();
    return getStatus();
  } catch (const CInvalidArgException& e) {
    status = getStatus();
    status.Set(LoadStatus::Result::invalidContent, sPath, e.m_nLine, 0, e.what());
  }
  return status;
}

LoadStatus LoadInto(CBDesigner& root, FileKind kind, const CString& sPath) {
  return Outcome(
      sPath, [&] { kind == FileKind::board ? root.vParsePCF(sPath) : root.vParseFTF(sPath); },
      [&] { return root.GetLoadStatus(); });
}

LoadStatus LoadInto(CPC_BD_OutClsGet& data, FileKind kind, const CString& sPath) {
  return Outcome(
      sPath,
      [&] {
        switch (kind) {
          case FileKind::rules:
            data.vGetOutRufCompAndNetArray(sPath);
            break;
          case FileKind::packages:
            data.vGetOutPackageArray(sPath);
            break;
          case FileKind::parts:
            data.vGetOutPrfPartArray(sPath);
            break;
          default:
            data.vGetOutLcdbCmpCompArray(sPath);
            break;
        }
      },
      [&] { return data.GetLoadStatus(); });
}

}  // namespace

FileKind KindOfFile(const CString& sPath) {
  const std::string_view path = sPath.View();
  const std::size_t nDot = path.rfind('.');
  if (nDot != std::string_view::npos) {
    CString sEnding(path.substr(nDot));
    sEnding.MakeLower();
    if (const KindName* p = Find(std::begin(kEndings), std::end(kEndings), sEnding.View())) return p->kind;
  }
  std::string sContent;
  FileKind kind = FileKind::forms;
  if (ReadWholeFile(sPath, sContent) != 0) return kind;
  ForEachFirstWord(sContent, [&](std::string_view word) {
    // The line that names the coding stands before the first form of several kinds.
    if (word == "Japanese_coding:") return false;
    if (const KindName* p = Find(std::begin(kFirstWords), std::end(kFirstWords), word)) kind = p->kind;
    return true;
  });
  return kind;
}

FileCheck::FileCheck() : m_pDesignData(std::make_unique<CPC_BD_OutClsGet>()) {
  m_pDesignData->SetDiagnostics(&m_remarks);
}

FileCheck::~FileCheck() = default;

LoadStatus FileCheck::Check(const CString& sPath) {
  const HeldFile held(sPath);
  if (held.Result() == 0) return CheckContent(sPath);
  LoadStatus status;
  status.Set(LoadStatus::Result::cannotOpen, sPath, 0, 0,
             CString(std::generic_category().message(-held.Result()).c_str()));
  return status;
}

LoadStatus FileCheck::CheckContent(const CString& sPath) {
  const FileKind kind = KindOfFile(sPath);
  Listener listener;
  listener.Listen();
  LoadStatus status;
  if (kind == FileKind::board || kind == FileKind::footprints || kind == FileKind::forms) {
    CECadCls reader;
    reader.m_sFileName = sPath;
    reader.m_pDiagnostics = &m_remarks;
    reader.nParseFile(0);
    status = reader.m_status;
    if (status.IsOk() && kind != FileKind::forms) {
      CBDesigner root;
      status = LoadInto(root, kind, sPath);
    }
  } else {
    status = LoadInto(*m_pDesignData, kind, sPath);
  }
  // Of a file that is not well formed the fault itself says more than the box.
  if (!status.IsOk()) return status;
  for (const Listener::Box& box : listener.boxes) {
    CString sText = box.text;
    if (box.count > 1) sText.AppendFormat(" (%d times)", box.count);
    m_remarks.Add(Diagnostic::Severity::warning, sPath, 0, 0, sText);
  }
  return status;
}

void FileCheck::ReportUndefinedNames() { m_pDesignData->ReportUndefinedNames(); }

}  // namespace laminate
