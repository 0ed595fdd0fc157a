#include "board/CBDlibraryEntities.h"

#include <cstdint>
#include <ctime>
#include <random>

#include "base/TextOut.h"
#include "board/BoardForms.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcomponent.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/RecordTestSupport.h"

namespace {

std::string Read(const CECadClsLvl& node) {
  CBDlibraryEntities entities;
  laminate::ReadLibraryEntities(node, entities);
  std::string s = "[" + Str(entities.m_aParts) + "][" + Str(entities.m_aPackages) + "]";
  for (const CBDlibFootprint* p : *entities.m_pLibFootprintArray) s += " F" + Str(p->m_sName) + "/" + Str(p->m_sSide);
  for (const CBDlibPadstack* p : *entities.m_pLibPadstackArray) {
    s += " S" + Str(p->m_sName) + "/" + Str(p->m_sSide) + "/" + Str(p->m_sFlip);
  }
  for (const CBDlibPad* p : *entities.m_pLibPadArray) {
    s += " P" + Str(p->m_sName) + "/" + Str(p->m_sSide) + "/" + Str(p->m_sFlip);
  }
  return s;
}

std::string Entity(const std::string& s) { return "(libraryEntities " + s + ")"; }

TEST(LibraryEntitiesReading, Rows) {
  CheckReading(
      {
          {"nothing", "(libraryEntities)", "[][]"},
          {"names", Entity("(part A) (package K) (part \"B C\") (part A)"), "['A','B C','A']['K']"},
          {"footprints", Entity("(footprint F) (footprint F (side B) (flip X))"), "[][] FF/ FF/B"},
          {"pads", Entity("(pad P) (pad P (side B) (flip X))"), "[][] PP// PP/B/X"},
          {"padstacks", Entity("(padstack V (flip X)) (padstack V (side B))"), "[][] SV//X SV/B/"},
          {"first side counts", Entity("(pad P (side A) (side B))"), "[][] PP/A/"},
          {"unknown", Entity("(foo A) (Part B)"), "[][]"},
          {"no part", Entity("(part)"), "raises \"part\" has no value 1"},
          {"no package", Entity("(package)"), "raises \"package\" has no value 1"},
          {"no footprint", Entity("(footprint (side A))"), "raises \"footprint\" has no value 1"},
          {"no pad", Entity("(pad)"), "raises \"pad\" has no value 1"},
          {"no padstack", Entity("(padstack)"), "raises \"padstack\" has no value 1"},
          {"no side", Entity("(footprint F (side))"), "raises \"side\" has no value 1"},
          {"no side of a pad", Entity("(pad F (side))"), "raises \"side\" has no value 1"},
          {"no flip", Entity("(pad P (flip))"), "raises \"flip\" has no value 1"},
          {"no side of a padstack", Entity("(padstack P (side))"), "raises \"side\" has no value 1"},
          {"no flip of a padstack", Entity("(padstack P (flip))"), "raises \"flip\" has no value 1"},
      },
      Read);
}

TEST(LibraryEntitiesReading, WhatStandsBeforeAFaultStays) {
  Tree tree("(libraryEntities (part A) (footprint F) (pad))");
  CBDlibraryEntities entities;
  EXPECT_NE("", RaisedBy([&] { laminate::ReadLibraryEntities(tree.Form(), entities); }));
  EXPECT_EQ(1, entities.m_aParts.GetSize());
  EXPECT_EQ(1, entities.m_pLibFootprintArray->GetSize());
}

TEST(LibraryEntitiesReading, AnArrayMustBeThereForItsForms) {
  const auto raised = [](auto pArray, const char* szForm) {
    Tree tree(Entity(szForm));
    CBDlibraryEntities entities;
    delete std::exchange(entities.*pArray, nullptr);
    return RaisedBy([&] { laminate::ReadLibraryEntities(tree.Form(), entities); });
  };
  EXPECT_NE("", raised(&CBDlibraryEntities::m_pLibFootprintArray, "(footprint F)"));
  EXPECT_NE("", raised(&CBDlibraryEntities::m_pLibPadstackArray, "(padstack V)"));
  EXPECT_NE("", raised(&CBDlibraryEntities::m_pLibPadArray, "(pad P)"));
  EXPECT_EQ("", raised(&CBDlibraryEntities::m_pLibPadArray, "(part A) (package K) (footprint F) (padstack V)"));
}

struct Design {
  CBDlibraryEntities entities;
  CBDboardContainer board;
  CBDfootprintContainer footprints;

