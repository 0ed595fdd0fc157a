// A design that is loaded from any bytes, as far as the load comes, is written anew, and reads back to the same; or it
// is refused, and the refusal says of what. The board file ends at the first byte 255, behind which is the footprint
// file.
#include "fuzz/FuzzSupport.h"
#include "save/SaveTestSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
  using laminate::fuzz::Require;
  using laminate::fuzz::RequireSame;
  namespace test = laminate::test;

  laminate::fuzz::Input input(pData, nSize);
  test::DesignTexts source;
  source.sBoard = input.UpTo('\xff');
  source.sFootprints = input.Rest();
  test::Design design;
  test::Load(source, design);
  laminate::SaveLosses losses;
  const test::DesignTexts texts = test::FreshTexts(design, losses);
  for (const laminate::SaveLoss& loss : losses.Refused()) Require(!loss.name.empty() && !loss.reason.empty());
  if (losses.IsRefused()) return 0;
  test::Design again;
  if (!test::Load(texts, again)) {
    std::cerr << again.status.m_sText.View() << "\n" << texts.sBoard << texts.sFootprints;
    std::abort();
  }
  RequireSame(test::Dump(again), test::Dump(design));
  const test::DesignTexts second = test::FreshTexts(again, losses);
  RequireSame(second.sBoard, texts.sBoard);
  RequireSame(second.sFootprints, texts.sFootprints);
  return 0;
}
