// Tags, fields and defaults, ownership, and the shallow copies of the family.
#include <gtest/gtest.h>

#include <map>

#include "drawobj/DrawObjTestSupport.h"
#include "drawobj/Fields.h"

namespace {

TEST(Model, TagsAreThoseOfTheClasses) {
  const auto tag = [](const CBDdrawObj& shape) { return std::string(shape.m_sKind.View()); };
  EXPECT_EQ(tag(CBDdrawObj()), "NONE");
  EXPECT_EQ(tag(CBDareaz()), "AREA");
  EXPECT_EQ(tag(CBDcircle()), "CIRCLE");
  EXPECT_EQ(tag(CBDdelete()), "DELETE");
  EXPECT_EQ(tag(CBDdonut()), "DONUT");
  EXPECT_EQ(tag(CBDdrawPad()), "DRAWPAD");
  EXPECT_EQ(tag(CBDdrawPadstack()), "DRAWPADSTACK");
  EXPECT_EQ(tag(CBDdrawSubBoard()), "DRAWSUBBOARD");
  EXPECT_EQ(tag(CBDhole()), "HOLE");
  EXPECT_EQ(tag(CBDline()), "LINE");
  EXPECT_EQ(tag(CBDoblong()), "OBLONG");
  EXPECT_EQ(tag(CBDopenShape()), "OPENSHAPE");
  EXPECT_EQ(tag(CBDoval()), "OVAL");
  EXPECT_EQ(tag(CBDovalHole()), "OVALHOLE");
  EXPECT_EQ(tag(CBDrectangle()), "RECTANGLE");
  EXPECT_EQ(tag(CBDroundThermal()), "ROUNDTHERMAL");
  EXPECT_EQ(tag(CBDsquareHole()), "SQUAREHOLE");
  EXPECT_EQ(tag(CBDsquareThermal()), "SQUARETHERMAL");
  EXPECT_EQ(tag(CBDsurface()), "SURFACE");
  EXPECT_EQ(tag(CBDsymbolText()), "SYMBOLTEXT");
  EXPECT_EQ(tag(CBDtext()), "TEXT");
  EXPECT_EQ(CBDvertexPt().m_sType, "PT");
  EXPECT_EQ(CBDvertexArc().m_sType, "ARC");
  EXPECT_EQ(CBDvertex().m_sType, "");
}

// Every field in its order, by its address, and all that differs from the plain default of its type.
struct FieldCheck {
  const std::string className;
  const char* before = nullptr;
  std::string beforeName;

