// The scan for forms against its plain transcription. The first line is the keyword, the second one holds the wanted
// names with commas between them; the rest is the file. What the scan finds is then parsed.
#include "fuzz/FuzzSupport.h"
#include "reader/ReaderTestSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
  laminate::fuzz::Input input(pData, nSize);
  const std::string keyword = input.UpTo('\n');
  const std::string list = input.UpTo('\n');
  const std::string text = input.Rest();
  laminate::fuzz::Input left(reinterpret_cast<const std::uint8_t*>(list.data()), list.size());
  std::vector<std::string> names;
  while (!left.IsEmpty()) names.push_back(left.UpTo(','));
  TextParser parser;
  const auto offsets = parser.Offsets(text, keyword, names);
  laminate::fuzz::Require(offsets == plain::CollectFormOffsets(text, keyword, names));
  for (std::size_t i = 0; i < offsets.size() && i < 4; ++i) {
    laminate::fuzz::RequireSame(parser.At(text, offsets[i]), ToOutcome(plain::ParseFormAt(text, offsets[i])));
  }
  return 0;
}
