#pragma once
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "base/HostInterface.h"
#include "reader/CECadCls.h"
#include "reader/MemoryFileSystem.h"
#include "reader/PlainReader.h"

/// Keeps the texts of the boxes that are shown.
class BoxRecorder : public CHostInterface {
 public:
  int OnAfxMessageBox(const CString& sText, UINT, UINT) override {
    texts.emplace_back(sText.View());
    return IDOK;
  }
  int OnMessageBox(HWND, const CString& sText, const CString&, UINT nType) override {
    return OnAfxMessageBox(sText, nType, 0);
  }
  std::vector<std::string> texts;
};

/// A form as text: `name/level@line[value,value]{child}{child}`.
inline std::string Show(const CECadClsLvl& node) {
  std::string s(node.m_sName.View());
  s += "/" + std::to_string(node.m_nLevel) + "@" + std::to_string(node.m_nLine) + "[";
  for (const CString& value : node.m_arrValues) {
    s += value.View();
    s += ",";
  }
  s += "]";
  for (const CECadClsLvl* child : *node.m_pChildren) s += "{" + Show(*child) + "}";
  return s;
}
inline std::string Show(const plain::Node& node) {
  std::string s = node.name + "/" + std::to_string(node.level) + "@" + std::to_string(node.line) + "[";
  for (const std::string& value : node.values) s += value + ",";
  s += "]";
  for (const auto& child : node.children) s += "{" + Show(*child) + "}";
  return s;
}

/// A form as short text: `name[value,value]{child}`. A value that is empty stands as `''`.
inline std::string Brief(const CECadClsLvl& node) {
  std::string s(node.m_sName.View());
  s += "[";
  for (INT_PTR i = 0; i < node.m_arrValues.GetSize(); ++i) {
    if (i > 0) s += ",";
    s += node.m_arrValues[i].IsEmpty() ? "''" : node.m_arrValues[i].View();
  }
  s += "]";
  for (const CECadClsLvl* child : *node.m_pChildren) s += "{" + Brief(*child) + "}";
  return s;
}
inline std::string Brief(const CECadClsLvlArray& nodes) {
  std::string s;
  for (const CECadClsLvl* node : nodes) s += "{" + Brief(*node) + "}";
  return s;
}

/// What a parse gave, in a form that can be compared.
struct Outcome {
  int result = 0;
  std::string forms;
  std::vector<std::string> messages;
  int lineNo = 0;
  bool operator==(const Outcome&) const = default;
};
inline std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
  out << outcome.result << " after line " << outcome.lineNo << ": " << outcome.forms;
  for (const std::string& s : outcome.messages) out << " | " << s;
  return out;
}

inline Outcome ToOutcome(const plain::Parsed& parsed) {
  Outcome outcome{parsed.result, "", parsed.messages, parsed.lineNo};
  for (const auto& node : parsed.roots) outcome.forms += "{" + Show(*node) + "}";
  return outcome;
}

/// Runs the reader on a text that is kept in memory.
class TextParser {
 public:
  TextParser() : m_files(m_memory), m_host(m_boxes) {}

  Outcome File(const std::string& text, bool bQuoteEndsAtLineEnd = false, bool bStopAtFormEnd = false,
               laminate::Diagnostics* pDiagnostics = nullptr) {
    CECadCls& reader = Prepare(text, pDiagnostics);
    reader.m_bStopAtFormEnd = bStopAtFormEnd;
    return Take(reader.nParseFile(bQuoteEndsAtLineEnd));
  }
  Outcome Named(const std::string& text, const std::string& name, laminate::Diagnostics* pDiagnostics = nullptr) {
    CECadCls& reader = Prepare(text, pDiagnostics);
    return Take(reader.nParseNamedForm(CString(name)));
  }
  Outcome At(const std::string& text, ULONGLONG nOffset, laminate::Diagnostics* pDiagnostics = nullptr) {
    CECadCls& reader = Prepare(text, pDiagnostics);
    const std::unique_ptr<CECadClsLvl> node(reader.pParseFormAt(nOffset));
    Outcome outcome = Take(0);
    if (node != nullptr) outcome.forms = "{" + Show(*node) + "}";
    return outcome;
  }
  std::vector<unsigned long long> Offsets(const std::string& text, const std::string& keyword,
                                          const std::vector<std::string>& names) {
    CECadCls& reader = Prepare(text, nullptr);
    CStringArray arrNames;
    for (const std::string& name : names) arrNames.Add(CString(name));
    reader.vCollectFormOffsets(CString(keyword), arrNames);
    return {reader.m_arrOffset.begin(), reader.m_arrOffset.end()};
  }
  /// The reader of the last parse.
  CECadCls& Reader() { return *m_reader; }
  /// The texts of the boxes since the last parse of this object began.
  std::vector<std::string>& Boxes() { return m_boxes.texts; }
  MemoryFileSystem& Files() { return m_memory; }

 private:
  CECadCls& Prepare(const std::string& text, laminate::Diagnostics* pDiagnostics) {
    m_memory.files["text"] = text;
    m_boxes.texts.clear();
    m_reader = std::make_unique<CECadCls>();
    m_reader->m_sFileName = "text";
    m_reader->m_pDiagnostics = pDiagnostics;
    return *m_reader;
  }
  Outcome Take(int nResult) {
    Outcome outcome{nResult, "", m_boxes.texts, m_reader->m_nLineNo};
    for (const CECadClsLvl* node : *m_reader->m_pRootArray) outcome.forms += "{" + Show(*node) + "}";
    return outcome;
  }

  MemoryFileSystem m_memory;
  BoxRecorder m_boxes;
  std::unique_ptr<CECadCls> m_reader;
  laminate::FileSystemScope m_files;
  CHostInterfaceScope m_host;
};
