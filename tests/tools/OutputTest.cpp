// Where results go: standard output that is closed, full or a broken pipe, and files that appear whole or not at all.
#include <thread>

#include "CommandRunner.h"

namespace {

struct Output : CommandTest {
  Output() { folder.Write("b.pcf", kBoard); }
  std::vector<std::string> Names(std::vector<std::string> more = {}) {
    more.push_back("b.pcf");
    std::sort(more.begin(), more.end());
    return more;
  }
};

TEST_F(Output, TakesTheResult) {
  const std::string sExpected = run({"nets", "b.pcf"}).out;
  EXPECT_NE(sExpected, "");
  const CommandResult result = run({"nets", "b.pcf", "-o", "nets.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(folder.Read("nets.txt"), sExpected);
  EXPECT_EQ(run({"nets", "b.pcf", "-o", "-"}).out, sExpected);
  EXPECT_EQ(folder.Names(), Names({"nets.txt"}));
}

TEST_F(Output, OfEveryCommandCanGoToAFile) {
  const std::vector<std::string> rows[] = {{"info", "b.pcf"},
                                           {"info", "b.pcf", "--json"},
                                           {"nets", "b.pcf"},
                                           {"nets", "b.pcf", "--json"},
                                           {"components", "b.pcf"},
                                           {"components", "b.pcf", "--csv"},
                                           {"tree", "b.pcf"},
                                           {"check", "b.pcf"},
                                           {"check", "b.pcf", "--json"},
                                           {"dump", "b.pcf"}};
  for (std::vector<std::string> row : rows) {
    const std::string sExpected = run(row).out;
    row.insert(row.end(), {"-o", "out"});
    const CommandResult result = run(row);
    EXPECT_EQ(result.status, 0) << row[0];
    EXPECT_EQ(result.out, "") << row[0];
    EXPECT_EQ(folder.Read("out"), sExpected) << row[0];
    std::filesystem::remove(folder / "out");
  }
}

TEST_F(Output, NewFilesGetTheUsualModeAndOldOnesKeepTheirs) {
  run({"nets", "b.pcf", "-o", "new"});
  const mode_t nMask = umask(0);
  umask(nMask);
  struct stat st {};
  ASSERT_EQ(stat((folder / "new").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 07777, 0666 & ~nMask);
  folder.Write("old", "x");
  std::filesystem::permissions(folder / "old", std::filesystem::perms(0604));
  EXPECT_EQ(run({"nets", "b.pcf", "-o", "old"}).status, 0);
  ASSERT_EQ(stat((folder / "old").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 07777, 0604u);
  EXPECT_NE(folder.Read("old"), "x");
}

TEST_F(Output, LinksAreFollowed) {
  folder.Write("real", "x");
  std::filesystem::create_symlink("real", folder / "link");
  std::filesystem::create_symlink("fresh", folder / "dangling");
  EXPECT_EQ(run({"nets", "b.pcf", "-o", "link"}).status, 0);
  EXPECT_EQ(run({"nets", "b.pcf", "-o", "dangling"}).status, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "dangling"));
  EXPECT_EQ(folder.Read("real"), folder.Read("fresh"));
  EXPECT_NE(folder.Read("real"), "x");
  std::filesystem::create_symlink("loop", folder / "loop");
  EXPECT_EQ(run({"nets", "b.pcf", "-o", "loop"}).status, 1);
}

TEST_F(Output, WhatIsNoRegularFileIsWrittenInPlace) {
  EXPECT_EQ(run({"nets", "b.pcf", "-o", "/dev/null"}).status, 0);
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  std::string sRead;
  std::thread reader([&] { sRead = folder.Read("pipe"); });
  EXPECT_EQ(run({"nets", "b.pcf", "-o", "pipe"}).status, 0);
  reader.join();
  EXPECT_EQ(sRead, run({"nets", "b.pcf"}).out);
  EXPECT_TRUE(std::filesystem::is_fifo(folder / "pipe"));
}

TEST_F(Output, ThatCannotBeWrittenIsStatusOneAndLeavesNothing) {
  std::filesystem::create_directory(folder / "dir");
  for (const std::string sName : {"none/out", "dir", "dir/", "/dev/full"}) {
    const CommandResult result = run({"nets", "b.pcf", "-o", sName});
    EXPECT_EQ(result.status, 1) << sName;
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.err.starts_with(sName + ": error: cannot write: ")) << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
  }
  EXPECT_EQ(folder.Names(), Names({"dir"}));
}

TEST_F(Output, ThatGrowsTooLargeLeavesTheOldFile) {
  folder.Write("out.json", "old");
  run.nFileSize = 4096;
  // The pieces of the board are smaller than that, its dump is not.
  const CommandResult result = run({"dump", "b.pcf", "-o", "out.json"});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.err.starts_with("out.json: error: cannot write: ")) << result.err;
  EXPECT_EQ(folder.Read("out.json"), "old");
  EXPECT_EQ(folder.Names(), Names({"out.json"}));
}

TEST_F(Output, IsNoInput) {
  folder.Write("l.ftf", kLibrary);
  std::filesystem::create_symlink("b.pcf", folder / "alias");
  std::filesystem::create_hard_link(folder / "b.pcf", folder / "second");
  for (const std::vector<std::string>& row :
       {std::vector<std::string>{"nets", "b.pcf", "-o", "b.pcf"},
        {"nets", "b.pcf", "-o", "./b.pcf"},
        {"nets", "b.pcf", "-o", "alias"},
        {"nets", "alias", "-o", "b.pcf"},
        {"nets", "b.pcf", "-o", "second"},
        {"dump", "b.pcf", "--ftf", "l.ftf", "-o", "l.ftf"},
        {"tree", "l.ftf", "-o", "l.ftf"},
        {"check", "b.pcf", "l.ftf", "-o", "l.ftf"},
        {"info", "b.pcf", "-o", "b.pcf"},
        {"components", "b.pcf", "-o", "b.pcf"},
        {"design-data", "--package", "b.pcf", "-o", "b.pcf"},
        {"design-data", "--package", "b.pcf", "--archive-out", "b.pcf"},
        {"design-data", "--package", "b.pcf", "--archive-out", "same", "-o", "same"}}) {
    const CommandResult result = run(row);
    EXPECT_EQ(result.status, 2) << row[0] << " " << row.back();
    EXPECT_EQ(result.out, "");
  }
  EXPECT_EQ(folder.Read("b.pcf"), kBoard);
  EXPECT_EQ(folder.Read("l.ftf"), kLibrary);
}

TEST_F(Output, ToAClosedOrFullStandardOutputIsStatusOne) {
  for (const char* szTarget : {"closed", "/dev/full"}) {
    run.standardOutput = szTarget;
    for (const std::vector<std::string>& row : {std::vector<std::string>{"nets", "b.pcf"},
                                                {"--help"},
                                                {"--version"},
                                                {"nets", "--help"},
                                                {"tree", "b.pcf"},
                                                {"dump", "b.pcf"},
                                                {"check", "b.pcf"}}) {
      const CommandResult result = run(row);
      EXPECT_EQ(result.status, 1) << szTarget << " " << row[0];
      EXPECT_TRUE(result.err.starts_with("standard output: error: cannot write: ")) << result.err;
    }
  }
  // No file that was opened on the way took the place of the closed stream.
  EXPECT_EQ(folder.Read("b.pcf"), kBoard);
  EXPECT_EQ(folder.Names(), Names());
}

TEST_F(Output, ToABrokenPipeIsStatusOne) {
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  run.standardOutput = folder / "pipe";
  // The reader goes away as soon as the command has its end of the pipe.
  std::thread reader([&] { close(open((folder / "pipe").c_str(), O_RDONLY)); });
  const CommandResult result = run({"nets", "b.pcf"});
  reader.join();
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.err.starts_with("standard output: error: cannot write: ")) << result.err;
}

TEST_F(Output, AClosedStandardErrorDoesNoHarm) {
  run.standardError = "closed";
  EXPECT_EQ(run({"nets", "b.pcf"}).status, 0);
  EXPECT_EQ(run({"nets", "none.pcf"}).status, 1);
  EXPECT_EQ(folder.Names(), Names());
}

}  // namespace
