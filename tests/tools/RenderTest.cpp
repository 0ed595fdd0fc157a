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
  // A round pad of the connector goes through the board: as far from the left of one picture as from the right of the
  // other.
  const auto xOf = [](const std::string& s) {
    const std::size_t nElement = s.rfind('<', s.find("data-net=\"GND\" data-ref=\"J1\""));
    return std::stod(Values(s.substr(nElement), "cx").at(0));
  };
  const std::string sFront = Svg({"--side", "A"});
  const std::string sBack = Svg({"--side", "B"});
  EXPECT_EQ(Values(sFront, "viewBox"), Values(sBack, "viewBox"));
  const double dWidth = std::stod(Values(sFront, "width").at(0));
  EXPECT_NEAR(xOf(sFront) + xOf(sBack), dWidth, 1e-3);
  EXPECT_LT(xOf(sFront), dWidth / 3);
}

TEST_F(Render, LayersAreChosenByName) {
  EXPECT_EQ(Values(Svg({"--layers", "1,Legend-A"}), "data-layer"), (Strings{"1", "Legend-A", "HOLE"}));
  EXPECT_EQ(Values(Svg({"--layers", "Contour", "--layers", "Notes"}), "data-layer"), (Strings{"Notes", "Contour"}));
  EXPECT_EQ(Values(Svg({"--side", "B", "--layers", "2"}), "data-layer"), (Strings{"2", "HOLE"}))
      << "a layer that is named is drawn, whichever side is seen";
  for (const char* sz : {"", ",", ",,"}) {
    const CommandResult none = run(Call({"--layers", sz, "-o", "x.svg"}));
    EXPECT_EQ(none.status, 2) << sz;
    EXPECT_EQ(none.err, "laminate render: error: --layers names no layer\n");
  }
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
  EXPECT_EQ(run(Call({"--component", "", "-o", "x.svg"})).status, 1) << "not the whole board";
  EXPECT_EQ(folder.Names(), Strings{});
}

TEST_F(Render, TheComponentOfAReferenceIsTheFirstOfThatName) {
  std::string sBoard = kBoard;
  const std::string sSecond = "(component (reference R2)";
  const auto draw = [&](const char* szReference) {
    folder.Write("b.pcf", sBoard);
    const CommandResult result = run({"render", "b.pcf", "--component", szReference, "-o", "-"});
    EXPECT_EQ(result.status, 0) << result.err;
    return result.out;
  };
  EXPECT_EQ(Values(draw("R2"), "viewBox"), Strings{"0 0 10.6 11.1"}) << "one without shapes is a small sheet";
  const std::string sShape = "\n(layout\n(layer (nonConductive Outline)\n(refer (circle 3.0 (pt 0 0)))\n)\n)\n";
  sBoard.insert(sBoard.find(sSecond) + sSecond.size(), sShape);
  EXPECT_EQ(Values(draw("R2"), "viewBox"), Strings{"0 0 6.36 6.66"});
  sBoard.replace(sBoard.find("(reference R1)"), 14, "(reference R2)");
  EXPECT_EQ(Values(draw("R2"), "viewBox"), Strings{"0 0 10.6 11.1"});
  sBoard.replace(sBoard.find("(reference R2)"), 14, "(reference \x95\x5c)");
  EXPECT_EQ(Values(draw("\xE8\xA1\xA8"), "viewBox"), Strings{"0 0 10.6 11.1"}) << "by its name in UTF-8";
  sBoard.replace(sBoard.find("(reference R2)"), 14, "(reference \"\")");
  EXPECT_EQ(Values(draw(""), "viewBox"), Strings{"0 0 6.36 6.66"});
}

TEST_F(Render, NamesOfLayersMayBeGivenInUtf8) {
  std::string sBoard = kBoard;
  for (std::size_t n = 0; (n = sBoard.find("Outline", n)) != std::string::npos;) sBoard.replace(n, 7, "\x95\x5c");
  folder.Write("b.pcf", sBoard);
  const CommandResult result = run({"render", "b.pcf", "--layers", "\xE8\xA1\xA8,1", "-o", "-"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(Values(result.out, "data-layer"), (Strings{"1", "\xE8\xA1\xA8"}));
}

TEST_F(Render, ABoardBeyondAllMeasureIsRefused) {
  std::string sBoard = kBoard;
  sBoard.replace(sBoard.find("(pt 2000000 0)"), 14, "(pt 1e300.0 0)");
  folder.Write("b.pcf", sBoard);
  for (const char* sz : {"a.svg", "a.png", "a.pdf"}) {
    const CommandResult result = run({"render", "b.pcf", "-o", sz});
    EXPECT_EQ(result.status, 1) << sz;
    EXPECT_EQ(result.err, "laminate: error: what is to be drawn lies too far from the origin\n");
  }
  EXPECT_EQ(folder.Names(), Strings{"b.pcf"});
}

TEST_F(Render, TakesTheSettingsOfEveryCommand) {
  folder.Write("b.pcf", kBoard);
  std::filesystem::create_directory(folder / "work");
  EXPECT_EQ(run({"render", "b.pcf", "--log", "log", "--work-dir", "work", "-o", "a.svg"}).status, 0);
  EXPECT_NE(folder.Read("log"), "");
  EXPECT_EQ(folder.Names(), (Strings{"a.svg", "b.pcf", "log", "work"}));
  EXPECT_TRUE(std::filesystem::exists(folder / "work" / "Data")) << "where the board was taken apart";
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