  template <class Field>
  void operator()(const char* szName, const Field& field) {
    const std::string name = className + "::" + szName;
    const char* at = reinterpret_cast<const char*>(&field);
    if (before != nullptr) {
      EXPECT_LT(before, at) << beforeName << " stands before " << name;
    }
    before = at;
    beforeName = name;

    std::string wanted;
    if constexpr (std::is_same_v<Field, double>) wanted = "0";
    if constexpr (std::is_same_v<Field, int>) wanted = "0";
    if constexpr (std::is_same_v<Field, CString>) wanted = "''";
    if constexpr (std::is_same_v<Field, CPointD>) wanted = "(0,0)";
    if constexpr (std::is_same_v<Field, CArrayN>) wanted = "[]";
    static const std::map<std::string, std::string> special = {{"m_nCavityFrom", "-1"},
                                                               {"m_nCavityTo", "-1"},
                                                               {"m_nKFont", "200"},
                                                               {"m_sDir", "'LtoR'"},
                                                               {"m_sJustify", "'CE_C'"},
                                                               {"CBDtext::m_sFlip", "'NONE'"},
                                                               {"m_sReverse", "'OFF'"},
                                                               {"m_sMeshShape", "'CIRCLE'"},
                                                               {"m_sMeshArrangeType", "'5POINTS'"},
                                                               {"m_sParamShape", "'CIRCLE'"},
                                                               {"m_sParamArrangeType", "'5POINTS'"},
                                                               {"m_sDirection", "'CCW'"},
                                                               {"m_bVisible", "1"},
                                                               {"CBDvertexPt::m_sType", "'PT'"},
                                                               {"CBDvertexArc::m_sType", "'ARC'"},
                                                               {"CBDfillet::m_sDir", "''"}};
    if (const auto it = special.find(szName); it != special.end()) wanted = it->second;
    if (const auto it = special.find(name); it != special.end()) wanted = it->second;
    if constexpr (std::is_pointer_v<Field>) {
      if (name == "CBDareaz::m_pVertices") {
        EXPECT_EQ(field, nullptr);
        return;
      }
      ASSERT_NE(field, nullptr) << name;
      if constexpr (std::is_same_v<Field, CBDdrawObj*>) {
        EXPECT_TRUE(IsExactly<CBDdrawObj>(*field)) << name;
        EXPECT_EQ(field->m_sKind, "NONE");
      } else if constexpr (std::is_same_v<Field, CBDtext*> || std::is_same_v<Field, CBDfillet*>) {
        EXPECT_EQ(Describe(*field), Describe(std::remove_pointer_t<Field>())) << name;
      } else {
        EXPECT_EQ(field->GetSize(), 0) << name;
      }
    } else if (std::string_view(szName) != "m_sKind") {
      EXPECT_EQ(Text(field), wanted) << name;
    }
  }
};

TEST(Model, FieldsStandInOrderWithTheirDefaults) {
  const auto check = []<class T>(const char* szName) {
    const T object;
    AllFields(object, FieldCheck{szName, nullptr, ""});
  };
  EachShapeClass(check);
  EachPartClass(check);
  check.operator()<CBDdrawObj>("CBDdrawObj");
  check.operator()<CBDvertex>("CBDvertex");
}

// Both copies share what pointers name: the test takes the second reference away again before it is deleted twice.
struct Unshare {
  template <class Field>
  void operator()(const char*, Field& field) {
    if constexpr (std::is_pointer_v<Field>) field = nullptr;
  }
};

template <class T>
void Pointers(const T& o, std::vector<const void*>& pointers) {
  AllFields(o, [&pointers](const char*, const auto& field) {
    if constexpr (std::is_pointer_v<std::remove_cvref_t<decltype(field)>>) pointers.push_back(field);
  });
}

TEST(Model, CopyConstructionTakesEveryFieldAndSharesWhatIsOwned) {
  const auto check = []<class T>(const char* szName) {
    T object;
    Fill(object);
    T copy(object);
    EXPECT_EQ(Describe(copy), Describe(object)) << szName;
    std::vector<const void*> of, ofCopy;
    Pointers(object, of);
    Pointers(copy, ofCopy);
    EXPECT_EQ(of, ofCopy) << szName;
    AllFields(copy, Unshare());
  };
  EachShapeClass(check);
  EachPartClass(check);
  check.operator()<CBDdrawObj>("CBDdrawObj");
}

TEST(Model, AssignmentTakesEveryFieldAndSharesWhatIsOwned) {
  const auto check = []<class T>(const char* szName) {
    T object;
    Fill(object);
    T target;
    // What the target held is not released by the assignment.
    T before(target);
    target = object;
    EXPECT_EQ(Describe(target), Describe(object)) << szName;
    std::vector<const void*> of, ofTarget;
    Pointers(object, of);
    Pointers(target, ofTarget);
    EXPECT_EQ(of, ofTarget) << szName;
    AllFields(target, Unshare());
  };
  EachShapeClass(check);
  EachPartClass(check);
  check.operator()<CBDdrawObj>("CBDdrawObj");
}

TEST(Model, TwoLinesMadeByTheCopyConstructorShareOneVertexArray) {
  CBDline line;
  Fill(line);
  CBDline copy(line);
  EXPECT_EQ(copy.m_pVertices, line.m_pVertices);
  copy.m_pVertices->GetAt(0)->m_dWidth = 77;
  EXPECT_EQ(line.m_pVertices->GetAt(0)->m_dWidth, 77);
  copy.m_pVertices = nullptr;
}

TEST(Model, CopiesKeepTheirValuesApart) {
  CBDsurface surface;
  surface.m_arrMeshFlags.Add(7);
  surface.m_sMeshShape = "SQUARE";
  surface.m_ptMeshBase.SetData(1, 2);
  const std::string before = Describe(surface);
  CBDsurface copy(surface), assigned;
  const CBDsurface held(assigned);
  assigned = surface;
  for (CBDsurface* p : {&copy, &assigned}) {
    p->m_arrMeshFlags.Add(1);
    p->m_sMeshShape += "x";
    p->m_ptMeshBase.x = 9;
    EXPECT_EQ(Describe(surface), before);
    AllFields(*p, Unshare());
  }
}

// Counts its deaths, so that a test sees who is deleted.
template <class T>
struct MournedOf : T {
  explicit MournedOf(int& nDeaths) : m_nDeaths(nDeaths) {}
  ~MournedOf() override { ++m_nDeaths; }
  int& m_nDeaths;
};
using Mourned = MournedOf<CBDcircle>;
using MournedPt = MournedOf<CBDvertexPt>;

TEST(Model, AnArrayDeletesItsShapesThroughTheirBase) {
  int nDeaths = 0;
  {
    CBDdrawObjArray shapes;
    shapes.Add(new Mourned(nDeaths));
    shapes.Add(nullptr);
    shapes.Add(new Mourned(nDeaths));
  }
  EXPECT_EQ(nDeaths, 2);
}

TEST(Model, AShapeDeletesWhatItOwns) {
  int nDeaths = 0;
  {
    CBDhole hole;
    delete hole.m_pShape;
    hole.m_pShape = new Mourned(nDeaths);
    CBDdrawPadstack padstack;
    padstack.m_pShapes->Add(new Mourned(nDeaths));
    delete padstack.m_pHole;
    padstack.m_pHole = new Mourned(nDeaths);
    CBDdrawPad pad;
    pad.m_pShapes->Add(new Mourned(nDeaths));
    CBDdrawSubBoard subBoard;
    subBoard.m_pShapes->Add(new Mourned(nDeaths));
  }
  EXPECT_EQ(nDeaths, 5);
}

// Every object and every array that a field owns, each once.
TEST(Model, EveryOwnedFieldDiesWithItsShape) {
  int nFields = 0;
  const auto check = [&nFields]<class T>(const char* szName) {
    const auto mourn = [&](auto T::*member, const char* szField) {
      using X = std::remove_pointer_t<std::remove_reference_t<decltype(std::declval<T&>().*member)>>;
      int nDeaths = 0;
      {
        T object;
        delete (object.*member);
        object.*member = new MournedOf<X>(nDeaths);
      }
      EXPECT_EQ(nDeaths, 1) << szName << "::" << szField;
      ++nFields;
    };
    if constexpr (requires { &T::m_pVertices; }) mourn(&T::m_pVertices, "m_pVertices");
    if constexpr (requires { &T::m_pShapes; }) mourn(&T::m_pShapes, "m_pShapes");
    if constexpr (requires { &T::m_pShape; }) mourn(&T::m_pShape, "m_pShape");
    if constexpr (requires { &T::m_pHole; }) mourn(&T::m_pHole, "m_pHole");
    if constexpr (requires { &T::m_pRefLays; }) mourn(&T::m_pRefLays, "m_pRefLays");
    if constexpr (requires { &T::m_pText; }) mourn(&T::m_pText, "m_pText");
    if constexpr (requires { &T::m_pOpenShapes; }) mourn(&T::m_pOpenShapes, "m_pOpenShapes");
    if constexpr (requires { &T::m_pProperties; }) mourn(&T::m_pProperties, "m_pProperties");
    if constexpr (requires { &T::m_pFillet; }) mourn(&T::m_pFillet, "m_pFillet");
    int nPointers = 0;
    const T fresh;
    AllFields(fresh, [&nPointers](const char*, const auto& field) {
      nPointers += std::is_pointer_v<std::remove_cvref_t<decltype(field)>> ? 1 : 0;
    });
    nFields -= nPointers;
  };
  EachShapeClass(check);
  EachPartClass(check);
  EXPECT_EQ(nFields, 0) << "fields with a pointer that none of the above names";

  // The elements go with their arrays.
  int nDeaths = 0;
  {
    CBDopenShapeArray shapes;
    shapes.Add(new MournedOf<CBDopenShape>(nDeaths));
    CBDpadstackRefLayArray entries;
    entries.Add(new MournedOf<CBDpadstackRefLay>(nDeaths));
    CBDvertexArray vertices;
    vertices.Add(new MournedPt(nDeaths));
  }
  EXPECT_EQ(nDeaths, 3);
}

TEST(Model, NullPointersDieWell) {
  const auto check = []<class T>(const char*) {
    T object;
    AllFields(object, [](const char*, auto& field) {
      if constexpr (std::is_pointer_v<std::remove_reference_t<decltype(field)>>) {
        delete field;
        field = nullptr;
      }
    });
    EXPECT_NE(Describe(object).find("{"), std::string::npos);
  };
  EachShapeClass(check);
  EachPartClass(check);
}

const char* const kDeletable[] = {"CIRCLE",        "SURFACE",    "RECTANGLE", "ROUNDTHERMAL", "SQUAREHOLE",   "OVAL",
                                  "LINE",          "TEXT",       "AREA",      "DRAWPAD",      "DRAWPADSTACK", "DONUT",
                                  "SQUARETHERMAL", "SYMBOLTEXT", "HOLE",      "OVALHOLE",     "DRAWSUBBOARD", "DELETE"};
const char* const kNotDeletable[] = {"OBLONG", "OPENSHAPE", "NONE", "", "circle", "CIRCLES"};

TEST(DeleteDrawObj, GoesByTheTag) {
  CBDdrawObj any;
  for (const char* szTag : kDeletable) {
    int nDeaths = 0;
    auto* p = new Mourned(nDeaths);
    p->m_sKind = szTag;
    any.DeleteDrawObj(static_cast<CBDdrawObj*>(p));
    EXPECT_EQ(nDeaths, 1) << szTag;
  }
  for (const char* szTag : kNotDeletable) {
    int nDeaths = 0;
    Mourned shape(nDeaths);
    shape.m_sKind = szTag;
    any.DeleteDrawObj(static_cast<CBDdrawObj*>(&shape));
    EXPECT_EQ(nDeaths, 0) << szTag;
  }
}

TEST(DeleteDrawObj, AnOblongSurvivesAndNullDoesNothing) {
  CBDdrawObj any;
  auto oblong = std::make_unique<CBDoblong>();
  any.DeleteDrawObj(oblong.get());
  EXPECT_EQ(oblong->m_sKind, "OBLONG");
  any.DeleteDrawObj(nullptr);
}

TEST(DeleteDrawObjArray, DeletesElementsByTheirTagsAndTheArray) {
  int nDeaths = 0;
  int nSurvivors = 0;
  auto* pShapes = new CBDdrawObjArray;
  std::vector<std::unique_ptr<Mourned>> survivors;
  for (const char* szTag : kDeletable) {
    pShapes->Add(new Mourned(nDeaths));
    pShapes->GetLastElement()->m_sKind = szTag;
  }
  pShapes->Add(nullptr);
  for (const char* szTag : kNotDeletable) {
    survivors.push_back(std::make_unique<Mourned>(nSurvivors));
    survivors.back()->m_sKind = szTag;
    pShapes->Add(survivors.back().get());
  }
  CBDdrawObj any;
  any.DeleteDrawObjArray(pShapes);
  EXPECT_EQ(nDeaths, static_cast<int>(std::size(kDeletable)));
  EXPECT_EQ(nSurvivors, 0);
  EXPECT_THROW(any.DeleteDrawObjArray(nullptr), CInvalidArgException);
}

// An array that tells when it dies, and what it holds then.
template <class Array>
struct MournedArray : Array {
  explicit MournedArray(std::vector<int>& deaths) : m_deaths(deaths) {}
  ~MournedArray() override { m_deaths.push_back(-1 - static_cast<int>(this->GetSize())); }
  std::vector<int>& m_deaths;
};
template <class T>
struct Numbered : T {
  Numbered(int n, std::vector<int>& deaths) : m_n(n), m_deaths(deaths) {}
  ~Numbered() override { m_deaths.push_back(m_n); }
  int m_n;
  std::vector<int>& m_deaths;
};

TEST(DeleteArrays, FromTheFirstElementToTheLastAndThenTheArray) {
  std::vector<int> deaths;
  auto* pShapes = new MournedArray<CBDdrawObjArray>(deaths);
  auto* pVertices = new MournedArray<CBDvertexArray>(deaths);
  for (int i = 0; i < 3; ++i) {
    pShapes->Add(new Numbered<CBDcircle>(i, deaths));
    pVertices->Add(new Numbered<CBDvertexPt>(i, deaths));
  }
  CBDdrawObj().DeleteDrawObjArray(static_cast<CBDdrawObjArray*>(pShapes));
  EXPECT_EQ(deaths, (std::vector<int>{0, 1, 2, -1}));
  deaths.clear();
  CBDvertex().DeleteVertexArray(static_cast<CBDvertexArray*>(pVertices));
  EXPECT_EQ(deaths, (std::vector<int>{0, 1, 2, -1}));
}

TEST(DeleteVertexArray, GoesByTheTextWhateverTheClass) {
  int nDeaths = 0;
  auto* pVertices = new CBDvertexArray;
  for (const char* szType : {"PT", "ARC"}) {
    pVertices->Add(new MournedPt(nDeaths));
    pVertices->GetLastElement()->m_sType = szType;
  }
  pVertices->Add(nullptr);
  std::vector<std::unique_ptr<MournedPt>> survivors;
  for (const char* szType : {"", "pt", "CIRCLE"}) {
    survivors.push_back(std::make_unique<MournedPt>(nDeaths));
    survivors.back()->m_sType = szType;
    pVertices->Add(survivors.back().get());
  }
  CBDvertex any;
  any.DeleteVertexArray(pVertices);
  EXPECT_EQ(nDeaths, 2);
  EXPECT_THROW(any.DeleteVertexArray(nullptr), CInvalidArgException);
}

TEST(Model, ThePadstackFindsTheFirstEntryOfALayer) {
  CBDdrawPadstack padstack;
  for (int n : {2, 5, 2}) {
    padstack.m_pRefLays->Add(new CBDpadstackRefLay);
    padstack.m_pRefLays->GetLastElement()->m_nLayerNumber = n;
  }
  padstack.m_pRefLays->InsertAt(0, static_cast<CBDpadstackRefLay*>(nullptr));
  EXPECT_EQ(padstack.pGetPadstackRefLayFromNumber(2), padstack.m_pRefLays->GetAt(1));
  EXPECT_EQ(padstack.pGetPadstackRefLayFromNumber(5), padstack.m_pRefLays->GetAt(2));
  EXPECT_EQ(padstack.pGetPadstackRefLayFromNumber(0), nullptr);
  delete padstack.m_pRefLays;
  padstack.m_pRefLays = nullptr;
  EXPECT_THROW(padstack.pGetPadstackRefLayFromNumber(2), CInvalidArgException);
}

}  // namespace
