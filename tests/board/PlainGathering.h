#pragma once
// The two passes that gather a layout by layer as they are told, moving one element at a time. The tests hold the
// library against them, and the benchmarks take them as the measure of what the plain way costs.
#include <cstddef>
#include <string>
#include <vector>

#include "drawobj/CBDdrawObj.h"

namespace plain {

template <class KeyOf, class Leads, class Key>
void GatheringPass(std::vector<CBDdrawObj*>& a, KeyOf keyOf, Leads leads, Key last) {
  std::size_t i = 0;
  while (i < a.size()) {
    if (leads(a[i], last)) {
      last = keyOf(a[i]);
      ++i;
      for (std::size_t j = i; j < a.size(); ++j) {
        if (keyOf(a[j]) != last) continue;
        CBDdrawObj* p = a[j];
        a.erase(a.begin() + static_cast<std::ptrdiff_t>(j));
        a.insert(a.begin() + static_cast<std::ptrdiff_t>(i), p);
        ++i;
      }
    }
    ++i;
  }
}

inline std::vector<CBDdrawObj*> Gathered(const CBDdrawObjArray& shapes) {
  std::vector<CBDdrawObj*> a(shapes.begin(), shapes.end());
  const auto number = [](const CBDdrawObj* p) { return p->m_nLayerNumber; };
  GatheringPass(
      a, number, [&](const CBDdrawObj* p, int last) { return number(p) != last; }, -1);
  const auto name = [](const CBDdrawObj* p) { return std::string(p->m_sLayerName.View()); };
  GatheringPass(
      a, name, [&](const CBDdrawObj* p, const std::string& last) { return number(p) == 0 && name(p) != last; },
      std::string());
  return a;
}

}  // namespace plain
