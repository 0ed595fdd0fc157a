#include "base/TextOut.h"
#include "board/BoardForms.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcomponent.h"
#include "board/CBDlibraryEntities.h"
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
  design.entities.m_aParts.Add("READ");
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

}  // namespace
