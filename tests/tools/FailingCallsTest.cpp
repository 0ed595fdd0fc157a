// Each call of the system that the command makes fails once: what stood there before stays as it was, or all that is
// new is there as a whole.
#include <map>

#include "CommandRunner.h"

namespace {

using Strings = std::vector<std::string>;
using Texts = std::map<std::string, std::string>;

const char kParts[] = "(part \"10k, 1%\"\n(packageRef \"P0402\")\n)\n";
const char kPackages[] = "(package \"P0402\"\n)\n";

struct Row {
  const char* name;
  Strings arguments;
};

struct FailingCalls : CommandTest, testing::WithParamInterface<Row> {
  void Restore() const {
    for (const std::string& sName : folder.Names()) std::filesystem::remove_all(folder / sName);
    folder.Write("b.pcf", kBoard);
    folder.Write("b.ftf", kLibrary);
    folder.Write("old.pcf", "old board");
    folder.Write("old.ftf", "old library");
    folder.Write("old.tcf", "old technology");
    folder.Write("p.cdf", kParts);
    folder.Write("p.pkf", kPackages);
    folder.Write("report", "old report");
  }
  Texts All() const {
    Texts texts;
    for (const std::string& sName : folder.Names()) {
      if (sName != "failed") texts[sName] = folder.Read(sName);
    }
    return texts;
  }
};

TEST_P(FailingCalls, LeaveTheOldOrTheNew) {
  Restore();
  const Texts before = All();
  ASSERT_EQ(run(GetParam().arguments).status, 0);
  const Texts after = All();
  ASSERT_NE(before, after);
  run.environment = {{"LD_PRELOAD", LAMINATE_FAILING_CALLS}, {"LAMINATE_FAILED_CALL", (folder / "failed").string()}};
  run.environment.emplace_back("LAMINATE_FAILING_CALL", "");
  int nOld = 0;
  int nNew = 0;
  for (int n = 1; n < 2000; ++n) {
    Restore();
    run.environment.back().second = std::to_string(n);
    const CommandResult result = run(GetParam().arguments);
    if (!std::filesystem::exists(folder / "failed")) {
      // No call is left: all went as it does without failures.
      EXPECT_EQ(result.status, 0) << result.err;
      EXPECT_EQ(All(), after);
      EXPECT_GT(nOld, 20);
      EXPECT_GT(nNew, 0);
      return;
    }
    const std::string sCall = folder.Read("failed");
    SCOPED_TRACE(sCall + ", call " + std::to_string(n) + ": " + result.err);
    Texts texts = All();
    // What cannot be removed stays, but under a name that shows it.
    if (sCall.starts_with("unlink") || sCall == "rmdir" || sCall == "openat") {
      std::erase_if(texts, [](const auto& file) { return file.first.starts_with(".laminate-"); });
    }
    if (result.status == 0) {
      ++nNew;
      EXPECT_EQ(texts, after);
    } else {
      ++nOld;
      EXPECT_EQ(result.status, 1);
      EXPECT_EQ(texts, before);
      EXPECT_TRUE(sCall == "write" || !result.err.empty());
    }
    if (HasFailure()) return;
  }
  FAIL() << "the calls do not end";
}

const Row kRows[] = {
    {"EditInPlace", {"edit", "b.pcf", "--ftf", "b.ftf", "--rename-net", "GND=GROUND", "-o", "b"}},
    {"EditBeside", {"edit", "b.pcf", "--ftf", "b.ftf", "--move", "R1=3,4", "-o", "new"}},
    {"FreshOverOthers", {"save", "b.pcf", "--ftf", "b.ftf", "--fresh", "-o", "old"}},
    {"PlaceInto", {"place", "F0402", "--pcf", "b.pcf", "--ftf", "b.ftf", "--reference", "R9", "--into", "old"}},
    {"PlaceWithRecordAndPicture",
     {"place", "F0402", "--pcf", "b.pcf", "--ftf", "b.ftf", "--reference", "R9", "--into", "b", "-o", "record",
      "--render", "picture.svg"}},
    {"Export",
     {"export", "b.pcf", "--ftf", "b.ftf", "--parts", "p.cdf", "--package", "p.pkf", "--loss-report", "report", "-o",
      "old"}},
    {"ShowAndArchive",
     {"design-data", "--parts", "p.cdf", "--package", "p.pkf", "-o", "report", "--archive-out", "archive"}},
    {"OneOutput", {"dump", "b.pcf", "-o", "old.pcf"}},
};
INSTANTIATE_TEST_SUITE_P(Of, FailingCalls, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
