#include "designdata/DesignDataTestSupport.h"

namespace {

// A package shows as {uver,type,name,[mount forms]}, a mount form as {name,spec,bottom footprint,footprint}.
struct Case {
  const char* name;
  std::string_view text;
  const char* packages;
  const char* unit = "";
};

void Check(const Case& c) {
  SCOPED_TRACE(c.name);
  const auto pData = Loaded(Kind::package, c.text);
  EXPECT_EQ(Show(*pData->m_pPackageArray), c.packages);
  EXPECT_EQ(pData->m_sUnit, c.unit);
  EXPECT_TRUE(pData->GetLoadStatus().IsOk());
}

TEST(PackageFile, EveryLineInEveryBlock) {
  const Case kCases[] = {
      // (unit: any depth
      {"unit outside", "(unit mm)\n", "[]", "mm"},
      {"unit with several brackets", "(unit mm)))\n", "[]", "mm"},
      {"unit without a value", "(unit\n", "[]", ""},
      {"unit in a package", "(package A\n(unit inch)\n)\n", "[{1,,A,[]}]", "inch"},
      {"unit in a mount form", "(package A\n(mountForm m\n(unit inch)\n)\n)\n", "[{1,,A,[{m,,,}]}]", "inch"},
      {"unit quoted", "(unit \"m m\")\n", "[]", "m m"},
      {"the last unit counts", "(unit mm)\n(unit inch)\n", "[]", "inch"},
      {"unit quoted with a bracket", "(unit \"m)\")\n", "[]", "m"},
      // (package: any depth, nothing trimmed
      {"name quoted", "(package \"A B\"\n)\n", "[{1,,A B,[]}]"},
      {"name unquoted with a bracket", "(package A)\n)\n", "[{1,,A),[]}]"},
      {"name quoted with a bracket", "(package \"P(1)\"\n)\n", "[{1,,P(1),[]}]"},
      {"no name", "(package\n)\n", "[{1,,,[]}]"},
      {"empty name", "(package \"\"\n)\n", "[{1,,,[]}]"},
      {"package in a package", "(package A\n(package B\n)\n", "[{1,,B,[]}]"},
      {"package in a mount form", "(package A\n(mountForm m\n(package B\n)\n", "[{1,,B,[]}]"},
      {"package in a nested mount form", "(package A\n(mountForm m\n(mountForm n\n(package B\n)\n", "[{1,,B,[]}]"},
      {"indented keywords", "\t (package A\n \t)\n", "[{1,,A,[]}]"},
      {"keyword not whole", "(packages A\n(pack B\n)\n", "[]"},
      {"keyword of other case", "(Package A\n)\n", "[]"},
      {"keyword not first", "x (package A\n)\n", "[]"},
      {"two elements on a line", "(package A) (type SMD)\n)\n", "[{1,,A),[]}]"},
      // ")"
      {"closing alone", ")\n)\n", "[]"},
      {"closing not first", "(package A\n(type T))\n", "[]"},
      {"closing with text behind", "(package A\n) x\n", "[{1,,A,[]}]"},
      {"two brackets are another keyword", "(package A\n))\n", "[]"},
      {"a second closing does nothing", "(package A\n)\n)\n", "[{1,,A,[]}]"},
      {"never closed", "(package A\n(mountForm m\n)\n", "[]"},
      {"the last one never closed", "(package A\n)\n(package B\n(type T)\n", "[{1,,A,[]}]"},
      // (uver
      {"uver", "(package A\n(uver 7)\n)\n", "[{7,,A,[]}]"},
      {"uver with blanks", "(package A\n(uver 7 )\n)\n", "[{7,,A,[]}]"},
      {"uver without a value", "(package A\n(uver\n)\n", "[{0,,A,[]}]"},
      {"uver no number", "(package A\n(uver x)\n)\n", "[{0,,A,[]}]"},
      {"uver before a package", "(uver 7)\n(package A\n)\n", "[{1,,A,[]}]"},
      {"uver in a mount form", "(package A\n(mountForm m\n(uver 7)\n)\n)\n", "[{7,,A,[{m,,,}]}]"},
      {"uver behind a package", "(package A\n)\n(uver 7)\n", "[{7,,A,[]}]"},
      {"uver quoted", "(package A\n(uver \"7\")\n)\n", "[{7,,A,[]}]"},
      {"uver negative", "(package A\n(uver -3)\n)\n", "[{-3,,A,[]}]"},
      {"uver of more than 32 bits", "(package A\n(uver 4294967297)\n)\n", "[{1,,A,[]}]"},
      {"uver of more than 64 bits", "(package A\n(uver 99999999999999999999)\n)\n", "[{-1,,A,[]}]"},
      // (type
      {"type", "(package A\n(type SMD)\n)\n", "[{1,SMD,A,[]}]"},
      {"type with brackets", "(package A\n(type SMD)))\n)\n", "[{1,SMD,A,[]}]"},
      {"type quoted with a bracket", "(package A\n(type \"SMD(1)\")\n)\n", "[{1,SMD(1,A,[]}]"},
      {"type without a value", "(package A\n(type\n)\n", "[{1,,A,[]}]"},
      {"type before a package", "(type SMD)\n(package A\n)\n", "[{1,,A,[]}]"},
      {"type in a mount form", "(package A\n(mountForm m\n(type SMD)\n)\n)\n", "[{1,SMD,A,[{m,,,}]}]"},
      {"type behind a package", "(package A\n)\n(type SMD)\n", "[{1,SMD,A,[]}]"},
      // (mountForm
      {"mount form", "(package A\n(mountForm m\n)\n)\n", "[{1,,A,[{m,,,}]}]"},
      {"mount form with a bracket", "(package A\n(mountForm m)\n)\n)\n", "[{1,,A,[{m,,,}]}]"},
      {"mount form quoted with a bracket", "(package A\n(mountForm \"m(1)\"\n)\n)\n", "[{1,,A,[{m(1,,,}]}]"},
      {"mount form quoted with a blank", "(package A\n(mountForm \"a b\"\n)\n)\n", "[{1,,A,[{a b,,,}]}]"},
      {"mount form without a name", "(package A\n(mountForm\n)\n)\n", "[{1,,A,[{,,,}]}]"},
      {"several mount forms", "(package A\n(mountForm m\n)\n(mountForm n\n)\n)\n", "[{1,,A,[{m,,,},{n,,,}]}]"},
      {"mount form before a package: its bracket closes nothing", "(mountForm m\n)\n(package A\n)\n", "[{1,,A,[]}]"},
      {"two mount forms before a package", "(mountForm m\n(mountForm n\n)\n)\n(package A\n)\n", "[{1,,A,[]}]"},
      {"mount form in a mount form: no bracket counts any more", "(package A\n(mountForm m\n(mountForm n\n)\n)\n)\n)\n",
       "[]"},
      {"three mount forms deep", "(package A\n(mountForm m\n(mountForm n\n(mountForm o\n)\n)\n)\n)\n)\n", "[]"},
      {"mount form behind a package: the package does not enter twice",
       "(package A\n)\n(mountForm m\n)\n(package B\n)\n", "[{1,,A,[]},{1,,B,[]}]"},
      {"and then a second one can be closed into the package", "(package A\n)\n(mountForm m\n(mountForm n\n)\n)\n)\n",
       "[{1,,A,[{n,,,}]}]"},
      // (footprintRef, (bottomFootprint
      {"footprint", "(package A\n(mountForm m\n(footprintRef \"F G\")\n)\n)\n", "[{1,,A,[{m,,,F G}]}]"},
      {"footprint unquoted", "(package A\n(mountForm m\n(footprintRef F))\n)\n)\n", "[{1,,A,[{m,,,F}]}]"},
      {"footprint quoted with a bracket", "(package A\n(mountForm m\n(footprintRef \"F(1)\")\n)\n)\n",
       "[{1,,A,[{m,,,F(1}]}]"},
      {"footprint without a value", "(package A\n(mountForm m\n(footprintRef F)\n(footprintRef\n)\n)\n",
       "[{1,,A,[{m,,,}]}]"},
      {"footprint without a mount form", "(package A\n(footprintRef F)\n)\n", "[{1,,A,[]}]"},
      {"footprint behind a mount form", "(package A\n(mountForm m\n)\n(footprintRef F)\n)\n", "[{1,,A,[{m,,,}]}]"},
      {"footprint in a nested mount form does not reach the outer one",
       "(package A\n(mountForm m\n(mountForm n\n(footprintRef F)\n)\n)\n(package B\n(mountForm o\n)\n)\n",
       "[{1,,B,[{o,,,}]}]"},
      {"bottom footprint", "(package A\n(mountForm m\n(bottomFootprint \"B C\")\n)\n)\n", "[{1,,A,[{m,,B C,}]}]"},
      {"bottom footprint quoted with a bracket", "(package A\n(mountForm m\n(bottomFootprint \"B(1)\")\n)\n)\n",
       "[{1,,A,[{m,,B(1,}]}]"},
      {"bottom footprint without a value", "(package A\n(mountForm m\n(bottomFootprint B)\n(bottomFootprint\n)\n)\n",
       "[{1,,A,[{m,,,}]}]"},
      {"bottom footprint without a mount form", "(package A\n(bottomFootprint F)\n)\n", "[{1,,A,[]}]"},
      // (spec
      {"spec", "(package A\n(mountForm m\n(spec \"reflow\")\n)\n)\n", "[{1,,A,[{m,reflow,,}]}]"},
      {"spec unquoted", "(package A\n(mountForm m\n(spec reflow))\n)\n)\n", "[{1,,A,[{m,reflow,,}]}]"},
      {"spec empty", "(package A\n(mountForm m\n(spec \"\")\n)\n)\n", "[{1,,A,[{m,default,,}]}]"},
      {"spec quoted with a bracket", "(package A\n(mountForm m\n(spec \"s(1)\")\n)\n)\n", "[{1,,A,[{m,s(1,,}]}]"},
      {"spec of a quoted bracket", "(package A\n(mountForm m\n(spec \")\")\n)\n)\n", "[{1,,A,[{m,default,,}]}]"},
      {"spec of brackets", "(package A\n(mountForm m\n(spec )))\n)\n)\n", "[{1,,A,[{m,default,,}]}]"},
      {"spec without a value", "(package A\n(mountForm m\n(spec\n)\n)\n", "[{1,,A,[{m,default,,}]}]"},
      {"spec outside a mount form", "(package A\n(spec \"s\")\n)\n", "[{1,,A,[]}]"},
      {"spec in a nested mount form",
       "(mountForm a\n(mountForm b\n(mountForm c\n(spec s)\n(package A\n(mountForm m\n)\n)\n", "[{1,,A,[{m,,,}]}]"},
      {"spec outside a package, in the second mount form",
       "(package A\n)\n(mountForm a\n(spec x)\n(mountForm b\n(spec s)\n)\n", "[{1,,A,[{b,s,,}]}]"},
      // anything else
      {"heads and unknown words", "(Japanese_coding: sjis)\nhello\n(package A\n(colour red)\n\"(type\" SMD\n)\n",
       "[{1,SMD,A,[]}]"},
  };
  for (const Case& c : kCases) Check(c);
}

TEST(PackageFile, ReadsAWholeFile) {
  Check({"whole",
         "(Japanese_coding: sjis)\n(unit mm)\n\n"
         "(package \"SOT 23\"\n    (type SMD)\n    (uver 2)\n    (mountForm default\n"
         "        (footprintRef \"SOT23\")\n        (bottomFootprint \"SOT23B\")\n        (spec \"reflow\")\n    )\n"
         "    (mountForm\n        (footprintRef \"SOT23W\")\n        (spec \"flow\")\n    )\n)\n\n"
         "(package \"R\"\n    (type user-defined)\n)\n",
         "[{2,SMD,SOT 23,[{default,reflow,SOT23B,SOT23},{,flow,,SOT23W}]},{1,user-defined,R,[]}]", "mm"});
}

TEST(PackageFile, DefaultsOfRecords) {
  EXPECT_EQ(Show(CVRXoutPackage()), "{1,,UNDEF,[]}");
  EXPECT_EQ(Show(CVRXoutPackageMountForm()), "{default,,,}");
}

TEST(Package, FindsAMountFormByItsSpec) {
  CVRXoutPackage package;
  EXPECT_EQ(package.pGetOutPackageMountFormWithSolderSpec("flow"), nullptr);
  package.vFindSpecWithNameAndNoneCaseRegister("flow");
  package.vFindSpecWithNameAndNoneCaseRegister("flow");
  EXPECT_EQ(Show(*package.m_pMountFormArray), "[{default,flow,,}]");
  package.vFindSpecWithNameAndNoneCaseRegister("Flow");
  package.vFindSpecWithNameAndNoneCaseRegister("");
  EXPECT_EQ(Show(*package.m_pMountFormArray), "[{default,flow,,},{default,Flow,,},{default,,,}]");
  EXPECT_EQ(package.pGetOutPackageMountFormWithSolderSpec("Flow"), package.m_pMountFormArray->GetAt(1));
  EXPECT_EQ(package.pGetOutPackageMountFormWithSolderSpec("FLOW"), nullptr);
  EXPECT_EQ(package.pGetOutPackageMountFormWithSolderSpec(""), package.m_pMountFormArray->GetAt(2));
}

std::string Written(CVRXoutPackage& package) {
  const std::string sStream = StreamText([&](FILE* fp) { return package.nPrint2File(fp); });
  std::string s;
  {
    laminate::TextOut out(s);
    package.Write(out);
  }
  EXPECT_EQ(s, sStream);
  return s;
}

TEST(PackageWriter, WritesEachForm) {
  struct WriterCase {
    const char* name;
    std::string_view text;
    const char* written;
  };
  const WriterCase kCases[] = {
      {"no mount form", "(package \"P\"\n(type DIP)\n(uver 3)\n)\n", "(package \"P\"\n(type DIP)\n(uver 3)\n)\n"},
      {"user-defined", "(package \"P\"\n(type user-defined)\n)\n", "(package \"P\"\n(type UNDEF)\n(uver 1)\n)\n"},
      {"empty type", "(package \"P\"\n)\n", "(package \"P\"\n(type )\n(uver 1)\n)\n"},
      {"empty name", "(package \"\"\n(type SMD)\n)\n", "(package \"\"\n(type UNDEF)\n(uver 1)\n)\n"},
      {"empty name and user-defined", "(package \"\"\n(type user-defined)\n)\n",
       "(package \"\"\n(type UNDEF)\n(uver 1)\n)\n"},
      {"mount forms",
       "(package \"P\"\n(type SMD)\n(mountForm m\n(footprintRef \"F\")\n(bottomFootprint \"B\")\n(spec \"s\")\n)\n"
       "(mountForm n\n)\n)\n",
       "(package \"P\"\n(type SMD)\n(uver 1)\n(mountForm m\n(footprintRef \"F\")\n(bottomFootprint \"B\")\n(spec "
       "\"s\")\n)\n"
       "(mountForm\n(footprintRef \"\")\n(spec \"\")\n)\n)\n"},
      {"percent signs stay as they are", "(package \"100%d\"\n(type %s)\n)\n",
       "(package \"100%d\"\n(type %s)\n(uver 1)\n)\n"},
      {"user-defined in other spelling", "(package \"P\"\n(type User-Defined)\n)\n",
       "(package \"P\"\n(type User-Defined)\n(uver 1)\n)\n"},
      {"user-defined and a blank", "(package \"P\"\n(type \"user-defined \")\n)\n",
       "(package \"P\"\n(type user-defined )\n(uver 1)\n)\n"},
      {"mount forms without names", "(package \"P\"\n(uver -3)\n(mountForm\n)\n(mountForm\n)\n)\n",
       "(package \"P\"\n(type )\n(uver -3)\n(mountForm \n(footprintRef \"\")\n(spec \"\")\n)\n"
       "(mountForm\n(footprintRef \"\")\n(spec \"\")\n)\n)\n"},
      {"a NUL ends the text", "(package \"A\0B\"\n)\n"sv, "(package \"A\"\n(type )\n(uver 1)\n)\n"},
  };
  for (const WriterCase& c : kCases) {
    SCOPED_TRACE(c.name);
    const auto pData = Loaded(Kind::package, c.text);
    ASSERT_EQ(pData->m_pPackageArray->GetSize(), 1);
    EXPECT_EQ(Written(*pData->m_pPackageArray->GetAt(0)), c.written);
    EXPECT_EQ(Written(*pData->m_pPackageArray->GetAt(0)), c.written);  // a second time the same
  }
}

TEST(PackageWriter, MountFormByItsIndex) {
  CVRXoutPackageMountForm form;
  form.m_sSpec = "s";
  EXPECT_EQ(StreamText([&](FILE* fp) { return form.nPrint2File(fp, 0); }),
            "(mountForm default\n(footprintRef \"\")\n(spec \"s\")\n)\n");
  EXPECT_EQ(StreamText([&](FILE* fp) { return form.nPrint2File(fp, 1); }),
            "(mountForm\n(footprintRef \"\")\n(spec \"s\")\n)\n");
  EXPECT_EQ(StreamText([&](FILE* fp) { return form.nPrint2File(fp, 2); }),
            "(mountForm\n(footprintRef \"\")\n(spec \"s\")\n)\n");
  EXPECT_THROW(form.nPrint2File(nullptr, 0), CInvalidArgException);
}

TEST(PackageWriter, NullSlotsDoNotCount) {
  CVRXoutPackage package;
  package.m_pMountFormArray->SetSize(1);
  package.vFindSpecWithNameAndNoneCaseRegister("s");
  EXPECT_EQ(Written(package),
            "(package \"UNDEF\"\n(type )\n(uver 1)\n(mountForm default\n(footprintRef \"\")\n(spec \"s\")\n)\n)\n");
  EXPECT_THROW(package.nPrint2File(nullptr), CInvalidArgException);
}

// What a written package does not bring back.
TEST(PackageWriter, DiffersFromTheReader) {
  const auto pData =
      Loaded(Kind::package, "(package \"P\"\n(type user-defined)\n(mountForm m\n)\n(mountForm n\n(spec \"s\")\n)\n)\n");
  EXPECT_EQ(Show(*pData->m_pPackageArray), "[{1,user-defined,P,[{m,,,},{n,s,,}]}]");
  const auto pAgain = Loaded(Kind::package, Written(*pData->m_pPackageArray->GetAt(0)));
  EXPECT_EQ(Show(*pAgain->m_pPackageArray), "[{1,UNDEF,P,[{m,default,,},{,s,,}]}]");
  // Type and name of a mount form are written without quotes.
  const auto pBlanks = Loaded(Kind::package, "(package \"P\"\n(type \"a b\")\n(mountForm \"c d\"\n)\n)\n");
  EXPECT_EQ(Show(*pBlanks->m_pPackageArray), "[{1,a b,P,[{c d,,,}]}]");
  const auto pCut = Loaded(Kind::package, Written(*pBlanks->m_pPackageArray->GetAt(0)));
  EXPECT_EQ(Show(*pCut->m_pPackageArray), "[{1,a,P,[{c,default,,}]}]");
}

TEST(Package, KeepsTheMountFormsOfAFile) {
  const auto pData = Loaded(Kind::package,
                            "(package P\n(mountForm m\n(footprintRef F)\n(bottomFootprint B)\n(spec s)\n)\n"
                            "(mountForm n\n(spec s)\n)\n)\n");
  CVRXoutPackage& package = *pData->m_pPackageArray->GetAt(0);
  EXPECT_EQ(package.pGetOutPackageMountFormWithSolderSpec("s"), package.m_pMountFormArray->GetAt(0));
  package.vFindSpecWithNameAndNoneCaseRegister("s");
  package.vFindSpecWithNameAndNoneCaseRegister("flow");
  EXPECT_EQ(Show(*package.m_pMountFormArray), "[{m,s,B,F},{n,s,,},{default,flow,,}]");
}

TEST(Package, NeedsItsMountForms) {
  CVRXoutPackage package;
  delete std::exchange(package.m_pMountFormArray, nullptr);
  EXPECT_THROW(package.pGetOutPackageMountFormWithSolderSpec("s"), CInvalidArgException);
  EXPECT_THROW(package.vFindSpecWithNameAndNoneCaseRegister("s"), CInvalidArgException);
  // Nothing is written of it.
  std::string s;
  {
    laminate::TextOut out(s);
    EXPECT_THROW(package.Write(out), CInvalidArgException);
  }
  EXPECT_EQ(s, "");
}

TEST(PackageFile, EachLoadStartsOutside) {
  CPC_BD_OutClsGet data;
  Load(data, Kind::package, "(unit mm)\n(package A\n(mountForm m\n");
  Load(data, Kind::package, "(type T)\n(footprintRef F)\n)\n)\n(package B\n)\n");
  EXPECT_EQ(Show(*data.m_pPackageArray), "[{1,,B,[]}]");
  EXPECT_EQ(data.m_sUnit, "mm");
  Load(data, Kind::package, "(unit inch)\n");
  EXPECT_EQ(data.m_sUnit, "inch");
}

}  // namespace
