#include "reader/Grammar.h"

#include <string>

namespace laminate {

void RaiseMissingValue(const CECadClsLvl& node, int nToken) {
  std::string s = "\"";
  s += node.m_sName.View();
  s += "\" has no value ";
  s += std::to_string(nToken);
  throw CInvalidArgException(std::move(s), node.m_nLine);
}

void RaiseMissingChild(const CECadClsLvl& node, std::string_view sChild) {
  std::string s = "\"";
  s += node.m_sName.View();
  s += sChild.empty() ? "\" has no form in it" : "\" has no \"";
  if (!sChild.empty()) {
    s += sChild;
    s += "\" in it";
  }
  throw CInvalidArgException(std::move(s), node.m_nLine);
}

CECadClsLvl& RequireChild(const CECadClsLvl& node, std::string_view sName) {
  CECadClsLvl* pChild = FindChild(node, sName);
  if (pChild == nullptr) RaiseMissingChild(node, sName);
  return *pChild;
}

CECadClsLvl& RequireFirstChild(const CECadClsLvl& node) {
  for (CECadClsLvl* pChild : *node.m_pChildren) {
    if (pChild != nullptr) return *pChild;
  }
  RaiseMissingChild(node, {});
}

double LengthOf(std::string_view s) {
  constexpr double kUnitsPerMillimetre = 100000.0;
  const double d = Atof(s);
  return s.find('.') == std::string_view::npos ? d / kUnitsPerMillimetre : d;
}

}  // namespace laminate
