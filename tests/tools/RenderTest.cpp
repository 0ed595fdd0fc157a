#include <set>

#include "CommandRunner.h"

namespace {

using Strings = std::vector<std::string>;

const std::string kExample = LAMINATE_EXAMPLE;

struct Render : CommandTest {
  Strings Call(Strings more) const {
    Strings all{"render", kExample + ".pcf", "--ftf", kExample + ".ftf"};
    all.insert(all.end(), more.begin(), more.end());
    return all;
  }
  std::string Svg(const Strings& more) const {
    Strings call = Call(more);
    call.insert(call.end(), {"-o", "-"});
    const CommandResult result = run(call);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    return result.out;
  }
};

// The values of an attribute, in the order of the text.
Strings Values(const std::string& s, const std::string& sAttribute) {
  Strings values;
  const std::string sBegin = " " + sAttribute + "=\"";
  for (std::size_t n = s.find(sBegin); n != std::string::npos; n = s.find(sBegin, n + 1)) {
    const std::size_t nFrom = n + sBegin.size();
    values.push_back(s.substr(nFrom, s.find('"', nFrom) - nFrom));
  }
  return values;
}

// Elements that are opened and not closed, or closed and not open.
std::string Unbalanced(const std::string& s) {
  Strings open;
  for (std::size_t n = s.find('<'); n != std::string::npos; n = s.find('<', n + 1)) {
    const std::size_t nEnd = s.find('>', n);
    if (nEnd == std::string::npos) return "an open tag";
    const std::string sTag = s.substr(n + 1, nEnd - n - 1);
    if (sTag.front() == '?' || sTag.back() == '/') continue;
    if (sTag.front() == '/') {
      if (open.empty() || open.back() != sTag.substr(1)) return sTag;
      open.pop_back();
    } else {
      open.push_back(sTag.substr(0, sTag.find(' ')));
    }
  }
  return open.empty() ? "" : open.back();
}

TEST_F(Render, SvgHasAGroupForEachLayer) {
  const std::string s = Svg({});
  EXPECT_EQ(Unbalanced(s), "");
  const Strings layers = Values(s, "data-layer");
  EXPECT_EQ(std::set<std::string>(layers.begin(), layers.end()).size(), layers.size()) << "one group for each";
  for (const char* sz :
       {"1", "2", "3", "4", "Legend-A", "Legend-B", "Resist-A", "Stencil-B", "Contour", "Body(A)", "HOLE"}) {
    EXPECT_NE(std::find(layers.begin(), layers.end(), sz), layers.end()) << sz;
  }
  const Strings colours = Values(s, "color");
  EXPECT_EQ(std::set<std::string>(colours.begin(), colours.end()).size(), colours.size());
  const Strings nets = Values(s, "data-net");
  const Strings references = Values(s, "data-ref");
  EXPECT_EQ(std::set<std::string>(nets.begin(), nets.end()).size(), 12u);
  EXPECT_EQ(std::set<std::string>(references.begin(), references.end()).size(), 17u);
  EXPECT_NE(s.find(">BLINKER</text>"), std::string::npos);
  EXPECT_NE(s.find(">10 mm</text>"), std::string::npos);
  EXPECT_NE(s.find(">\xE8\xA1\xA8\xE9\x9D\xA2 A</text>"), std::string::npos) << "text is UTF-8";
}

TEST_F(Render, ASideShowsItsLayersMirroredForTheBack) {
  const Strings front = Values(Svg({"--side", "A"}), "data-layer");
  const Strings back = Values(Svg({"--side", "B"}), "data-layer");
  EXPECT_EQ(front,
            (Strings{"Resist-A", "Stencil-A", "1", "Notes", "Contour", "Body(A)", "Assembly-A", "Legend-A", "HOLE"}));
  EXPECT_EQ(back,
            (Strings{"Resist-B", "Stencil-B", "4", "Notes", "Contour", "Body(B)", "Assembly-B", "Legend-B", "HOLE"}));
  // The test pad TP1 stands at (8.5, 2.5) or so: left in one picture, right in the other.
  EXPECT_EQ(Values(Svg({"--side", "A"}), "viewBox"), Values(Svg({"--side", "B"}), "viewBox"));
}

TEST_F(Render, LayersAreChosenByName) {
  EXPECT_EQ(Values(Svg({"--layers", "1,Legend-A"}), "data-layer"), (Strings{"1", "Legend-A", "HOLE"}));
  EXPECT_EQ(Values(Svg({"--layers", "Contour", "--layers", "Notes"}), "data-layer"), (Strings{"Notes", "Contour"}));
  const CommandResult result = run(Call({"--layers", "1,Legend-C", "-o", "x.svg"}));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err,
            kExample + ".pcf: error: no layer 'Legend-C'; did you mean 'Legend-A', 'Legend-B' or 'Resist-A'?\n");
  EXPECT_EQ(folder.Names(), Strings{});
}

