// The commands that save: save, edit, place --into; and where, which says what stands where.
#include "CommandRunner.h"
#include "Json.h"
#include "PlaceInto.h"

namespace {

using Strings = std::vector<std::string>;

struct Saves : CommandTest {
  Saves() {
    folder.Write("b.pcf", kBoard);
    folder.Write("l.ftf", kLibrary);
  }
  std::string Dump(const std::string& sStem) {
    const CommandResult result = run({"dump", sStem + ".pcf", "--ftf", sStem + ".ftf"});
    EXPECT_EQ(result.status, 0) << result.err;
    return result.out;
  }
  static std::string LineOf(const std::string& s, const std::string& sForm) {
    const auto n = static_cast<std::ptrdiff_t>(s.find(sForm));
    return std::to_string(1 + std::count(s.begin(), s.begin() + n, '\n'));
  }
  static std::string Replaced(std::string s, const std::string& sOld, const std::string& sNew) {
    EXPECT_NE(s.find(sOld), std::string::npos) << sOld;
    return s.replace(s.find(sOld), sOld.size(), sNew);
  }
};

TEST_F(Saves, UneditedFilesAreCopies) {
  const CommandResult result = run({"save", "b.pcf", "--ftf", "l.ftf", "-o", "out"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out + result.err, "");
  EXPECT_EQ(folder.Read("out.pcf"), kBoard);
  EXPECT_EQ(folder.Read("out.ftf"), kLibrary);
  EXPECT_EQ(folder.Names(), (Strings{"b.pcf", "l.ftf", "out.ftf", "out.pcf"}));
}

TEST_F(Saves, WithoutALibraryOnlyTheBoardIsSaved) {
  EXPECT_EQ(run({"save", "b.pcf", "-o", "out.pcf"}).status, 0);
  EXPECT_EQ(folder.Names(), (Strings{"b.pcf", "l.ftf", "out.pcf"}));
}

TEST_F(Saves, TheBoardItselfMayBeTheTarget) {
  EXPECT_EQ(run({"save", "b.pcf", "-o", "b"}).status, 0);
  EXPECT_EQ(folder.Read("b.pcf"), kBoard);
  EXPECT_EQ(run({"edit", "b.pcf", "--set", "m_sVersion=2.1", "-o", "b"}).status, 0);
  EXPECT_EQ(folder.Read("b.pcf"), Replaced(kBoard, "(version 2.0)", "(version 2.1)"));
}

TEST_F(Saves, OneInputIsNoTargetForTheOther) {
  std::filesystem::copy(folder / "l.ftf", folder / "x.ftf");
  std::filesystem::create_hard_link(folder / "b.pcf", folder / "y.ftf");
  const CommandResult result = run({"save", "b.pcf", "--ftf", "x.ftf", "-o", "y"});
  EXPECT_EQ(result.status, 2) << result.err;
  EXPECT_EQ(folder.Read("b.pcf"), kBoard);
  EXPECT_EQ(run({"save", "b.pcf", "-o", "-"}).status, 2);
}

TEST_F(Saves, FreshFilesHoldTheSame) {
  EXPECT_EQ(run({"save", "b.pcf", "--ftf", "l.ftf", "-o", "old"}).status, 0);
  EXPECT_EQ(run({"save", "b.pcf", "--ftf", "l.ftf", "--fresh", "-o", "new"}).status, 0);
  EXPECT_NE(folder.Read("new.pcf"), kBoard);
  EXPECT_EQ(folder.Read("new.pcf").find("// a board"), std::string::npos);
  EXPECT_EQ(Dump("new"), Dump("old"));
}

TEST_F(Saves, ABoardThatIsNotWellFormedIsNotSaved) {
  folder.Write("b.pcf", "(pcf\n(header\n");
  EXPECT_EQ(run({"save", "b.pcf", "-o", "out"}).status, 1);
  EXPECT_EQ(folder.Names(), (Strings{"b.pcf", "l.ftf"}));
}

struct Edits : Saves {
  // The board after an edit, and what the command said.
  std::string Edit(const Strings& options) {
    Strings arguments{"edit", "b.pcf", "-o", "out"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const CommandResult result = run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    return folder.Read("out.pcf");
  }
  std::string Refusal(const std::string& sOption, const std::string& sValue, int nStatus = 1) {
    const CommandResult result = run({"edit", "b.pcf", "-o", "out", sOption, sValue});
    EXPECT_EQ(result.status, nStatus) << result.out;
    EXPECT_EQ(folder.Names(), (Strings{"b.pcf", "l.ftf"}));
    return result.err;
  }
};

TEST_F(Edits, MovingTakesThePinsAlong) {
  std::string s = Replaced(kBoard, "(location (pt 100000 250000))", "(location (pt 2.0 3.5))");
  s = Replaced(s, "(pin 1 (pt 50000 250000))", "(pin 1 (pt 1.5 3.5))");
  EXPECT_EQ(Edit({"--move", "R1=2,3.5"}), Replaced(s, "(pin 2 (pt 150000 250000))", "(pin 2 (pt 2.5 3.5))"));
}

std::string WithForms(const std::string& sBoard, const std::string& sForms) {
  const std::size_t n = sBoard.find("(location ");
  return std::string(sBoard).insert(n, "(layout\n(layer (nonConductive Outline)\n" + sForms + ")\n)\n");
}

TEST_F(Edits, MovingAndTurningTakeSurfacesAlong) {
  const auto withSurfaces = [](const std::string& sBoard, const std::string& sPlain, const std::string& sArea) {
    return WithForms(sBoard, "(surface (geometry (surface (vertex " + sPlain +
                                 "))))\n(refer (area (upperHeight 85000) (geometry (surface (vertex " + sArea +
                                 ")))))\n");
  };
  folder.Write("b.pcf", withSurfaces(kBoard, "(pt 2.0 2.5)", "(pt 0.0 2.5)"));
  std::string s = Replaced(kBoard, "(location (pt 100000 250000))", "(location (pt 2.0 3.5))");
  s = Replaced(s, "(pin 1 (pt 50000 250000))", "(pin 1 (pt 1.5 3.5))");
  s = Replaced(s, "(pin 2 (pt 150000 250000))", "(pin 2 (pt 2.5 3.5))");
  EXPECT_EQ(Edit({"--move", "R1=2,3.5"}), withSurfaces(s, "(pt 3.0 3.5)", "(pt 1.0 3.5)"));
  s = Replaced(kBoard, "(angle 90)", "(angle 180)");
  s = Replaced(s, "(pin 1 (pt 50000 250000))", "(pin 1 (pt 1.0 2.0))");
  s = Replaced(s, "(pin 2 (pt 150000 250000))", "(pin 2 (pt 1.0 3.0))");
  EXPECT_EQ(Edit({"--rotate", "R1=180"}), withSurfaces(s, "(pt 1.0 3.5)", "(pt 1.0 1.5)"));
}

TEST_F(Edits, MovingTakesTheMeshesOfSurfacesAlong) {
  folder.Write("b.pcf", WithForms(kBoard,
                                  "(meshplane (geometry (meshplane (vertex (pt 1.0 2.5)) (meshBasePoint (pt 1.0 2.5)) "
                                  "(meshRotatePoint (pt 3.0 2.5)) (submeshplane (submeshparameter (meshParamBasePoint "
                                  "(pt 1.0 3.5)) (meshParamRotatePoint (pt 1.0 2.0)))))))\n"));
  Edit({"--move", "R1=2,4.5"});
  const Json dump = Json::parse(run({"dump", "out.pcf"}).out);
  const Json& surface = dump["m_pBoardContainer"]["m_pComponentArray"][0]["m_pDrawObjArray"][0];
  EXPECT_EQ(surface["m_ptMeshBase"], Json({2.0, 4.5}));
  EXPECT_EQ(surface["m_ptMeshRotate"], Json({4.0, 4.5}));
  EXPECT_EQ(surface["m_ptParamBase"], Json({2.0, 5.5}));
  EXPECT_EQ(surface["m_ptParamRotate"], Json({2.0, 4.0}));
}

TEST_F(Edits, AValueThatNoFormOfAPlainSurfaceCarriesIsRefused) {
  const std::string sBoard = Replaced(kBoard, "(layer (conductive 1)\n",
                                      "(layer (conductive 1)\n(surface (geometry (surface (vertex (pt 0 0)))))\n");
  folder.Write("b.pcf", sBoard);
  const std::string sPath = "m_pBoardContainer.m_pDrawObjArray[0].m_dParamPitch=2";
  EXPECT_NE(Refusal("--set", sPath).find("m_pDrawObjArray[0]: CBDsurface.m_dParamPitch cannot be saved"),
            std::string::npos);
  // Beside an edit that is written.
  EXPECT_EQ(Edit({"--set", sPath, "--remove", "R2", "--allow-loss", "CBDsurface.m_dParamPitch"}),
            Edit({"--remove", "R2"}));
}

TEST_F(Edits, TurningTakesThePinsAlong) {
  std::string s = Replaced(kBoard, "(angle 90)", "(angle 180)");
  s = Replaced(s, "(pin 1 (pt 50000 250000))", "(pin 1 (pt 1.0 2.0))");
  EXPECT_EQ(Edit({"--rotate", "R1=180"}), Replaced(s, "(pin 2 (pt 150000 250000))", "(pin 2 (pt 1.0 3.0))"));
}

TEST_F(Edits, OnTheBackSideTheAngleIsThatOfTheMirroredBoard) {
  // The pin lies 1.5 to the left of the component and 2.25 above it.
  EXPECT_NE(Edit({"--rotate", "R2=90"}).find("(pin 1 (pt 3.75 -0.75))"), std::string::npos);
}

TEST_F(Edits, RenamingTakesAlongEveryReference) {
  std::string s = Replaced(kBoard, "(reference R1)", "(reference \"A B\")");
  s = Replaced(s, "(comp R1 (pin 1))", "(comp \"A B\" (pin 1))");
  EXPECT_EQ(Edit({"--rename", "R1=A B"}), Replaced(s, "(comp R1 (pin 2))", "(comp \"A B\" (pin 2))"));
}

TEST_F(Edits, RenamingANetTakesAlongItsShapes) {
  const std::string s = Replaced(kBoard, "(net GND\n", "(net EARTH\n");
  EXPECT_EQ(Edit({"--rename-net", "GND=EARTH"}), Replaced(s, "(line (net GND)", "(line (net EARTH)"));
}

TEST_F(Edits, RemovingTakesAlongThePinsOfNets) {
  const std::string s = Edit({"--remove", "R1"});
  EXPECT_EQ(s.find("R1"), std::string::npos);
  EXPECT_NE(s.find("(net \"VCC 3V3\"\n(type POWER)\n(pen 1)\n(comp R2 (pin 1))\n)\n"), std::string::npos) << s;
  EXPECT_NE(s.find("(components\n(component (reference R2)"), std::string::npos) << s;
}

TEST_F(Edits, AnyValueCanBeSet) {
  std::string s = Replaced(kBoard, "(part X)", "(part \"x = y\")");
  s = Replaced(s, "(location (pt 1.5 -2.25))", "(location (pt 4.0 5.5))");
  s = Replaced(s, "(pen 2)", "(pen 9)");
  EXPECT_EQ(Edit({"--set", "m_pBoardContainer.m_pComponentArray[R2].m_sPart=x = y",                //
                  "--set", "m_pBoardContainer.m_pComponentArray[1].m_ptLocation=4,5.5",            //
                  "--set", "m_pBoardContainer.m_pNetArray[GND].m_sPen=9",                          //
                  "--set", "m_pBoardContainer.m_pDrawObjArray[0].m_pVertices[1].m_pt=100000,0.5",  //
                  "--set", "m_pBoardContainer.m_pDrawObjArray[0].m_pVertices[1].m_pt=1,0"}),
            s);
}

TEST_F(Edits, EditsAreMadeInTheirOrder) {
  const std::string s = Edit({"--rename", "R1=R3", "--move", "R3=0,0", "--rename", "R3=R4"});
  EXPECT_NE(s.find("(reference R4)"), std::string::npos);
}

TEST_F(Edits, WhatCannotBeDoneIsSaidAndNothingIsWritten) {
  EXPECT_NE(Refusal("--move", "R3=1,2").find("no component 'R3'; did you mean 'R1' or 'R2'?"), std::string::npos);
  EXPECT_NE(Refusal("--rename", "R1=R2").find("there is a component 'R2' already"), std::string::npos);
  EXPECT_NE(Refusal("--rename-net", "GND=NC").find("there is a net 'NC' already"), std::string::npos);
  EXPECT_NE(Refusal("--set", "m_pBoardContainer.m_pComponentArray[R1].m_dAngel=1").find("did you mean 'm_dAngle'"),
            std::string::npos);
  EXPECT_NE(Refusal("--set", "m_pBoardContainer.m_pComponentArray[R1].m_dAngle=east").find("takes a number"),
            std::string::npos);
  EXPECT_NE(Refusal("--set", "m_pBoardContainer.m_pNetArray[7].m_sName=x").find("has 3 elements"), std::string::npos);
  // A value that no form carries.
  const std::string sError = Refusal("--set", "m_pBoardContainer.m_pComponentArray[R1].m_ptMinRect1=1,1");
  EXPECT_NE(sError.find("b.pcf: error: m_pBoardContainer.m_pComponentArray[R1]: CBDcomponent.m_ptMinRect1"),
            std::string::npos)
      << sError;
  for (const auto& [sOption, sValue] : {std::pair("--move", "R1=1"), std::pair("--rotate", "R1=x"),
                                        std::pair("--set", "nothing"), std::pair("--rename", "=R1")}) {
    Refusal(sOption, sValue, 2);
  }
}

TEST_F(Edits, ALossThatIsAllowedIsWarnedOf) {
  const CommandResult result = run({"edit", "b.pcf", "-o", "out", "--allow-loss", "CBDcomponent.m_ptMinRect1", "--set",
                                    "m_pBoardContainer.m_pComponentArray[R1].m_ptMinRect1=1,1"});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.err.find("warning: "), std::string::npos) << result.err;
  EXPECT_EQ(folder.Read("out.pcf"), kBoard);
}

TEST_F(Saves, PlaceAddsTheComponentToTheBoard) {
  const CommandResult result = run({"place", "F0402", "--pcf", "b.pcf", "--ftf", "l.ftf", "--reference", "R9", "--at",
                                    "1,2", "--angle", "30", "--into", "b"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_TRUE(result.out.starts_with("(component (reference R9)\n")) << result.out;
  const std::string s = folder.Read("b.pcf");
  const std::size_t n = s.find("(reference R9)");
  ASSERT_NE(n, std::string::npos);
  EXPECT_GT(n, s.find("(reference R2)"));
  EXPECT_EQ(folder.Read("b.ftf"), kLibrary);
  const std::string sList = run({"components", "b.pcf", "--csv"}).out;
  EXPECT_NE(sList.find("\nR9,,,F0402,A,1,2,30"), std::string::npos) << sList;

  const CommandResult again =
      run({"place", "F0402", "--pcf", "b.pcf", "--ftf", "l.ftf", "--reference", "R9", "--into", "c"});
  EXPECT_EQ(again.status, 1);
  EXPECT_NE(again.err.find("there is a component 'R9' already"), std::string::npos) << again.err;
  EXPECT_EQ(again.out, "");
  EXPECT_EQ(folder.Names(), (Strings{"b.ftf", "b.pcf", "l.ftf"}));
}

TEST_F(Saves, PlaceAddsEveryFootprintOfTheExample) {
  const std::vector<std::string> names = FootprintNames(BytesOf(LAMINATE_EXAMPLE ".ftf"));
  EXPECT_GT(names.size(), 5u);
  for (const std::string& sName : names) {
    for (const char* szSide : {"A", "B"}) {
      EXPECT_GT(ExpectPlacedInto(folder, run, LAMINATE_EXAMPLE, sName, szSide), 1u);
    }
  }
}

TEST_F(Saves, PlaceWarnsOfWhatTheSavedBoardLacks) {
  // The body's first line is on a layer that the board does not have, its area has no height.
  folder.Write("l.ftf", Replaced(Replaced(kLibrary, "(layer Top (type CONDUCTIVE))",
                                          "(layer Top (type CONDUCTIVE))\n(layer Edge (type OUTLINE))"),
                                 "(footprint F0402 (pin 1))",
                                 "(footprint F0402 (heelprint (layout\n"
                                 "(layer (footLayer Nowhere) (line (vertex (pt 0 0) (pt 1 1))))\n"
                                 "(layer (footLayer Edge) (line (vertex (pt 0 0) (pt 2 2)))"
                                 " (area (vertex (pt 0 0) (pt 2 2) (pt 0 2))))\n)))"));
  folder.Write("b.pcf", Replaced(kBoard, "(type OUTLINE)", "(type COMPAREA)"));
  const std::vector<std::string> place{"place", "F0402",       "--pcf", "b.pcf",  "--ftf",
                                       "l.ftf", "--reference", "R9",    "--into", "out"};
  const CommandResult result = run(place);
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.err.find("l.ftf: warning: in the saved board a shape without a layer on the board is left out"),
            std::string::npos)
      << result.err;
  EXPECT_NE(result.err.find("l.ftf: warning: in the saved board an area without height becomes a surface"),
            std::string::npos)
      << result.err;
  const Json components = Json::parse(Dump("out"))["m_pBoardContainer"]["m_pComponentArray"];
  ASSERT_EQ(components.size(), 3u);
  const Json& shapes = components[2]["m_pDrawObjArray"];
  ASSERT_EQ(shapes.size(), 2u);
  for (const Json& shape : shapes) {
    EXPECT_EQ(shape["m_sLayerName"], "Outline");
    EXPECT_EQ(shape["m_sLayerType"], "nonConductive");
    EXPECT_EQ(shape["m_bRefer"], 1);
  }
}

TEST_F(Saves, WhereSaysFileLineAndKind) {
  const CommandResult result = run({"where", "b.pcf", "--ftf", "l.ftf", "R1"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "b.pcf:" + LineOf(kBoard, "(component (reference R1)") + ": component\n");
  EXPECT_EQ(run({"where", "b.pcf", "--ftf", "l.ftf", "F0402"}).out,
            "l.ftf:" + LineOf(kLibrary, "(footprint F0402") + ": footprint\n");
  EXPECT_EQ(run({"where", "b.pcf", "GND"}).out, "b.pcf:" + LineOf(kBoard, "(net GND\n") + ": net\n");
  const CommandResult none = run({"where", "b.pcf", "GDN"});
  EXPECT_EQ(none.status, 1);
  EXPECT_NE(none.err.find("nothing is called 'GDN'; did you mean 'GND'"), std::string::npos) << none.err;
}

}  // namespace
