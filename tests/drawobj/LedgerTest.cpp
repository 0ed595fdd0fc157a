// The ledger against the code: every field of every class is written and read again, and what is left of it is what
// its row says.
#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

#include "base/TextOut.h"
#include "drawobj/DrawObjLedger.h"
#include "drawobj/DrawObjTestSupport.h"
#include "drawobj/Fields.h"
#include "drawobj/LedgerPage.h"

namespace {

using laminate::Fate;
using laminate::FindLedgerRow;
using laminate::LedgerRow;
using laminate::ReadsBack;

const LedgerRow& RowOf(const std::string& className, const std::string& field) {
  const LedgerRow* pRow = FindLedgerRow(className, field);
  if (pRow == nullptr) pRow = FindLedgerRow("CBDdrawObj", field);
  EXPECT_NE(pRow, nullptr) << className << "::" << field;
  static const LedgerRow none;
  return pRow == nullptr ? none : *pRow;
}

TEST(Ledger, HasARowForEveryFieldAndNoOther) {
  std::set<std::string> fields;
  const auto collect = [&fields]<class T>(const char* szName) {
    const T object;
    OwnFields(object, [&](const char* szField, const auto&) {
      const std::string field = szField;
      if (field.find('[') == std::string::npos) fields.insert(std::string(szName) + "::" + field);
    });
    if constexpr (std::is_base_of_v<CBDvertex, T>) {
      VertexFields(object,
                   [&](const char* szField, const auto&) { fields.insert(std::string(szName) + "::" + szField); });
    }
  };
  EachShapeClass(collect);
  EachPartClass(collect);
  const CBDdrawObj shared;
  SharedFields(shared, [&](const char* szField, const auto&) { fields.insert(std::string("CBDdrawObj::") + szField); });
  for (const LedgerRow& row : laminate::DrawObjLedger()) {
    const std::string name = std::string(row.className) + "::" + std::string(row.field);
    if (row.byItself == Fate::constant) continue;
    // Some classes say more of a shared field.
    if (row.field == "m_sNet" || row.field == "m_sPenShape") continue;
    EXPECT_EQ(fields.erase(name), 1u) << name;
  }
  fields.erase("CBDdrawObj::m_sNet");
  fields.erase("CBDdrawObj::m_sPenShape");
  EXPECT_TRUE(fields.empty()) << *fields.begin();
  EXPECT_EQ(FindLedgerRow("CBDcircle", "m_dHeight"), nullptr);
}

TEST(Ledger, HasEveryClass) {
  std::set<std::string> names{"CBDdrawObj"};
  const auto collect = [&names]<class T>(const char* szName) { names.insert(szName); };
  EachShapeClass(collect);
  EachPartClass(collect);
  std::set<std::string> listed;
  for (const auto& c : laminate::DrawObjLedgerClasses()) listed.insert(std::string(c.className));
  EXPECT_EQ(listed, names);
}

// ---- the round trip of whole shapes ----

// Takes the values away that the text does not hold.
template <class T>
void DropFields(const char* szName, int nMode, T& shape) {
  T fresh;
  std::map<std::string, void*> ofFresh;
  AllFields(fresh, [&](const char* sz, auto& field) { ofFresh[sz] = &field; });
  AllFields(shape, [&](const char* sz, auto& field) {
    using Field = std::remove_reference_t<decltype(field)>;
    const std::string name = sz;
    const LedgerRow& row = RowOf(szName, name.substr(0, name.find('[')));
    if ((nMode == 1 ? row.byItself : row.inGeometry) == Fate::dropped) {
      std::swap(field, *static_cast<Field*>(ofFresh.at(name)));
    }
  });
}

template <class T>
std::string OwnText(T& shape, int nMode) {
  std::string s;
  {
    laminate::TextOut out(s);
    // By the family's entry, which prepares the net name.
    static_cast<CBDdrawObj&>(shape).Write(out, nMode);
  }
  return s;
}

// Values that each rule leaves alone, where filling gives others.
template <class T>
void Settle(T& shape) {
  if constexpr (std::is_same_v<T, CBDdrawPadstack>) {
    shape.m_nFrom = 2;
    shape.m_nTo = 5;
    shape.m_pRefLays->GetAt(0)->m_nLayerNumber = 3;
  }
  if constexpr (std::is_same_v<T, CBDline>) shape.m_sPenShape = "SQUARE";
  if constexpr (std::is_same_v<T, CBDsurface>) {
    // As a file gives it.
    shape.m_bArea = 0;
    shape.m_bMesh = 0;
    shape.m_bAlreadySpread = 1;
    shape.m_pProperties->DeleteAll();
  }
}

constexpr const char* kSharedByContext[] = {"m_bRefer", "m_sLayerName", "m_sLayerType", "m_nLayerNumber"};

// The parts of two objects by the rows of their own class; `bLine` chooses the column of vertices.
void CompareVertices(const CBDvertexArray& before, const CBDvertexArray& after, bool bLine);

struct Compare {
  std::string className;
  bool bFirstColumn;

