#pragma once
// Designs in which every field that a file can hold has some value.
#include <memory>
#include <random>
#include <set>
#include <string>

#include "save/SaveTestSupport.h"

namespace laminate::test {

class RandomDesign {
 public:
  explicit RandomDesign(unsigned nSeed) : m_random(nSeed) {}

  void Fill(Design& design);
  /// The fields that were given a value: "CBDnet.m_sName".
  const std::set<std::string>& FilledFields() const { return m_filled; }

 private:
  friend class DesignFiller;
  std::mt19937 m_random;
  std::set<std::string> m_filled;
};

}  // namespace laminate::test
