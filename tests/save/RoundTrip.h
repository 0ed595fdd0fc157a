#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "save/SaveTestSupport.h"

namespace laminate::test {

inline std::string FirstDifference(const std::string& a, const std::string& b) {
  if (a == b) return {};
  std::size_t nLine = 1;
  std::size_t nBegin = 0;
  for (std::size_t i = 0; i < std::min(a.size(), b.size()) && a[i] == b[i]; ++i) {
    if (a[i] == '\n') {
      ++nLine;
      nBegin = i + 1;
    }
  }
  const auto around = [nBegin](const std::string& s) {
    const std::size_t nFrom = nBegin > 300 ? nBegin - 300 : 0;
    return s.substr(nFrom, nBegin - nFrom + 150);
  };
  return "line " + std::to_string(nLine) + ":\n" + around(a) + "\n---\n" + around(b);
}

/// Writes a design anew, reads it, and writes it once more.
inline void ExpectRoundTrip(const Design& design) {
  SaveLosses losses;
  const DesignTexts texts = FreshTexts(design, losses);
  for (const SaveLoss& loss : losses.Refused()) {
    ADD_FAILURE() << loss.object << " " << loss.name << ": " << loss.reason << " '" << loss.value << "'";
  }
  Design again;
  ASSERT_TRUE(Load(texts, again)) << again.status.m_sText.View() << "\n" << texts.sBoard << texts.sFootprints;
  EXPECT_EQ(FirstDifference(Dump(design), Dump(again)), "") << texts.sBoard << texts.sFootprints;
  const DesignTexts second = FreshTexts(again, losses);
  EXPECT_EQ(FirstDifference(texts.sBoard, second.sBoard), "");
  EXPECT_EQ(FirstDifference(texts.sFootprints, second.sFootprints), "");
}

}  // namespace laminate::test
