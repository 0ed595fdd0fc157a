#include "base/ObjectPath.h"

namespace laminate {

std::string ObjectPath::Text() const {
  std::string s;
  for (const Place& place : m_places) {
    if (!s.empty()) s += '.';
    s += place.sField;
    if (place.nIndex < 0) continue;
    s += '[';
    s += place.sName.empty() ? std::to_string(place.nIndex) : std::string(place.sName);
    s += ']';
  }
  return s;
}

}  // namespace laminate