TEST_F(Render, OneComponentAlone) {
  const std::string s = Svg({"--component", "U2"});
  const Strings references = Values(s, "data-ref");
  EXPECT_EQ(std::set<std::string>(references.begin(), references.end()), std::set<std::string>{"U2"});
  EXPECT_NE(s.find(">1 mm</text>"), std::string::npos) << "framed to it";
  const CommandResult result = run(Call({"--component", "U9", "-o", "x.svg"}));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, kExample + ".pcf: error: no component 'U9'; did you mean 'U1', 'U2' or 'U3'?\n");
  EXPECT_EQ(folder.Names(), Strings{});
}

TEST_F(Render, TheFileNameChoosesTheForm) {
  for (const auto& [szFile, szBegin] :
       {std::pair{"a.svg", "<?xml"}, std::pair{"a.PNG", "\x89PNG"}, std::pair{"a.pdf", "%PDF"}}) {
    const CommandResult result = run(Call({"-o", szFile, "--pixels", "300"}));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_TRUE(folder.Read(szFile).starts_with(szBegin)) << szFile;
  }
  // Width and height of the picture stand at a fixed place, most significant byte first.
  const std::string s = folder.Read("a.PNG");
  EXPECT_EQ(static_cast<unsigned char>(s.at(18)) * 256 + static_cast<unsigned char>(s.at(19)), 300);
}

TEST_F(Render, RefusesWhatItCannotRead) {
  for (const Strings& row : {Strings{}, Strings{"-o", "a.gif"}, Strings{"-o", "svg"}, Strings{"-o", ""},
                             Strings{"-o", "a.svg", "--side", "C"}, Strings{"-o", "a.png", "--pixels", "0"},
                             Strings{"-o", "a.png", "--pixels", "100000"}}) {
    const CommandResult result = run(Call(row));
    EXPECT_EQ(result.status, 2) << testing::PrintToString(row);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.err.starts_with("laminate render: error: ")) << result.err;
  }
  EXPECT_EQ(folder.Names(), Strings{});
}

TEST_F(Render, WithoutALibraryPadsAreRingsAndThatIsTold) {
  const CommandResult result = run({"render", kExample + ".pcf", "-o", "a.svg"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err,
            kExample +
                ".pcf: note: 73 pads have no definition in the footprint library (there is no --ftf): each is "
                "drawn as a small ring\n");
  EXPECT_EQ(Unbalanced(folder.Read("a.svg")), "");
}

TEST_F(Render, LeavesNothingOfAnInputThatIsNotWellFormed) {
  folder.Write("b.pcf", "(pcf\n");
  const CommandResult result = run({"render", "b.pcf", "-o", "a.svg"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_NE(result.err.find("b.pcf:1"), std::string::npos) << result.err;
  EXPECT_EQ(folder.Names(), Strings{"b.pcf"});
}

TEST_F(Render, AnOutputThatCannotBeWrittenEndsIt) {
  CommandResult result = run(Call({"-o", "none/a.svg"}));
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.err.starts_with("none/a.svg: error: cannot write: ")) << result.err;
  folder.Write("a.png", "old");
  folder.Write("b.pcf", kBoard);
  // Larger than any piece of the board, and smaller than its pictures.
  run.nFileSize = 1000;
  for (const char* sz : {"a.png", "a.pdf"}) {
    result = run({"render", "b.pcf", "-o", sz});
    EXPECT_EQ(result.status, 1) << sz;
    EXPECT_TRUE(result.err.starts_with(sz + std::string(": error: cannot write: "))) << result.err;
  }
  EXPECT_EQ(folder.Names(), (Strings{"a.png", "b.pcf"}));
  EXPECT_EQ(folder.Read("a.png"), "old");
  // Nor may it be an input.
  run.nFileSize = 0;
  folder.Write("b.svg", kBoard);
  EXPECT_EQ(run({"render", "b.svg", "-o", "b.svg"}).status, 2);
  EXPECT_EQ(folder.Read("b.svg"), kBoard);
}

TEST_F(Render, ABoardIsFramedToItsOutline) {
  folder.Write("b.pcf", kBoard);
  folder.Write("l.ftf", kLibrary);
  const CommandResult result = run({"render", "b.pcf", "--ftf", "l.ftf", "-o", "-"});
  EXPECT_EQ(result.status, 0) << result.err;
  // 20 x 10 mm, three hundredths on each side, a twentieth for the scale.
  EXPECT_EQ(Values(result.out, "viewBox"), Strings{"0 0 21.2 12.2"});
  EXPECT_NE(result.out.find("data-layer=\"Outline\""), std::string::npos);
}

TEST_F(Render, HasAHelpWithAnExample) {
  const CommandResult result = run({"render", "--help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.out.find("Example:\n  laminate render "), std::string::npos) << result.out;
}

}  // namespace
