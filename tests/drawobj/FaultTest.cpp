// The whole road of a shape under another locale, and with each allocation failing.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>

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
    "(meshplane (geometry (meshplane (vertex (pt 1.5 2.5) (pt 3.5 4.5)) (openShape (vertex (pt 1.5 2.5))) (meshPitch "
    "0.5) (meshFlags 1 2 3 4 5 6 7 8) (meshShape \"a text that is not held inside\") (meshBasePoint (pt 1.5 2.5)) "
    "(meshRotatePoint (pt 1.5 2.5)) (submeshplane (submeshparameter (meshParamFlags 1 2) (meshParamBasePoint (pt 1.5 "
    "2.5)) (meshParamRotatePoint (pt 1.5 2.5)))))))",
    "(fPad P (geometry (circle 1.5) (fpadstack (padstackGroup g (padstack \"a padstack whose name is not held "
    "inside\")) "
    "(isTestPad (side \"a text that is not held inside\")) (nonConductive (layer \"a layer whose name is not held "
    "inside\" (visible NO) (status ON) (geometry (pad \"a pad whose name is not held inside\" (geometry (circle "
    "1.5)))))))))",
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
    const std::string before = Describe(object);
    const int nFailures = ForEachFailingAllocation(
        [&] {
          delete object.pCopy();
          if constexpr (std::is_base_of_v<CBDvertex, T>) delete static_cast<CBDvertex&>(object).pCopy();
        },
        [&] { EXPECT_EQ(Describe(object), before); });
    if (kEveryAllocationIsSeen) {
      EXPECT_GT(nFailures, 0) << szName;
    }
  });
}

TEST(Fault, MemoryFailsInConstructing) {
  const auto check = []<class T>(const char* szName) {
    const int nFailures = ForEachFailingAllocation([] { delete new T; });
    if (kEveryAllocationIsSeen) {
      EXPECT_GT(nFailures, 0) << szName;
    }
  };
  EachShapeClass(check);
  EachPartClass(check);
}

TEST(Fault, MemoryFailsInTheTools) {
  CBDoblong oblong;
  int nFailures = ForEachFailingAllocation([&] { delete oblong.pChangeOblong2Oval(&oblong); });
  nFailures += ForEachFailingAllocation(
      [&] { delete oblong.GetPtArrayFrom3Points(1, CPointD(5, 0), CPointD(0, 0), CPointD(0, 5)); });
  if (kEveryAllocationIsSeen) {
    EXPECT_GE(nFailures, 4);
  }
  // A line that is not converted is not deleted. The end of each of the two rounds takes one.
  std::unique_ptr<CBDline> lines[2];
  std::unique_ptr<CBDsurface> surfaces[2];
  for (auto& line : lines) {
    line = std::make_unique<CBDline>();
    line->m_pVertices->Add(new CBDvertexPt);
  }
  CBDline any;
  int nDone = 0;
  nFailures = ForEachFailingAllocation(
      [&] {
        surfaces[nDone].reset(any.pChangeCBDline2CBDsurface(lines[nDone].get()));
        lines[nDone++].release();
      },
      [&] { EXPECT_EQ(lines[nDone]->m_pVertices->GetSize(), 1); });
  ASSERT_EQ(nDone, 2);
  for (const auto& surface : surfaces) EXPECT_EQ(surface->m_pVertices->GetSize(), 1);
  if (kEveryAllocationIsSeen) {
    EXPECT_GT(nFailures, 0);
  }
}

// The net name is whole at any failure: as it was, with nothing written, or prepared.
TEST(Fault, MemoryFailsInWriting) {
  // Too long for the pool, so that its memory is seen in every build.
  const std::string before = std::string(600, 'N') + "%";
  const std::string prepared = "\"" + before + "%\"";
  std::FILE* fp = std::tmpfile();
  ASSERT_NE(fp, nullptr);
  for (const bool bToStream : {false, true}) {
    // The end of each of the two rounds writes one.
    CBDline lines[2];
    std::string texts[2];
    for (CBDline& line : lines) line.m_sNet = CString(before);
    int nDone = 0;
    const int nFailures = ForEachFailingAllocation(
        [&] {
          CBDdrawObj& shape = lines[nDone];
          if (bToStream) {
            shape.nPrint2File(fp, 1);
          } else {
            laminate::TextOut out(texts[nDone]);
            shape.Write(out, 1);
            out.Flush();
          }
          ++nDone;
        },
        [&] {
          CBDline& line = lines[nDone];
          if (line.m_sNet.View() == before) {
            EXPECT_EQ(texts[nDone], "");
          } else {
            EXPECT_EQ(line.m_sNet.View(), prepared);
          }
          line.m_sNet = CString(before);
          texts[nDone].clear();
        });
    EXPECT_GT(nFailures, 0);
    ASSERT_EQ(nDone, 2);
    for (const CBDline& line : lines) EXPECT_EQ(line.m_sNet.View(), prepared);
  }
  std::fclose(fp);
}

