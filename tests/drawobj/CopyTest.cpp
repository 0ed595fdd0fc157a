// Deep copies: what each class takes along and what it leaves at the default.
#include <gtest/gtest.h>

#include <set>

#include "drawobj/DrawObjTestSupport.h"
#include "drawobj/Fields.h"

namespace {

// The fields that a copy leaves at their defaults, per class; all others are copied.
const std::map<std::string, std::set<std::string>> kGaps = {
    {"CBDline", {"m_sLineType", "m_dDash", "m_dBlank"}},
    {"CBDpadstackRefLay", {"m_bVisible"}},
    {"CBDsurface",
     {"m_bArea",
      "m_bMesh",
      "m_bAlreadySpread",
      "m_nMeshFlagXCount",
      "m_dMeshPitch",
      "m_dMeshShapeDiameter",
      "m_dMeshFigureAngle",
      "m_dMeshWindowClearance",
      "m_dMeshFigureClearance",
      "m_dMeshAngle",
      "m_dMeshOutlineClearance",
      "m_sMeshShape",
      "m_sMeshArrangeType",
      "m_ptMeshBase",
      "m_ptMeshRotate",
      "m_arrMeshFlags",
      "m_bSubmesh",
      "m_nParamFlagXCount",
      "m_dParamPitch",
      "m_dParamShapeDiameter",
      "m_dParamFigureAngle",
      "m_dParamWindowClearance",
      "m_dParamFigureClearance",
      "m_dParamAngle",
      "m_dParamOutlineClearance",
      "m_sParamShape",
      "m_sParamArrangeType",
      "m_ptParamBase",
      "m_ptParamRotate",
      "m_arrParamFlags",
      "m_pProperties"}},
    {"CBDsymbolText", {"m_sSymbolType"}},
    {"CBDvertexArc", {"m_dEndWidth", "m_dWidth"}},
    {"CBDvertexPt", {"m_dWidth"}},
};

const std::set<std::string> kSharedByTheDispatcher = {"m_bRefer",     "m_sLayerName", "m_nLayerNumber",
                                                      "m_sLayerType", "m_sNet",       "m_sPenShape"};

template <class T>
std::map<std::string, std::string> FieldsOf(const T& o) {
  std::map<std::string, std::string> fields;
  AllFields(o, [&](const char* szName, const auto& field) { fields[szName] = Text(field); });
  return fields;
}

bool IsSharedField(const std::string& name) {
  static const std::set<std::string> names = {"m_bRefer",      "m_sLayerName", "m_sLayerType", "m_nLayerNumber",
                                              "m_sKind",       "m_sNet",       "m_sPenShape",  "m_sSection",
                                              "m_nCavityFrom", "m_nCavityTo"};
  return names.count(name) != 0;
}

// A field that owns what is copied with gaps of its own.
template <class Field>
constexpr bool kOwnsArray = std::is_same_v<Field, CBDdrawObjArray*> || std::is_same_v<Field, CBDvertexArray*> ||
                            std::is_same_v<Field, CBDopenShapeArray*> || std::is_same_v<Field, CBDpadstackRefLayArray*>;
template <class Field>
constexpr bool kOwnsShape = std::is_same_v<Field, CBDdrawObj*> || std::is_same_v<Field, CBDtext*>;

// One owned object beside its copy: another one, and what its own `pCopy` makes of it.
template <class X>
void CheckOwned(const X* p, const X* pCopy, const std::string& name) {
  ASSERT_NE(p, nullptr) << name;
  ASSERT_NE(pCopy, nullptr) << name;
  EXPECT_NE(p, pCopy) << name;
  const std::unique_ptr<X> again(p->pCopy());
  EXPECT_EQ(Text(pCopy), Text(again.get())) << name;
}

template <class T>
void CheckCopy(const char* szName, const T& object, const T& copy, bool bByDispatcher) {
  const T fresh;
  const auto ofObject = FieldsOf(object);
  const auto ofCopy = FieldsOf(copy);
  const auto ofFresh = FieldsOf(fresh);
  const auto gaps = kGaps.find(szName);
  std::map<std::string, const void*> fields;
  AllFields(object, [&](const char* szField, const auto& field) { fields[szField] = &field; });
  AllFields(copy, [&](const char* szField, const auto& field) {
    const std::string name = szField;
    bool bCopied = gaps == kGaps.end() || gaps->second.count(name) == 0;
    if (std::is_base_of_v<CBDdrawObj, T> && IsSharedField(name)) {
      bCopied = bByDispatcher && kSharedByTheDispatcher.count(name) != 0;
    }
    if (std::is_base_of_v<CBDvertex, T> && name == "m_dWidth") bCopied = bByDispatcher;
    using Field = std::remove_cvref_t<decltype(field)>;
    if constexpr (kOwnsArray<Field>) {
      const Field& of = *static_cast<const Field*>(fields.at(name));
      EXPECT_NE(field, of) << szName << "::" << name;
      ASSERT_GT(of->GetSize(), 0) << szName << "::" << name << " shows nothing";
      ASSERT_EQ(field->GetSize(), of->GetSize()) << szName << "::" << name;
      for (INT_PTR i = 0; i < of->GetSize(); ++i) CheckOwned(of->GetAt(i), field->GetAt(i), name);
      return;
    } else if constexpr (kOwnsShape<Field>) {
      CheckOwned(*static_cast<const Field*>(fields.at(name)), field, name);
      return;
    }
    EXPECT_EQ(ofCopy.at(name), bCopied ? ofObject.at(name) : ofFresh.at(name)) << szName << "::" << name;
    if (bCopied && name != "m_sKind" && name != "m_sType") {
      EXPECT_NE(ofObject.at(name), ofFresh.at(name)) << szName << "::" << name << " shows nothing";
    }
  });
}

TEST(Copy, EachClassTakesItsFieldsAndLeavesItsGaps) {
  EachShapeClass([]<class T>(const char* szName) {
    if constexpr (!std::is_same_v<T, CBDroundThermal>) {
      T object;
      Fill(object);
      const std::unique_ptr<T> own(object.pCopy());
      CheckCopy(szName, object, *own, false);
      if constexpr (!std::is_same_v<T, CBDopenShape>) {
        const std::unique_ptr<CBDdrawObj> shared(static_cast<CBDdrawObj&>(object).pCopy());
        ASSERT_NE(shared, nullptr) << szName;
        CheckCopy(szName, object, static_cast<T&>(*shared), true);
      }
    }
  });
  EachPartClass([]<class T>(const char* szName) {
    T object;
    Fill(object);
    const std::unique_ptr<T> own(object.pCopy());
    CheckCopy(szName, object, *own, false);
    if constexpr (std::is_base_of_v<CBDvertex, T>) {
      const std::unique_ptr<CBDvertex> shared(static_cast<CBDvertex&>(object).pCopy());
      CheckCopy(szName, object, static_cast<T&>(*shared), true);
    }
  });
}

TEST(Copy, WhatIsOwnedIsCopiedToo) {
  CBDsurface surface;
  Fill(surface);
  const std::unique_ptr<CBDsurface> copy(surface.pCopy());
  ASSERT_EQ(copy->m_pVertices->GetSize(), 3);
  for (int i = 0; i < 3; ++i) {
    EXPECT_NE(copy->m_pVertices->GetAt(i), surface.m_pVertices->GetAt(i));
    EXPECT_EQ(copy->m_pVertices->GetAt(i)->m_dWidth, surface.m_pVertices->GetAt(i)->m_dWidth);
  }
  EXPECT_EQ(At(*copy, "m_pVertices/0"), At(surface, "m_pVertices/0"));
  EXPECT_NE(static_cast<CBDvertexPt*>(copy->m_pVertices->GetAt(0))->m_pFillet,
            static_cast<CBDvertexPt*>(surface.m_pVertices->GetAt(0))->m_pFillet);
  EXPECT_EQ(At(*copy, "m_pVertices/1/m_dEndWidth"), "0");
  ASSERT_EQ(copy->m_pOpenShapes->GetSize(), 1);
  EXPECT_EQ(copy->m_pOpenShapes->GetAt(0)->m_pVertices->GetSize(), 3);
  EXPECT_EQ(At(*copy, "m_pOpenShapes/0/m_dOutlineWidth"), At(surface, "m_pOpenShapes/0/m_dOutlineWidth"));
  // Cut-outs are copied by their own member, which carries over no shared field.
  EXPECT_EQ(At(*copy, "m_pOpenShapes/0/m_sLayerName"), "''");

  CBDdrawPadstack padstack;
  Fill(padstack);
  padstack.m_pShapes->Add(nullptr);
  padstack.m_pRefLays->GetAt(0)->m_bVisible = 0;
  padstack.m_pShapes->GetAt(0)->m_sSection = "conductive";
  const std::unique_ptr<CBDdrawPadstack> stack(padstack.pCopy());
  ASSERT_EQ(stack->m_pShapes->GetSize(), 2);
  EXPECT_EQ(At(*stack, "m_pShapes/0/m_dRadius"), At(padstack, "m_pShapes/0/m_dRadius"));
  EXPECT_EQ(At(*stack, "m_pShapes/0/m_sNet"), At(padstack, "m_pShapes/0/m_sNet"));
  EXPECT_EQ(stack->m_pShapes->GetAt(0)->m_sSection, "");
  ASSERT_EQ(stack->m_pRefLays->GetSize(), 1);
  EXPECT_EQ(stack->m_pRefLays->GetAt(0)->m_bVisible, 1);
  EXPECT_EQ(stack->m_pRefLays->GetAt(0)->m_sStatus, padstack.m_pRefLays->GetAt(0)->m_sStatus);
  EXPECT_EQ(At(*stack, "m_pHole/m_dRadius"), At(padstack, "m_pHole/m_dRadius"));

  CBDsymbolText text;
  Fill(text);
  const std::unique_ptr<CBDsymbolText> symbol(text.pCopy());
  EXPECT_NE(symbol->m_pText, text.m_pText);
  EXPECT_EQ(symbol->m_pText->m_sString, text.m_pText->m_sString);
  EXPECT_EQ(symbol->m_pText->m_sSpare, text.m_pText->m_sSpare);
  // The inner text is copied by its own member too.
  EXPECT_EQ(symbol->m_pText->m_sLayerName, "");
}

TEST(Copy, ThePlaceholderIsNotCopied) {
  const CBDhole hole;
  const std::unique_ptr<CBDhole> copy(hole.pCopy());
  EXPECT_EQ(copy->m_pShape, nullptr);
  const CBDdrawPadstack padstack;
  const std::unique_ptr<CBDdrawPadstack> stack(padstack.pCopy());
  EXPECT_EQ(stack->m_pHole, nullptr);
  // A copy whose hole is missing copies on as one.
  const std::unique_ptr<CBDdrawPadstack> again(stack->pCopy());
  EXPECT_EQ(At(*again, "m_pHole/m_sKind"), "'NONE'");
}

TEST(Copy, MissingPartsRaiseWhereTheyAreNeededAndAreLeftOutElsewhere) {
  CBDhole hole;
  delete hole.m_pShape;
  hole.m_pShape = nullptr;
  EXPECT_THROW(hole.pCopy(), CInvalidArgException);
  CBDline line;
  delete line.m_pVertices;
  line.m_pVertices = nullptr;
  EXPECT_THROW(line.pCopy(), CInvalidArgException);
  CBDsymbolText text;
  delete text.m_pText;
  text.m_pText = nullptr;
  EXPECT_THROW(text.pCopy(), CInvalidArgException);
  CBDdrawPad pad;
  delete pad.m_pShapes;
  pad.m_pShapes = nullptr;
  const std::unique_ptr<CBDdrawPad> padCopy(pad.pCopy());
  EXPECT_EQ(padCopy->m_pShapes->GetSize(), 0);
  CBDvertexPt point;
  delete point.m_pFillet;
  point.m_pFillet = nullptr;
  const std::unique_ptr<CBDvertexPt> pointCopy(point.pCopy());
  EXPECT_NE(pointCopy->m_pFillet, nullptr);
  CBDdrawPadstack padstack;
  Fill(padstack);
  delete std::exchange(padstack.m_pRefLays, nullptr);
  delete std::exchange(padstack.m_pShapes, nullptr);
  const std::unique_ptr<CBDdrawPadstack> stack(padstack.pCopy());
  EXPECT_EQ(Text(stack->m_pRefLays) + Text(stack->m_pShapes), "[][]");
  EXPECT_EQ(stack->m_sPadstackName, padstack.m_sPadstackName);
  const CBDareaz area;
  const std::unique_ptr<CBDareaz> own(area.pCopy());
  EXPECT_EQ(own->m_pVertices, nullptr);
  const std::unique_ptr<CBDdrawObj> shared(static_cast<const CBDdrawObj&>(area).pCopy());
  EXPECT_EQ(At(*shared, "m_pVertices"), "null");
  CBDdrawSubBoard subBoard;
  delete std::exchange(subBoard.m_pShapes, nullptr);
  EXPECT_THROW(subBoard.pCopy(), CInvalidArgException);
  CBDopenShape open;
  delete std::exchange(open.m_pVertices, nullptr);
  EXPECT_THROW(open.pCopy(), CInvalidArgException);
  CBDsurface flat, whole;
  delete std::exchange(flat.m_pVertices, nullptr);
  delete std::exchange(whole.m_pOpenShapes, nullptr);
  EXPECT_THROW(flat.pCopy(), CInvalidArgException);
  EXPECT_THROW(whole.pCopy(), CInvalidArgException);
}

TEST(Copy, EmptyArraysStayEmpty) {
  EachShapeClass([]<class T>(const char* szName) {
    if constexpr (!std::is_same_v<T, CBDroundThermal>) {
      const T fresh;
      const std::unique_ptr<T> copy(fresh.pCopy());
      AllFields(*copy, [szName](const char* szField, const auto& field) {
        using Field = std::remove_cvref_t<decltype(field)>;
        if constexpr (kOwnsArray<Field>) {
          if (!std::is_same_v<T, CBDareaz>) {
            EXPECT_EQ(Text(field), "[]") << szName << "::" << szField;
          }
        }
      });
    }
  });
}

// What is held by itself copies to null too when its tag is in no list or fits no class.
TEST(Copy, AHeldShapeThatCopiesToNullIsNull) {
  for (const char* szTag : {"LINE", "OPENSHAPE", "NONE", "circle"}) {
    CBDdrawPadstack padstack;
    Fill(padstack);
    padstack.m_pHole->m_sKind = szTag;
    const std::unique_ptr<CBDdrawPadstack> stack(padstack.pCopy());
    EXPECT_EQ(stack->m_pHole, nullptr) << szTag;
    CBDhole hole;
    Fill(hole);
    hole.m_pShape->m_sKind = szTag;
    const std::unique_ptr<CBDhole> copy(hole.pCopy());
    EXPECT_EQ(copy->m_pShape, nullptr) << szTag;
  }
}

TEST(Copy, ThoseOutsideTheListAreNull) {
  const CBDdrawObj none;
  EXPECT_EQ(none.pCopy(), nullptr);
  CBDopenShape shape;
  Fill(shape);
  EXPECT_EQ(static_cast<CBDdrawObj&>(shape).pCopy(), nullptr);
  const std::unique_ptr<CBDopenShape> copy(shape.pCopy());
  EXPECT_EQ(copy->m_dOutlineWidth, shape.m_dOutlineWidth);
  EXPECT_EQ(copy->m_pVertices->GetSize(), 3);
}

TEST(Copy, ShapesAndVerticesThatCopyToNullAreLeftOut) {
  CBDdrawPad pad;
  pad.m_pShapes->Add(new CBDcircle);
  pad.m_pShapes->Add(new CBDdrawObj);
  pad.m_pShapes->Add(new CBDopenShape);
  pad.m_pShapes->Add(new CBDdonut);
  const std::unique_ptr<CBDdrawPad> copy(pad.pCopy());
  ASSERT_EQ(copy->m_pShapes->GetSize(), 2);
  EXPECT_EQ(copy->m_pShapes->GetAt(1)->m_sKind, "DONUT");
  CBDline line;
  line.m_pVertices->Add(new CBDvertexPt);
  line.m_pVertices->Add(new CBDvertex);
  line.m_pVertices->Add(nullptr);
  line.m_pVertices->Add(new CBDvertexArc);
  line.m_pVertices->GetAt(3)->m_sType = "PT";
  const std::unique_ptr<CBDline> lineCopy(line.pCopy());
  EXPECT_EQ(lineCopy->m_pVertices->GetSize(), 1);
}

TEST(Copy, ARoundThermalCannotBeCopiedNorWhatHoldsIt) {
  CBDroundThermal thermal;
  EXPECT_THROW(static_cast<CBDdrawObj&>(thermal).pCopy(), CInvalidArgException);
  CBDdrawPad pad;
  pad.m_pShapes->Add(new CBDcircle);
  pad.m_pShapes->Add(new CBDroundThermal);
  EXPECT_THROW(pad.pCopy(), CInvalidArgException);
  EXPECT_THROW(static_cast<CBDdrawObj&>(pad).pCopy(), CInvalidArgException);
  CBDdrawPadstack padstack;
  Fill(padstack);
  padstack.m_pShapes->Add(new CBDroundThermal);
  EXPECT_THROW(padstack.pCopy(), CInvalidArgException);
  CBDdrawSubBoard subBoard;
  subBoard.m_pShapes->Add(new CBDroundThermal);
  EXPECT_THROW(subBoard.pCopy(), CInvalidArgException);
  CBDhole hole;
  delete hole.m_pShape;
  hole.m_pShape = new CBDroundThermal;
  EXPECT_THROW(hole.pCopy(), CInvalidArgException);
}

TEST(Copy, AnArcThatIsCopiedWritesTheSameText) {
  CBDvertexArc arc;
  Fill(arc);
  const std::unique_ptr<CBDvertex> copy(static_cast<CBDvertex&>(arc).pCopy());
  EXPECT_EQ(static_cast<CBDvertexArc&>(*copy).m_dEndWidth, 0);
  const auto print = [](CBDvertex& v) { return Printed([&](std::FILE* fp) { v.nPrint2File(fp, 1, 0); }); };
  EXPECT_EQ(print(*copy), print(arc));
}

TEST(Copy, VerticesThatDoNotFitTheirClassCopyToNull) {
  CBDvertexPt point;
  point.m_sType = "ARC";
  EXPECT_EQ(static_cast<CBDvertex&>(point).pCopy(), nullptr);
  CBDvertexArc arc;
  arc.m_sType = "PT";
  EXPECT_EQ(static_cast<CBDvertex&>(arc).pCopy(), nullptr);
  const CBDvertex plain;
  EXPECT_EQ(plain.pCopy(), nullptr);
  // An arc of any other type is one still, and its copy has the constructor's type.
  arc.m_sType = "BOW";
  const std::unique_ptr<CBDvertex> copy(static_cast<CBDvertex&>(arc).pCopy());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->m_sType, "ARC");
}