  // What is left of one field.
  template <class Field>
  void operator()(const char* szField, const Field& before, const Field& after, const Field& fresh) const {
    const LedgerRow& row = RowOf(className, szField);
    const Fate fate = bFirstColumn ? row.byItself : row.inGeometry;
    const std::string name = className + "::" + szField + (bFirstColumn ? " (first column)" : " (second column)");
    if (fate == Fate::dropped) {
      if constexpr (std::is_same_v<Field, CLPropertyArray*>) {
        EXPECT_EQ(after->GetSize(), 0) << name;
      } else {
        EXPECT_EQ(Text(after), Text(fresh)) << name;
        if (name.find("m_bArea") == std::string::npos) {
          EXPECT_NE(Text(before), Text(fresh)) << name << " shows nothing";
        }
      }
      return;
    }
    if constexpr (std::is_same_v<Field, CBDvertexArray*>) {
      CompareVertices(*before, *after, className == "CBDline");
    } else if constexpr (std::is_same_v<Field, CBDopenShapeArray*>) {
      ASSERT_EQ(after->GetSize(), before->GetSize()) << name;
      const CBDopenShape& a = *before->GetAt(0);
      const CBDopenShape& b = *after->GetAt(0);
      EXPECT_EQ(b.m_dOutlineWidth, a.m_dOutlineWidth);
      CompareVertices(*a.m_pVertices, *b.m_pVertices, false);
    } else if constexpr (std::is_same_v<Field, CBDpadstackRefLayArray*>) {
      ASSERT_EQ(after->GetSize(), before->GetSize()) << name;
      const CBDpadstackRefLay& a = *before->GetAt(0);
      const CBDpadstackRefLay& b = *after->GetAt(0);
      const CBDpadstackRefLay none;
      const Compare entries{"CBDpadstackRefLay", bFirstColumn};
      entries("m_sStatus", a.m_sStatus, b.m_sStatus, none.m_sStatus);
      entries("m_nLayerNumber", a.m_nLayerNumber, b.m_nLayerNumber, none.m_nLayerNumber);
      entries("m_sLayerName", a.m_sLayerName, b.m_sLayerName, none.m_sLayerName);
      entries("m_bVisible", a.m_bVisible, b.m_bVisible, none.m_bVisible);
    } else if constexpr (std::is_same_v<Field, CBDdrawObj*>) {
      EXPECT_EQ(At(*after, "m_dRadius"), At(*before, "m_dRadius")) << name;
      EXPECT_EQ(At(*after, "m_ptCenter"), At(*before, "m_ptCenter")) << name;
    } else {
      EXPECT_EQ(Text(after), Text(before)) << name;
    }
  }
};

// Calls the comparison for each field of three objects of one class.
template <class T>
void CompareFields(const T& before, const T& after, const T& fresh, const Compare& compare) {
  std::map<std::string, const void*> ofBefore, ofFresh;
  AllFields(before, [&](const char* sz, const auto& field) { ofBefore[sz] = &field; });
  AllFields(fresh, [&](const char* sz, const auto& field) { ofFresh[sz] = &field; });
  AllFields(after, [&](const char* sz, const auto& field) {
    using Field = std::remove_cvref_t<decltype(field)>;
    const std::string name = sz;
    if (name.find('[') != std::string::npos) return;
    for (const char* szShared : kSharedByContext) {
      if (name == szShared) return;
    }
    compare(sz, *static_cast<const Field*>(ofBefore.at(name)), field, *static_cast<const Field*>(ofFresh.at(name)));
  });
}

void CompareVertices(const CBDvertexArray& before, const CBDvertexArray& after, bool bLine) {
  ASSERT_EQ(after.GetSize(), before.GetSize());
  const CBDvertexPt freshPt;
  const CBDvertexArc freshArc;
  const CBDfillet freshFillet;
  for (INT_PTR i = 0; i < after.GetSize(); ++i) {
    if (const auto* pArc = dynamic_cast<const CBDvertexArc*>(before.GetAt(i))) {
      const auto* pAfter = dynamic_cast<const CBDvertexArc*>(after.GetAt(i));
      ASSERT_NE(pAfter, nullptr);
      const Compare compare{"CBDvertexArc", bLine};
      compare("m_dWidth", pArc->m_dWidth, pAfter->m_dWidth, 0.0);
      compare("m_sType", pArc->m_sType, pAfter->m_sType, CString());
      // The end point is written with the begin width.
      EXPECT_EQ(pAfter->m_dEndWidth, bLine ? pArc->m_dBeginWidth : 0);
      compare("m_dBeginWidth", pArc->m_dBeginWidth, pAfter->m_dBeginWidth, 0.0);
      compare("m_nSpare", pArc->m_nSpare, pAfter->m_nSpare, 0);
      compare("m_sDirection", pArc->m_sDirection, pAfter->m_sDirection, freshArc.m_sDirection);
      compare("m_dR", pArc->m_dR, pAfter->m_dR, 0.0);
      compare("m_ptBegin", pArc->m_ptBegin, pAfter->m_ptBegin, CPointD());
      compare("m_ptCenter", pArc->m_ptCenter, pAfter->m_ptCenter, CPointD());
      compare("m_ptEnd", pArc->m_ptEnd, pAfter->m_ptEnd, CPointD());
    } else {
      const auto* pPoint = dynamic_cast<const CBDvertexPt*>(before.GetAt(i));
      const auto* pAfter = dynamic_cast<const CBDvertexPt*>(after.GetAt(i));
      ASSERT_NE(pAfter, nullptr);
      const Compare compare{"CBDvertexPt", bLine};
      compare("m_dWidth", pPoint->m_dWidth, pAfter->m_dWidth, 0.0);
      compare("m_sType", pPoint->m_sType, pAfter->m_sType, CString());
      compare("m_dTarc", pPoint->m_dTarc, pAfter->m_dTarc, 0.0);
      compare("m_pt", pPoint->m_pt, pAfter->m_pt, CPointD());
      const CBDfillet& a = *pPoint->m_pFillet;
      const CBDfillet& b = *pAfter->m_pFillet;
      const Compare fillets{"CBDfillet", bLine};
      fillets("m_sType", a.m_sType, b.m_sType, freshFillet.m_sType);
      fillets("m_dWidth", a.m_dWidth, b.m_dWidth, 0.0);
      fillets("m_dLength", a.m_dLength, b.m_dLength, 0.0);
      fillets("m_dFilletWidth", a.m_dFilletWidth, b.m_dFilletWidth, 0.0);
      const bool bEnd = bLine && (i == 0 || i == after.GetSize() - 1);
      EXPECT_EQ(b.m_sDir, bEnd ? CString() : a.m_sDir);
    }
  }
}

TEST(Ledger, EveryFieldFaresAsItsRowSays) {
  EachShapeClass([]<class T>(const char* szName) {
    const laminate::LedgerClass* pClass = nullptr;
    for (const auto& c : laminate::DrawObjLedgerClasses()) {
      if (c.className == szName) pClass = &c;
    }
    ASSERT_NE(pClass, nullptr);
    for (const int nMode : {1, 2}) {
      SCOPED_TRACE(std::string(szName) + " mode " + std::to_string(nMode));
      const ReadsBack reads = nMode == 1 ? pClass->byItself : pClass->inGeometry;
      if (reads == ReadsBack::within) continue;
      filling::Restart();
      T before;
      Fill(before);
      Settle(before);
      T written(before);  // shares what is owned; given back below
      const std::string text = OwnText(written, nMode);
      Boxes boxes;
      std::unique_ptr<CBDdrawObj> after;
      bool bRaised = false;
      // A string that a host sets makes a symbol text readable; files give none.
      if constexpr (std::is_same_v<T, CBDsymbolText>) {
        before.m_sString = written.m_sString = "";
        CBDsymbolText asRead(before);
        const std::string bare = OwnText(asRead, nMode);
        asRead.m_pText = nullptr;
        try {
          after = ReadAny(bare, {});
        } catch (const CInvalidArgException&) {
          bRaised = true;
        }
      } else {
        after = ReadAny(text, {});
      }
      AllFields(written, [](const char*, auto& field) {
        if constexpr (std::is_pointer_v<std::remove_reference_t<decltype(field)>>) field = nullptr;
      });
      EXPECT_EQ(bRaised, reads == ReadsBack::raises);
      EXPECT_EQ(!boxes.texts.empty(), reads == ReadsBack::unknownKeyword);
      const T fresh;
      if (reads == ReadsBack::same || reads == ReadsBack::defaults) {
        ASSERT_NE(after, nullptr) << text;
        ASSERT_TRUE(IsExactly<T>(*after)) << text;
        CompareFields(before, static_cast<const T&>(*after), fresh, Compare{szName, nMode == 1});
      } else {
        EXPECT_EQ(after != nullptr, reads == ReadsBack::other);
        if (after != nullptr) {
          EXPECT_FALSE(IsExactly<T>(*after));
        }
        // Nothing can be left of any field.
        for (const LedgerRow& row : laminate::DrawObjLedger()) {
          if (row.className == szName && row.byItself != Fate::constant) {
            EXPECT_EQ(nMode == 1 ? row.byItself : row.inGeometry, Fate::dropped) << row.field;
          }
        }
      }
    }
  });
}

// A shape that holds nothing that its text drops reads back into one that writes the same text.
TEST(Ledger, AClassThatReadsBackWritesItsTextAgain) {
  EachShapeClass([]<class T>(const char* szName) {
    for (const auto& c : laminate::DrawObjLedgerClasses()) {
      if (c.className != szName) continue;
      for (const int nMode : {1, 2}) {
        if ((nMode == 1 ? c.byItself : c.inGeometry) != ReadsBack::same) continue;
        filling::Restart();
        T shape;
        Fill(shape);
        Settle(shape);
        DropFields(szName, nMode, shape);
        const std::string text = OwnText(shape, nMode);
        const auto after = ReadAny(text, {});
        ASSERT_NE(after, nullptr) << text;
        EXPECT_EQ(OwnText(*after, nMode), text);
      }
    }
  });
}

TEST(Ledger, RandomShapesWriteTheTextThatTheyWereReadFrom) {
  int nShapes = 0;
  for (unsigned nSeed = 1; nSeed <= 200; ++nSeed) {
    const filling::RandomScope random(nSeed);
    EachShapeClass([&nShapes, nSeed]<class T>(const char* szName) {
      for (const auto& c : laminate::DrawObjLedgerClasses()) {
        if (c.className != szName) continue;
        for (const int nMode : {1, 2}) {
          if ((nMode == 1 ? c.byItself : c.inGeometry) != ReadsBack::same) continue;
          T shape;
          Fill(shape);
          DropFields(szName, nMode, shape);
          if constexpr (std::is_same_v<T, CBDovalHole>) {
            // Six digits with a fraction among them.
            shape.m_pt.SetData(1.25, -3.5);
            shape.m_dWidth = nSeed + 0.5;
            shape.m_dHeight = nSeed + 0.25;
          }
          if constexpr (std::is_same_v<T, CBDsurface>) shape.m_bMesh = shape.m_bMesh > 0 ? 1 : 0;
          const std::string text = OwnText(shape, nMode);
          if (text.empty()) continue;
          const auto after = ReadAny(text, {});
          ASSERT_NE(after, nullptr) << text;
          ASSERT_TRUE(IsExactly<T>(*after)) << text;
          EXPECT_EQ(OwnText(*after, nMode), text) << "seed " << nSeed;
          ++nShapes;
        }
      }
    });
  }
  EXPECT_GT(nShapes, 200 * 20);
}

// ---- the rules, where they change a value ----

struct RuleCase {
  const char* text;  // as a file gives the shape
  int mode;
  const char* path;
  const char* after;
};

TEST(Ledger, RulesChangeWhatTheySay) {
  const RuleCase cases[] = {
      // rounded to five or six decimals
      {"(donut (out 1.234567))", 1, "m_dOut", "1.23457"},
      {"(donut (pt 1.234567 0.000001))", 2, "m_pt", "(1.23457,0)"},
      {"(rectangle (rAngle 1.23456789))", 2, "m_dAngle", "1.234568"},
      {"(rectangle (fillAngle 0.0000001))", 2, "m_dFillAngle", "0"},
      {"(surface (fillAngle 1.23456789) (vertex (pt 1 1) (pt 2 2) (pt 3 3)))", 1, "m_dFillAngle", "1.234568"},
      // six significant digits, and the point that they lose
      {"(ovalHole (geometry (oval (width 1.2345678) (height 12.0))))", 1, "m_dWidth", "1.23457"},
      {"(ovalHole (geometry (oval (width 1.2345678) (height 12.0))))", 1, "m_dHeight", "0.00012"},
      {"(ovalHole (geometry (oval (ovalAngle 12.0))))", 1, "m_dAngle", "12"},
      // texts without quotes
      {"(pad \"A B\")", 1, "m_sPadName", "'A'"},
      {"(padstack \"A B\")", 2, "m_sPadstackName", "'A'"},
      // net names
      {"(line (net \"A B\"))", 1, "m_sNet", "'A B'"},
      {"(line (net A%B))", 1, "m_sNet", "'A%%B'"},
      {"(line (net A))", 2, "m_sNet", "''"},
      // pen shapes
      {"(line (penShape ROUND))", 1, "m_sPenShape", "''"},
      {"(line (penShape SQUARE))", 2, "m_sPenShape", "'SQUARE'"},
      // spans
      {"(padstack V (fromTo 3 3))", 1, "m_nFrom", "0"},
      {"(padstack V (fromTo 3 3))", 1, "m_nTo", "3"},
      {"(padstack V (fromTo 3 0))", 1, "m_nTo", "3"},
      {"(padstack V (fromTo 3 0))", 1, "m_nFrom", "0"},
      {"(padstack V (angle 0.001))", 1, "m_dAngle", "0"},
      {"(padstack V (angle 0.002))", 1, "m_dAngle", "0.002"},
      // the string of a text
      {"(text (geometry (text (string \"a (b) c\"))))", 1, "m_sString", "'a (b) c'"},
      // widths of vertices
      {"(line (vertex (pt 1 2 (width 0.001))))", 1, "m_pVertices/0/m_dWidth", "0"},
      {"(line (vertex (arc CW (begin (pt 1 2 (width 0.5))) (end (pt 1 2 (width 0.7))))))", 1,
       "m_pVertices/0/m_dEndWidth", "0.5"},
      // a fillet
      {"(line (vertex (pt 1 2 (fillet (length 3.0)))))", 1, "m_pVertices/0/m_pFillet/m_dLength", "0"},
  };
  for (const RuleCase& c : cases) {
    const auto shape = ReadAny(c.text, {});
    const auto after = ReadAny(Print(*shape, c.mode), {});
    ASSERT_NE(after, nullptr) << c.text;
    EXPECT_EQ(At(*after, c.path), c.after) << c.text;
  }
}

TEST(Ledger, EmptyTextsWithoutQuotesEndTheNextLoad) {
  CBDdrawPad pad;
  CBDdrawPadstack padstack;
  padstack.m_sPadstackName = "V";
  padstack.m_nFrom = padstack.m_nTo = 1;
  padstack.m_pRefLays->Add(new CBDpadstackRefLay);
  padstack.m_pRefLays->GetAt(0)->m_nLayerNumber = 1;
  CBDtext text;
  text.m_sDir = "";
  CBDline line;
  line.m_pVertices->Add(new CBDvertexArc);
  static_cast<CBDvertexArc*>(line.m_pVertices->GetAt(0))->m_sDirection = "";
  for (CBDdrawObj* p : std::vector<CBDdrawObj*>{&pad, &padstack, &text, &line}) {
    EXPECT_THROW(ReadAny(Print(*p, 1), {}), CInvalidArgException) << p->m_sKind.GetString();
  }
}

TEST(Ledger, MeshPlanesAndAreas) {
  const auto mesh = Read<CBDsurface>("(meshplane (geometry (m (alreadySpread) (meshPitch 1.0) (meshFlags 1))))", {});
  for (const int nMode : {1, 2}) {
    const auto after = Read<CBDsurface>(Print(*mesh, nMode), {});
    EXPECT_EQ(after->m_bMesh, 1);
    EXPECT_EQ(after->m_bAlreadySpread, 1);
    EXPECT_EQ(after->m_dMeshPitch, 0);
    EXPECT_EQ(after->m_arrMeshFlags.GetSize(), 0);
  }
  mesh->m_pProperties->Add(new CLProperty("meshPitch", "2.0"));
  mesh->m_pProperties->Add(new CLProperty("meshBasePoint", "(pt 1.0 2.0)"));
  const auto properties = Read<CBDsurface>(Print(*mesh, 1), {});
  EXPECT_EQ(properties->m_pProperties->GetSize(), 0);
  EXPECT_EQ(properties->m_dMeshPitch, 2);
  EXPECT_EQ(Text(properties->m_ptMeshBase), "(1,2)");

  // A mesh plane keeps its net in a geometry too, and is not left out for want of points.
  mesh->m_sNet = "N";
  EXPECT_EQ(Read<CBDsurface>(Print(*mesh, 2), {})->m_sNet, "N");

  const auto area =
      Read<CBDsurface>("(area (upperHeight 1.5) (lowerHeight 0.5) (vertex (pt 1 1) (pt 2 2) (pt 3 3)))", {});
  EXPECT_EQ(Print(*area, 1).substr(0, 9), "(surface\n");
  EXPECT_EQ(Read<CBDsurface>(Print(*area, 1), {})->m_dUpperHeight, 0);
  area->m_bArea = 1;
  const auto again = Read<CBDsurface>(Print(*area, 1), {});
  EXPECT_EQ(again->m_dUpperHeight, 1.5);
  EXPECT_EQ(again->m_dLowerHeight, 0.5);
  EXPECT_EQ(again->m_bArea, 0);
  EXPECT_EQ(again->m_pVertices->GetSize(), 3);
  // An area has no net, by itself too.
  area->m_sNet = "N";
  EXPECT_EQ(Read<CBDsurface>(Print(*area, 1), {})->m_sNet, "");
}

TEST(Ledger, Constants) {
  const auto print = [](const char* szText, int nMode) { return Print(*ReadAny(szText, {}), nMode); };
  EXPECT_NE(print("(fpadstack (padstackGroup other (padstack V)))", 2).find("(padstackGroup default ("),
            std::string::npos);
  EXPECT_EQ(print("(shieldLine)", 2).substr(0, 6), "(line\n");
  EXPECT_NE(print("(surface (geometry (s (alreadySpread NO) (vertex (pt 1 1) (pt 2 2) (pt 3 3)))))", 1)
                .find("(alreadySpread YES)"),
            std::string::npos);
  EXPECT_EQ(print("(text (font 7))", 1).substr(0, 15), "(text\n(font 0)\n");
  EXPECT_NE(print("(line (vertex (pt 1 2 (tarc OFF (r 1)))))", 1).find("(tarc ON (r"), std::string::npos);
  // Each of them has its row.
  int nConstants = 0;
  for (const LedgerRow& row : laminate::DrawObjLedger()) nConstants += row.byItself == Fate::constant ? 1 : 0;
  EXPECT_EQ(nConstants, 5);
}

TEST(Ledger, ThePageShowsTheTable) {
  std::ifstream file(LEDGER_PAGE);
  std::stringstream wanted(LedgerPage());
  std::string line, wantedLine;
  for (int n = 1; std::getline(wanted, wantedLine); ++n) {
    ASSERT_TRUE(std::getline(file, line)) << "the page ends at line " << n;
    ASSERT_EQ(line, wantedLine) << "line " << n << "; the page is made by: write_ledger > " LEDGER_PAGE;
  }
  EXPECT_FALSE(std::getline(file, line));
}

}  // namespace