  std::string Text() {
    std::string s;
    laminate::TextOut out(s);
    entities.Write(out, board, footprints);
    out.Flush();
    return s;
  }
  void AddComponent(const char* szPart, const char* szPackage) {
    auto* p = new CBDcomponent;
    p->m_sPart = szPart;
    p->m_sPackage = szPackage;
    board.m_pComponentArray->Add(p);
  }
  template <class Array>
  void AddName(Array& array, const char* szName) {
    array.Add(new std::remove_pointer_t<decltype(array.GetAt(0))>);
    array.GetLastElement()->m_sName = szName;
  }
};

TEST(LibraryEntitiesWriting, ComesFromTheComponentsAndTheLibrary) {
  Design design;
  EXPECT_EQ("(libraryEntities\n)\n", design.Text());
  // What was read is not written.
  Tree tree(Entity("(part READ) (package K) (footprint F) (padstack V) (pad P (side B) (flip X))"));
  laminate::ReadLibraryEntities(tree.Form(), design.entities);
  EXPECT_EQ("(libraryEntities\n)\n", design.Text());
  design.AddComponent("A B", "K");
  design.AddComponent("", "");
  design.board.m_pComponentArray->Add(nullptr);
  design.AddComponent("C", "K");
  design.AddComponent("A B", "L M");
  design.AddComponent("D(1)", "K");
  design.AddName(*design.footprints.m_pFootprintArray, "F 1");
  design.AddName(*design.footprints.m_pFootprintArray, "");
  design.AddName(*design.footprints.m_pFootprintArray, "F 1");
  design.AddName(*design.footprints.m_pPadstackArray, "V");
  design.AddName(*design.footprints.m_pPadArray, "P%s");
  // A name that another group has counts anew.
  design.AddName(*design.footprints.m_pPadArray, "V");
  design.footprints.m_pPadArray->Add(nullptr);
  EXPECT_EQ(
      "(libraryEntities\n(part \"A B\")\n(part C)\n(part \"D(1)\")\n(package K)\n(package L M)\n"
      "(footprint F 1)\n(footprint F 1 (side B))\n(padstack V)\n(padstack V (side B) (flip X))\n"
      "(pad P%s)\n(pad P%s (side B) (flip X))\n(pad V)\n(pad V (side B) (flip X))\n)\n",
      design.Text());
}

TEST(LibraryEntitiesWriting, NamesAreComparedByteByByte) {
  Design design;
  for (const char* szPart : {"A", "a", "A", "A ", "AA", "a"}) design.AddComponent(szPart, "");
  EXPECT_EQ("(libraryEntities\n(part A)\n(part a)\n(part \"A \")\n(part AA)\n)\n", design.Text());
}

TEST(LibraryEntitiesWriting, QuotesPartsAlone) {
  const struct {
    const char* name;
    const char* part;
  } cases[] = {{"E(", "\"E(\""}, {"E)", "\"E)\""}, {"E F", "\"E F\""},
               {"E\tF", "E\tF"}, {"E\"F", "E\"F"}, {"E%%", "E%%"}};
  for (const auto& [name, part] : cases) {
    Design design;
    design.AddComponent(name, name);
    design.AddName(*design.footprints.m_pFootprintArray, name);
    design.AddName(*design.footprints.m_pPadstackArray, name);
    design.AddName(*design.footprints.m_pPadArray, name);
    const std::string s = name;
    // A name of one group counts anew in the next.
    EXPECT_EQ("(libraryEntities\n(part " + std::string(part) + ")\n(package " + s + ")\n(footprint " + s +
                  ")\n(footprint " + s + " (side B))\n(padstack " + s + ")\n(padstack " + s +
                  " (side B) (flip X))\n(pad " + s + ")\n(pad " + s + " (side B) (flip X))\n)\n",
              design.Text());
  }
}

// The groups as they are told, with one list of seen names.
std::string PlainText(Design& design) {
  std::string text = "(libraryEntities\n";
  CStringArray seen;
  const auto eachNew = [&](const auto& array, auto pName, const std::string& keyword, std::string_view signs,
                           const char* szOtherSide) {
    seen.RemoveAll();
    for (const auto* p : array) {
      if (p == nullptr || (p->*pName).IsEmpty() || design.entities.bIsStringInArray(seen, p->*pName) != 0) continue;
      seen.Add(p->*pName);
      const std::string name = Str(p->*pName);
      const std::string quote = name.find_first_of(signs) == std::string::npos ? "" : "\"";
      text += "(" + keyword + " " + quote + name + quote + ")\n";
      if (szOtherSide != nullptr) text += "(" + keyword + " " + name + szOtherSide + ")\n";
    }
  };
  eachNew(*design.board.m_pComponentArray, &CBDcomponent::m_sPart, "part", "() ", nullptr);
  eachNew(*design.board.m_pComponentArray, &CBDcomponent::m_sPackage, "package", "", nullptr);
  eachNew(*design.footprints.m_pFootprintArray, &CBDfootprint::m_sName, "footprint", "", " (side B)");
  eachNew(*design.footprints.m_pPadstackArray, &CBDpadstack::m_sName, "padstack", "", " (side B) (flip X)");
  eachNew(*design.footprints.m_pPadArray, &CBDpad::m_sName, "pad", "", " (side B) (flip X)");
  return text + ")\n";
}

TEST(LibraryEntitiesWriting, EqualsThePlainListsOnRandomDesigns) {
  std::mt19937 random(20241122);
  const char* const names[] = {
      "", "A", "a", "A ", " A", "AA", "B(1)", "B)", "A%", "a part with a long name 1", "a part with a long name 2"};
  const auto name = [&] { return names[random() % std::size(names)]; };
  const auto count = [&](int nRound) { return static_cast<int>(random() % (nRound % 10 == 0 ? 60 : 7)); };
  for (int nRound = 0; nRound < 1000; ++nRound) {
    Design design;
    const auto fill = [&](auto& array) {
      for (int n = count(nRound); n > 0; --n) {
        random() % 8 == 0 ? static_cast<void>(array.Add(nullptr)) : design.AddName(array, name());
      }
    };
    for (int n = count(nRound); n > 0; --n) {
      random() % 8 == 0 ? static_cast<void>(design.board.m_pComponentArray->Add(nullptr))
                        : design.AddComponent(name(), name());
    }
    fill(*design.footprints.m_pFootprintArray);
    fill(*design.footprints.m_pPadstackArray);
    fill(*design.footprints.m_pPadArray);
    ASSERT_EQ(PlainText(design), design.Text()) << "round " << nRound;
  }
}

// Names of which each pair of words stands for the same value of the hash that the standard library's tables use: a
// difference of the first word's top bit, once mixed, is taken back by the second word.
CString CollidingName(unsigned nChoices) {
  constexpr std::uint64_t kTop = std::uint64_t{1} << 63;
  constexpr std::uint64_t kMul = 0xC6A4A7935BD1E995;
  constexpr std::uint64_t kInverse = 0x5F7A0EA7E59B19BD;
  static_assert(kMul * kInverse == 1);
  const auto unmixed = [](std::uint64_t n) {
    n *= kInverse;
    return (n ^ n >> 47) * kInverse;
  };
  std::string s;
  for (int i = 0; i < 16; ++i, nChoices /= 2) {
    for (const std::uint64_t word : {std::uint64_t{1}, std::uint64_t{2}}) {
      const std::uint64_t block = unmixed(nChoices % 2 == 0 ? word : word ^ kTop);
      s.append(reinterpret_cast<const char*>(&block), sizeof block);
    }
  }
  return CString(s);
}

TEST(LibraryEntitiesWriting, TakesLinearTimeWhateverTheNames) {
  // A list of the names that were seen takes minutes, and so does a hash table whose names all fall into one place.
  const auto seconds = [](int nNames, auto nameOf) {
    Design design;
    for (int i = 0; i < nNames; ++i) {
      design.AddName(*design.footprints.m_pPadArray, "");
      design.footprints.m_pPadArray->GetLastElement()->m_sName = nameOf(i);
    }
    const std::clock_t start = std::clock();
    EXPECT_GT(design.Text().size(), static_cast<std::size_t>(nNames) * 20);
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  };
  EXPECT_LT(seconds(200000, [](int i) { return CString(std::to_string(i)); }), 3);
  EXPECT_LT(seconds(65536, [](int i) { return CollidingName(static_cast<unsigned>(i)); }), 3);
}

TEST(LibraryEntitiesWriting, NullArraysAreEmpty) {
  Design design;
  delete std::exchange(design.board.m_pComponentArray, nullptr);
  delete std::exchange(design.footprints.m_pFootprintArray, nullptr);
  delete std::exchange(design.footprints.m_pPadArray, nullptr);
  delete std::exchange(design.footprints.m_pPadstackArray, nullptr);
  EXPECT_EQ("(libraryEntities\n)\n", design.Text());
}

TEST(LibraryEntities, KnowsWhatAListHolds) {
  CBDlibraryEntities entities;
  CStringArray list;
  EXPECT_EQ(0, entities.bIsStringInArray(list, ""));
  list.Add("A");
  EXPECT_EQ(1, entities.bIsStringInArray(list, "A"));
  EXPECT_EQ(0, entities.bIsStringInArray(list, "a"));
}

template <class Object>
void ExpectCopied() {
  Object object;
  EXPECT_EQ("", object.m_sName);
  EXPECT_EQ("", object.m_sSide);
  object.m_sName = "N";
  object.m_sSide = "S";
  if constexpr (requires { object.m_sFlip; }) {
    EXPECT_EQ("", object.m_sFlip);
    object.m_sFlip = "F";
    ExpectInOrder({&object.m_sSide, &object.m_sFlip});
  }
  ExpectInOrder({&object.m_sName, &object.m_sSide});
  const Object copy(object);
  Object assigned;
  assigned = object;
  for (const Object* p : {&copy, static_cast<const Object*>(&assigned)}) {
    EXPECT_EQ("N", p->m_sName);
    EXPECT_EQ("S", p->m_sSide);
    if constexpr (requires { p->m_sFlip; }) {
      EXPECT_EQ("F", p->m_sFlip);
    }
  }
}

TEST(LibraryEntities, StartEmptyAndCopyAsTold) {
  static_assert(!std::is_copy_constructible_v<CBDlibraryEntities> && !std::is_copy_assignable_v<CBDlibraryEntities>);
  static_assert(std::has_virtual_destructor_v<CBDlibraryEntities> && std::has_virtual_destructor_v<CBDlibFootprint> &&
                std::has_virtual_destructor_v<CBDlibPad> && !std::is_polymorphic_v<CBDlibPadstack>);
  const CBDlibraryEntities e;
  EXPECT_TRUE(e.m_aParts.IsEmpty() && e.m_aPackages.IsEmpty());
  ASSERT_TRUE(e.m_pLibFootprintArray != nullptr && e.m_pLibPadstackArray != nullptr && e.m_pLibPadArray != nullptr);
  EXPECT_TRUE(e.m_pLibFootprintArray->IsEmpty() && e.m_pLibPadstackArray->IsEmpty() && e.m_pLibPadArray->IsEmpty());
  ExpectInOrder({&e.m_aParts, &e.m_aPackages, &e.m_pLibFootprintArray, &e.m_pLibPadstackArray, &e.m_pLibPadArray});
  ExpectCopied<CBDlibFootprint>();
  ExpectCopied<CBDlibPad>();
  ExpectCopied<CBDlibPadstack>();
}

}  // namespace
