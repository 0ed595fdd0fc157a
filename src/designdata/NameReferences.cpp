#include "designdata/NameReferences.h"

#include <algorithm>
#include <set>

namespace laminate {
namespace {

constexpr std::string_view kKindNames[] = {"package", "pin assign", "function", "part"};

// The mentions whose name is not among those of the other list, in order.
template <class Mentions, class Visit>
void ForEachMissing(const Mentions& mentions, const Mentions& others, Visit&& visit) {
  std::set<std::string_view> known;
  for (const auto& m : others) known.insert(m.name);
  for (const auto& m : mentions) {
    if (!known.contains(m.name)) visit(m);
  }
}

// The mentions whose name stands before in the list, too, in order.
template <class Mentions, class Visit>
void ForEachRepeated(const Mentions& mentions, Visit&& visit) {
  std::set<std::string_view> known;
  for (const auto& m : mentions) {
    if (!m.name.empty() && !known.insert(m.name).second) visit(m);
  }
}

CString Sentence(std::string_view sBefore, std::string_view sName, std::string_view sBehind) {
  std::string s(sBefore);
  s += " \"";
  s += sName;
  s += "\" ";
  s += sBehind;
  return CString(std::string_view(s));
}

}  // namespace

void NameReferences::Define(NameKind kind, std::string_view sName, const Place& place) {
  m_names[Index(kind)].defined.push_back({std::string(sName), place});
}

void NameReferences::Refer(NameKind kind, std::string_view sName, const Place& place) {
  if (!sName.empty()) m_names[Index(kind)].referred.push_back({std::string(sName), place});
}

void NameReferences::Report(Diagnostics& diagnostics) const {
  for (std::size_t i = 0; i < std::size(m_names); ++i) {
    ForEachRepeated(m_names[i].defined, [&](const Mention& m) {
      diagnostics.Add(Diagnostic::Severity::warning, m.place.file, m.place.text.line, m.place.text.column,
                      Sentence(kKindNames[i], m.name, "is defined before: that one is found by its name"));
    });
    if (!m_names[i].bKnown) continue;
    ForEachMissing(m_names[i].referred, m_names[i].defined, [&](const Mention& m) {
      diagnostics.Add(Diagnostic::Severity::warning, m.place.file, m.place.text.line, m.place.text.column,
                      Sentence(kKindNames[i], m.name, "is referred to and defined nowhere"));
    });
  }
  const Names& pinAssigns = m_names[Index(NameKind::pinAssign)];
  ForEachMissing(pinAssigns.defined, pinAssigns.referred, [&](const Mention& m) {
    diagnostics.Add(Diagnostic::Severity::warning, m.place.file, m.place.text.line, m.place.text.column,
                    Sentence("pin assign", m.name, "belongs to no part: it is written without ports"));
  });
}

}  // namespace laminate
