#pragma once
// What the files of a design cannot hold, found by trying.
#include <functional>
#include <string>
#include <vector>

#include "save/SaveTestSupport.h"

namespace laminate::test {

/// A way to spoil a design that is empty but for what the way itself puts there, and the field that is then refused.
struct Spoiling {
  std::string sField;
  std::function<void(Design&)> spoil;
};
std::vector<Spoiling> Spoilings();

/// docs/save.md: the rules, and a row for each spoiling with the reason that the refusal gives.
std::string LimitsPage();

}  // namespace laminate::test
