// The whole-file parse against its plain transcription. The first byte holds the options; the rest is the file.
#include "fuzz/FuzzSupport.h"
#include "reader/ReaderTestSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
  laminate::fuzz::Input input(pData, nSize);
  const unsigned options = input.Byte();
  const std::string text = input.Rest();
  const bool bQuoteEndsAtLineEnd = (options & 1) != 0;
  const bool bStopAtFormEnd = (options & 2) != 0;
  laminate::Diagnostics diagnostics;
  TextParser parser;
  const Outcome outcome =
      parser.File(text, bQuoteEndsAtLineEnd, bStopAtFormEnd, (options & 4) != 0 ? &diagnostics : nullptr);
  laminate::fuzz::RequireSame(outcome, ToOutcome(plain::ParseFile(text, bQuoteEndsAtLineEnd, bStopAtFormEnd)));
  laminate::fuzz::Require(parser.Reader().m_status.IsOk() == (outcome.result == 0));
  return 0;
}
