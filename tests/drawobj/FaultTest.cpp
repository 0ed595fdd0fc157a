// The whole road of a shape under another locale, and with each allocation failing.
#include <gtest/gtest.h>

#include <clocale>

#include "base/AllocationFault.h"
#include "base/CArrayPointD.h"
#include "base/LocaleScope.h"
#include "base/TextOut.h"
#include "drawobj/DrawObjTestSupport.h"
#include "drawobj/Fields.h"

namespace {

using laminate::test::ForEachFailingAllocation;

// One of each class, with texts that do not fit inside a string.
const char* const kShapes[] = {
    "(boardAssembly (subBoard 2) (angle 12.5) (pt 1.25 2.5) (flip \"a text that is not held inside\") (geometry "
    "(circle "
    "1.5) (donut (out 2.5))))",
    "(circle 1.5 (pt 1.25 -2.125))",
    "(delete)",
    "(donut (in 1.5) (out 150000) (pt 1.25 2.5))",
    "(hole (fromTo 1 2) (drillType \"a text that is not held inside\") (geometry (circle 0.35 (pt 1.5 2.5))))",
    "(line (net \"a net that is not held inside\") (geometry (line (vertex (pt 1.5 2.5 (width 0.15) (tarc ON (r 0.5)) "
    "(fillet (filletWidth 0.25) (dir \"a text that is not held inside\"))) (arc \"a text that is not held inside\" (r "
    "1.5) (begin (pt 1.5 2.5 (width 0.1))) (center 0.5 0.5) (end (pt 3.5 4.5))) (pt 5.5 6.5)) (dashLine (dash 1.5)))))",
    "(oblong (width 0.5) (pt 1.5 2.5) (pt 3.5 4.5))",
    "(oval (pt 1.5 2.5) (width 3.5) (height 4.5) (ovalAngle 45.5))",
    "(ovalHole (geometry (oval (pt 1.5 2.5) (width 3.5) (height 4.5) (ovalAngle 45.5))))",
    "(pad \"a pad whose name is not held inside\" (pt 1.5 2.5) (angle 90.5) (geometry (circle 1.5) (oval) "
    "(rectangle)))",
    "(padstack \"a padstack whose name is not held inside\" (net \"a net that is not held inside\") (pt 1.5 2.5) "
    "(fromTo "
    "1 4) (conductive (layerNumber 1 (status \"a text that is not held inside\") (geometry (circle 1.5) (donut))) "
    "(layerNumber 2 (status ON) (geometry (circle 1.5)))))",
    "(rectangle (pt 1.5 2.5) (width 3.5) (height 4.5) (rAngle 12.5) (fillAngle 45.5))",
    "(roundThermal (pt 1.5 2.5) (out 3.5) (bridgeAngle 45))",
    "(squareHole (pt 1.5 2.5) (width 3.5) (height 4.5) (holeAngle 45.5) (r 0.5))",
    "(squareHole (geometry (circle 1.5)))",
    "(squareThermal (pt 1.5 2.5) (out 3.5))",
    "(surface (net \"a net that is not held inside\") (geometry (surface (outlineWidth 0.5) (fillAngle 45.5) (vertex "
    "(pt "
    "1.5 2.5) (pt 3.5 4.5) (pt 5.5 6.5) (pt 7.5 8.5)) (openShape (vertex (pt 1.5 2.5))) (openShape (outlineWidth "
    "0.5)))))",
    "(meshplane (geometry (meshplane (meshPitch 0.5) (meshFlags 1 2 3 4 5 6 7 8) (meshShape \"a text that is not held "
    "inside\") (submeshplane (submeshparameter (meshParamBasePoint (pt 1.5 2.5)))))))",
    "(symbolText (symbolTextType \"a text that is not held inside\") (geometry (text (string \"a text that is not held "
    "inside\") (pt 1.5 2.5))))",
    "(text (geometry (text (string \"a text that is not held inside\") (width 1.5) (textAngle 45.5))))",
    "(text (geometry (text (string (a_word_that_is_not_held_inside)))))",
    "(a_keyword_that_is_not_held_inside)",
};

// What is read of it and all that is written of it.
std::string WholeRoad(const Tree& tree) {
  CBDdrawObjArray board;
  laminate::ShapeContext context = OnLayer3();
  context.pBoardShapes = &board;
  Boxes boxes;
  const auto shape = laminate::ReadDrawObj(tree.Node(), context);
  std::string s = boxes.texts.empty() ? "" : boxes.texts[0];
  s += Text(shape.get());
  s += Text(&board);
  if (shape == nullptr) return s;
  for (const int nMode : {1, 2}) s += Print(*shape, nMode);
  return s;
}

TEST(Locale, TheWholeRoadIsTheSameUnderADecimalComma) {
  for (const char* sz : kShapes) {
    const Tree tree(sz);
    const std::string wanted = WholeRoad(tree);
    const laminate::test::LocaleScope german("de_DE.UTF-8");
    ASSERT_TRUE(german.IsSet());
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    EXPECT_EQ(WholeRoad(tree), wanted) << sz;
    // Parsed under the locale as well.
    const Tree again(sz);
    EXPECT_EQ(WholeRoad(again), wanted) << sz;
  }
}

#ifdef LAMINATE_NO_POOL
constexpr bool kEveryAllocationIsSeen = true;
#else
constexpr bool kEveryAllocationIsSeen = false;
#endif

TEST(Fault, MemoryFailsInReading) {
  for (const char* sz : kShapes) {
    const Tree tree(sz);
    const std::string wanted = WholeRoad(tree);
    struct Quiet : CHostInterface {
      int OnAfxMessageBox(const CString&, UINT, UINT) override { return IDOK; }
    } quiet;
    const CHostInterfaceScope scope(quiet);
    const int nFailures = ForEachFailingAllocation(
        [&] {
          CBDdrawObjArray board;
          laminate::ShapeContext context = OnLayer3();
          context.pBoardShapes = &board;
          laminate::ReadDrawObj(tree.Node(), context);
        },
        [&] { EXPECT_EQ(WholeRoad(tree), wanted); });
    if (kEveryAllocationIsSeen) {
      EXPECT_GT(nFailures, 0) << sz;
    }
  }
}

TEST(Fault, MemoryFailsInCopying) {
  EachShapeClass([]<class T>(const char* szName) {
    if constexpr (!std::is_same_v<T, CBDroundThermal>) {
      T object;
      Fill(object);
      const std::string before = Describe(object);
      const int nFailures = ForEachFailingAllocation(
          [&] {
            delete object.pCopy();
            delete static_cast<CBDdrawObj&>(object).pCopy();
          },
          [&] { EXPECT_EQ(Describe(object), before); });
      if (kEveryAllocationIsSeen) {
        EXPECT_GT(nFailures, 0) << szName;
      }
    }
  });
  EachPartClass([]<class T>(const char* szName) {
    T object;
    Fill(object);
    const int nFailures = ForEachFailingAllocation([&] { delete object.pCopy(); });
    if (kEveryAllocationIsSeen) {
      EXPECT_GT(nFailures, 0) << szName;
    }
  });
}

TEST(Fault, MemoryFailsInConstructing) {
  EachShapeClass([]<class T>(const char* szName) {
    const int nFailures = ForEachFailingAllocation([] { delete new T; });
    if (kEveryAllocationIsSeen) {
      EXPECT_GT(nFailures, 0) << szName;
    }
  });
}

TEST(Fault, MemoryFailsInTheTools) {
  CBDoblong oblong;
  ForEachFailingAllocation([&] { delete oblong.pChangeOblong2Oval(&oblong); });
  ForEachFailingAllocation(
      [&] { delete oblong.GetPtArrayFrom3Points(1, CPointD(5, 0), CPointD(0, 0), CPointD(0, 5)); });
  // A line that is not converted is not deleted.
  auto pLine = std::make_unique<CBDline>();
  pLine->m_pVertices->Add(new CBDvertexPt);
  CBDline any;
  ForEachFailingAllocation([&] {
    const std::unique_ptr<CBDsurface> surface(any.pChangeCBDline2CBDsurface(pLine.get()));
    pLine.release();
    EXPECT_EQ(surface->m_pVertices->GetSize(), 1);
    pLine = std::make_unique<CBDline>();
    pLine->m_pVertices->Add(new CBDvertexPt);
  });
}

TEST(Fault, MemoryFailsInWriting) {
  CBDline line;
  line.m_sNet = "a net that is not held inside, with 100% of it";
  int nFailures = ForEachFailingAllocation(
      [&] {
        CBDline again;
        again.m_sNet = line.m_sNet;
        std::string s;
        laminate::TextOut out(s);
        static_cast<CBDdrawObj&>(again).Write(out, 1);
      },
      [&] { EXPECT_EQ(line.m_sNet, "a net that is not held inside, with 100% of it"); });
  EXPECT_GT(nFailures, 0);
}

// A reading that fails at any value leaves nothing behind.
TEST(Fault, EveryMissingValueFailsWithoutALeak) {
  int nRaised = 0;
  for (const char* sz : kShapes) {
    Tree tree(sz);
    // Takes away the values of one form after the other.
    std::vector<CECadClsLvl*> forms;
    const auto collect = [&forms](const auto& self, const CECadClsLvl& node) -> void {
      forms.push_back(const_cast<CECadClsLvl*>(&node));
      for (const CECadClsLvl* p : *node.m_pChildren) self(self, *p);
    };
    collect(collect, tree.Node());
    for (CECadClsLvl* pForm : forms) {
      CStringArray values;
      values.Copy(pForm->m_arrValues);
      pForm->m_arrValues.RemoveAll();
      try {
        WholeRoad(tree);
      } catch (const CInvalidArgException&) {
        ++nRaised;
      }
      pForm->m_arrValues.Copy(values);
    }
  }
  EXPECT_GT(nRaised, 50);
}

}  // namespace