// No number that is written asks for memory: a writer takes one buffer, when its text is long, and nothing else.
TEST(Allocations, NumbersAreWrittenWithoutAny) {
  const auto count = [](int nPoints, auto write) {
    CBDline line;
    CBDsurface surface;
    for (int i = 0; i < nPoints; ++i) {
      for (CBDvertexArray* p : {line.m_pVertices, surface.m_pVertices}) {
        auto* pPoint = new CBDvertexPt;
        pPoint->m_pt.SetData(i + 0.123456, -1e9 / (i + 1));
        pPoint->m_dWidth = 0.25;
        pPoint->m_dTarc = i;
        pPoint->m_pFillet->m_dFilletWidth = 1e300;
        p->Add(pPoint);
      }
    }
    const laminate::test::AllocationFault counter(-1, laminate::test::AllocationFault::Duration::once);
    write(line);
    write(surface);
    return counter.Count();
  };
  std::string s;
  s.reserve(8 << 20);
  const auto toString = [&s](auto& shape) {
    s.clear();
    laminate::TextOut out(s);
    shape.Write(out, 1);
    out.Flush();
  };
  EXPECT_EQ(count(2000, toString), 2);  // a buffer for each of the two
  EXPECT_EQ(count(100, toString), 2);
  EXPECT_EQ(count(1, toString), 0);
  std::FILE* fp = std::fopen("/dev/null", "w");
  ASSERT_NE(fp, nullptr);
  const auto toStream = [fp](CBDdrawObj& shape) { shape.nPrint2File(fp, 1); };
  EXPECT_EQ(count(2000, toStream), 2);
  std::fclose(fp);
}

// Takes something away from one form of a tree after the other, reads and gives it back. Gives the number of readings
// that raised.
template <class Take>
int CountRaises(const Tree& tree, Take take) {
  std::vector<CECadClsLvl*> forms;
  const auto collect = [&forms](const auto& self, const CECadClsLvl& node) -> void {
    forms.push_back(const_cast<CECadClsLvl*>(&node));
    for (const CECadClsLvl* p : *node.m_pChildren) self(self, *p);
  };
  collect(collect, tree.Node());
  int nRaised = 0;
  for (CECadClsLvl* pForm : forms) {
    const auto giveBack = take(*pForm);
    try {
      WholeRoad(tree);
    } catch (const CInvalidArgException&) {
      ++nRaised;
    }
    giveBack();
  }
  return nRaised;
}

// A reading that fails at any value or form leaves nothing behind.
TEST(Fault, EveryMissingValueFailsWithoutALeak) {
  struct Raises {
    int byValues, byForms;
  };
  const Raises wanted[] = {{6, 0}, {2, 0}, {0, 0}, {3, 0}, {4, 1}, {14, 1}, {3, 0}, {4, 0},
                           {4, 1}, {4, 0}, {9, 0}, {5, 0}, {3, 0}, {5, 0},  {1, 1}, {2, 0},
                           {9, 1}, {9, 5}, {9, 0}, {3, 1}, {2, 0}, {0, 0},  {0, 0}};
  static_assert(std::size(wanted) == std::size(kShapes));
  for (std::size_t i = 0; i < std::size(kShapes); ++i) {
    const Tree tree(kShapes[i]);
    EXPECT_EQ(CountRaises(tree,
                          [](CECadClsLvl& form) {
                            auto values = std::make_shared<CStringArray>();
                            values->Copy(form.m_arrValues);
                            form.m_arrValues.RemoveAll();
                            return [&form, values] { form.m_arrValues.Copy(*values); };
                          }),
              wanted[i].byValues)
        << kShapes[i];
    EXPECT_EQ(CountRaises(tree,
                          [](CECadClsLvl& form) {
                            const std::vector<CECadClsLvl*> forms(form.m_pChildren->begin(), form.m_pChildren->end());
                            form.m_pChildren->RemoveAll();
                            return [&form, forms] {
                              for (CECadClsLvl* p : forms) form.m_pChildren->Add(p);
                            };
                          }),
              wanted[i].byForms)
        << kShapes[i];
  }
}

}  // namespace
