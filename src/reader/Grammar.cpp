#include "reader/Grammar.h"

#include <string>

namespace laminate {

namespace {

[[noreturn]] void Raise(const CECadClsLvl& node, std::string_view sHow, std::string_view sWhat,
                        std::string_view sBehind) {
  throw WithPlatformFailures([&] {
    std::string s = "\"";
    for (const std::string_view part : {node.m_sName.View(), sHow, sWhat, sBehind}) s += part;
    return CInvalidArgException(std::move(s), node.m_nLine);
  });
}

}  // namespace

void RaiseMissingValue(const CECadClsLvl& node, int nToken) {
  Raise(node, "\" has no value ", std::to_string(nToken), {});
}

void RaiseMissingChild(const CECadClsLvl& node, std::string_view sChild) {
  if (sChild.empty()) Raise(node, "\" has no form in it", {}, {});
  Raise(node, "\" has no \"", sChild, "\" in it");
}

CECadClsLvl& RequireChild(const CECadClsLvl& node, std::string_view sName) {
  CECadClsLvl* pChild = FindChild(node, sName);
  if (pChild == nullptr) RaiseMissingChild(node, sName);
  return *pChild;
}

CECadClsLvl& RequireFirstChild(const CECadClsLvl& node) {
  for (CECadClsLvl* pChild : ChildrenOf(node)) {
    if (pChild != nullptr) return *pChild;
  }
  RaiseMissingChild(node, {});
}

double LengthOf(std::string_view s) {
  constexpr double kUnitsPerMillimetre = 100000.0;
  // Nearly every length is a short decimal: its digits are exact in a double, and so is the power of ten, which makes
  // the quotient the exactly rounded value that the long way below finds too.
  constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14};
  constexpr std::size_t kShort = 15;
  const char* p = s.data();
  const char* const end = p + s.size();
  const bool bNegative = p != end && *p == '-';
  if (bNegative) ++p;
  if (p != end && s.size() <= kShort) {
    std::uint64_t digits = 0;
    const char* point = nullptr;
    const char* const first = p;
    for (; p != end; ++p) {
      const unsigned digit = static_cast<unsigned char>(*p) - unsigned{'0'};
      if (digit <= 9) {
        digits = digits * 10 + digit;
      } else if (*p == '.' && point == nullptr) {
        point = p + 1;
      } else {
        break;
      }
    }
    if (p == end && (point == nullptr || end - first > 1)) {
      const double d =
          static_cast<double>(digits) / (point == nullptr ? kUnitsPerMillimetre : kPowersOfTen[end - point]);
      return bNegative ? -d : d;
    }
  }
  const double d = Atof(s);
  return s.find('.') == std::string_view::npos ? d / kUnitsPerMillimetre : d;
}

}  // namespace laminate
