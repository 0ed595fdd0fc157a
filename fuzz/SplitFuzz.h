#pragma once
#include "fuzz/FuzzSupport.h"
#include "reader/SplitTestSupport.h"

namespace laminate::fuzz {

/// One or more files, with 0xFF between them, that one root has split one after another.
inline void SplitFiles(const std::uint8_t* pData, std::size_t nSize, bool footprints) {
  BKUtility::GetInstance()->SetDataPath("/data");
  Input input(pData, nSize);
  SplitRoot root;
  do {
    const std::string text = input.UpTo('\xFF');
    const SplitOutcome expected = SplitPlainly(text, footprints, root);
    const SplitOutcome outcome = SplitInMemory(text, footprints, root);
    Require(outcome == expected);
    root = outcome.root;
  } while (!input.IsEmpty());
}

}  // namespace laminate::fuzz