TEST(Copy, NetAndPenShapeSurviveTheSectionDoesNot) {
  CBDline line;
  line.m_sNet = "N";
  line.m_sPenShape = "SQUARE";
  line.m_sSection = "conductive";
  line.m_nCavityFrom = 3;
  line.m_nCavityTo = 4;
  const std::unique_ptr<CBDdrawObj> copy(static_cast<CBDdrawObj&>(line).pCopy());
  EXPECT_EQ(copy->m_sNet, "N");
  EXPECT_EQ(copy->m_sPenShape, "SQUARE");
  EXPECT_EQ(copy->m_sSection, "");
  EXPECT_EQ(copy->m_nCavityFrom, -1);
  EXPECT_EQ(copy->m_nCavityTo, -1);
}

TEST(Copy, ACopiedMeshPlaneIsAPlainSurface) {
  const auto mesh = Read<CBDsurface>("(meshplane (geometry (m (meshPitch 1.0) (vertex (pt 1 1) (pt 2 2) (pt 3 3)))))");
  const std::unique_ptr<CBDdrawObj> copy(static_cast<CBDdrawObj&>(*mesh).pCopy());
  EXPECT_EQ(At(*copy, "m_bMesh"), "0");
  EXPECT_EQ(Print(*copy, 2).substr(0, 9), "(surface\n");
}

}  // namespace
