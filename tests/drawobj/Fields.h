#pragma once
// Every class of the family with its fields in their order, each once: what the tests of defaults, copies, moves and of
// the ledger go by.
#include <string>
#include <type_traits>
#include <utility>

#include "base/CArrayN.h"
#include "base/CLProperty.h"
#include "drawobj/CBDareaz.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdelete.h"
#include "drawobj/CBDdonut.h"
#include "drawobj/CBDdrawPad.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/CBDdrawSubBoard.h"
#include "drawobj/CBDfillet.h"
#include "drawobj/CBDhole.h"
#include "drawobj/CBDline.h"
#include "drawobj/CBDoblong.h"
#include "drawobj/CBDopenShape.h"
#include "drawobj/CBDoval.h"
#include "drawobj/CBDovalHole.h"
#include "drawobj/CBDrectangle.h"
#include "drawobj/CBDroundThermal.h"
#include "drawobj/CBDsquareHole.h"
#include "drawobj/CBDsquareThermal.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/CBDsymbolText.h"
#include "drawobj/CBDtext.h"
#include "drawobj/CBDvertexArc.h"
#include "drawobj/CBDvertexPt.h"

// f("field", object.field), ...
#define FIELD(name) f(#name, o.name)

template <class T, class F>
void SharedFields(T& o, F&& f) {
  FIELD(m_bRefer), FIELD(m_sLayerName), FIELD(m_sLayerType), FIELD(m_nLayerNumber), FIELD(m_sKind), FIELD(m_sNet),
      FIELD(m_sPenShape), FIELD(m_sSection), FIELD(m_nCavityFrom), FIELD(m_nCavityTo);
}
template <class T, class F>
void VertexFields(T& o, F&& f) {
  FIELD(m_dWidth), FIELD(m_sType);
}

/// The class's own fields.
template <class T, class F>
void OwnFields(T& o, F&& f) {
  using C = std::remove_const_t<T>;
  if constexpr (std::is_same_v<C, CBDareaz>) {
    f("m_adSpare", o.m_adSpare[0]), f("m_adSpare[1]", o.m_adSpare[1]), f("m_adSpare[2]", o.m_adSpare[2]),
        f("m_adSpare[3]", o.m_adSpare[3]), f("m_adSpare[4]", o.m_adSpare[4]), FIELD(m_pVertices);
  } else if constexpr (std::is_same_v<C, CBDcircle>) {
    FIELD(m_ptCenter), FIELD(m_dRadius);
  } else if constexpr (std::is_same_v<C, CBDdonut>) {
    FIELD(m_dOut), FIELD(m_dIn), FIELD(m_pt);
  } else if constexpr (std::is_same_v<C, CBDdrawPad>) {
    FIELD(m_pShapes), FIELD(m_sPadName), FIELD(m_pt), FIELD(m_dAngle);
  } else if constexpr (std::is_same_v<C, CBDdrawPadstack>) {
    FIELD(m_pShapes), FIELD(m_dAngle), FIELD(m_pRefLays), FIELD(m_nFrom), FIELD(m_nTo), FIELD(m_nDrillType),
        FIELD(m_pt), FIELD(m_sPadstackName), FIELD(m_sSide), FIELD(m_sFlip), FIELD(m_sBuildupVia), FIELD(m_pHole);
  } else if constexpr (std::is_same_v<C, CBDpadstackRefLay>) {
    FIELD(m_sStatus), FIELD(m_nLayerNumber), FIELD(m_sLayerName), FIELD(m_bVisible);
  } else if constexpr (std::is_same_v<C, CBDdrawSubBoard>) {
    FIELD(m_pt), FIELD(m_nSubBoard), FIELD(m_dAngle), FIELD(m_sFlip), FIELD(m_pShapes);
  } else if constexpr (std::is_same_v<C, CBDhole>) {
    FIELD(m_nFrom), FIELD(m_nTo), FIELD(m_sDrillType), FIELD(m_pShape), FIELD(m_nHoleType);
  } else if constexpr (std::is_same_v<C, CBDline>) {
    FIELD(m_sThermalData), FIELD(m_sLineType), FIELD(m_dDash), FIELD(m_dBlank), FIELD(m_pVertices);
  } else if constexpr (std::is_same_v<C, CBDoblong>) {
    FIELD(m_ptSecond), FIELD(m_ptFirst), FIELD(m_dWidth);
  } else if constexpr (std::is_same_v<C, CBDopenShape>) {
    FIELD(m_dOutlineWidth), FIELD(m_pVertices);
  } else if constexpr (std::is_same_v<C, CBDoval>) {
    FIELD(m_dAngle), FIELD(m_dHeight), FIELD(m_dWidth), FIELD(m_pt);
  } else if constexpr (std::is_same_v<C, CBDovalHole>) {
    FIELD(m_pt), FIELD(m_dWidth), FIELD(m_dHeight), FIELD(m_dAngle), FIELD(m_nHoleType);
  } else if constexpr (std::is_same_v<C, CBDrectangle>) {
    FIELD(m_dFillAngle), FIELD(m_dFillWidth), FIELD(m_dOutlineWidth), FIELD(m_dAngle), FIELD(m_dHeight),
        FIELD(m_dWidth), FIELD(m_pt);
  } else if constexpr (std::is_same_v<C, CBDroundThermal>) {
    FIELD(m_nBridgeAngle), FIELD(m_dBridgeWidth), FIELD(m_nBridge), FIELD(m_pt), FIELD(m_dIn), FIELD(m_dOut);
  } else if constexpr (std::is_same_v<C, CBDsquareHole>) {
    FIELD(m_dCorner), FIELD(m_dHeight), FIELD(m_dWidth), FIELD(m_dAngle), FIELD(m_pt);
  } else if constexpr (std::is_same_v<C, CBDsquareThermal>) {
    FIELD(m_dOut), FIELD(m_dIn), FIELD(m_pt), FIELD(m_nBridge), FIELD(m_dBridgeWidth), FIELD(m_dBridgeAngle);
  } else if constexpr (std::is_same_v<C, CBDsurface>) {
    FIELD(m_bArea), FIELD(m_bMesh), FIELD(m_bAlreadySpread), FIELD(m_nMeshFlagXCount), FIELD(m_dLowerHeight),
        FIELD(m_dUpperHeight), FIELD(m_dOutlineWidth), FIELD(m_dMeshPitch), FIELD(m_dFillWidth), FIELD(m_dFillAngle),
        FIELD(m_dMeshShapeDiameter), FIELD(m_dMeshFigureAngle), FIELD(m_dMeshWindowClearance),
        FIELD(m_dMeshFigureClearance), FIELD(m_dMeshAngle), FIELD(m_dMeshOutlineClearance), FIELD(m_sMeshShape),
        FIELD(m_sMeshArrangeType), FIELD(m_ptMeshBase), FIELD(m_ptMeshRotate), FIELD(m_arrMeshFlags), FIELD(m_bSubmesh),
        FIELD(m_nParamFlagXCount), FIELD(m_dParamPitch), FIELD(m_dParamShapeDiameter), FIELD(m_dParamFigureAngle),
        FIELD(m_dParamWindowClearance), FIELD(m_dParamFigureClearance), FIELD(m_dParamAngle),
        FIELD(m_dParamOutlineClearance), FIELD(m_sParamShape), FIELD(m_sParamArrangeType), FIELD(m_ptParamBase),
        FIELD(m_ptParamRotate), FIELD(m_arrParamFlags), FIELD(m_pProperties), FIELD(m_pVertices), FIELD(m_pOpenShapes);
  } else if constexpr (std::is_same_v<C, CBDsymbolText>) {
    FIELD(m_sSymbolType), FIELD(m_sString), FIELD(m_pText);
  } else if constexpr (std::is_same_v<C, CBDtext>) {
    FIELD(m_sString), FIELD(m_nFont), FIELD(m_nKFont), FIELD(m_dWidth), FIELD(m_dHeight), FIELD(m_dSpace),
        FIELD(m_dVSpace), FIELD(m_dStrokeWidth), FIELD(m_pt), FIELD(m_dAngle), FIELD(m_sDir), FIELD(m_sJustify),
        FIELD(m_sFlip), FIELD(m_sReverse), FIELD(m_sSpare), FIELD(m_dTextFrameOffset), FIELD(m_dSpare);
  } else if constexpr (std::is_same_v<C, CBDfillet>) {
    FIELD(m_sType), FIELD(m_dWidth), FIELD(m_dLength), FIELD(m_dFilletWidth), FIELD(m_sDir);
  } else if constexpr (std::is_same_v<C, CBDvertexPt>) {
    FIELD(m_dTarc), FIELD(m_pFillet), FIELD(m_pt);
  } else if constexpr (std::is_same_v<C, CBDvertexArc>) {
    FIELD(m_dEndWidth), FIELD(m_dBeginWidth), FIELD(m_nSpare), FIELD(m_sDirection), FIELD(m_dR), FIELD(m_ptBegin),
        FIELD(m_ptCenter), FIELD(m_ptEnd);
  } else {
    static_assert(std::is_same_v<C, CBDdelete> || std::is_same_v<C, CBDdrawObj> || std::is_same_v<C, CBDvertex>);
  }
}
#undef FIELD

/// The fields of the base and then its own.
template <class T, class F>
void AllFields(T& o, F&& f) {
  if constexpr (std::is_base_of_v<CBDdrawObj, T>) SharedFields(o, f);
  if constexpr (std::is_base_of_v<CBDvertex, T>) VertexFields(o, f);
  OwnFields(o, f);
}

/// A field as text: a value as it reads, an array by its elements, an object by its class and fields.
std::string Text(double d);
std::string Text(int n);
std::string Text(const CString& s);
std::string Text(const CPointD& pt);
std::string Text(const CArrayN& numbers);
std::string Text(const CLPropertyArray* pProperties);
std::string Text(const CBDdrawObj* pShape);
std::string Text(const CBDvertex* pVertex);
std::string Text(const CBDfillet* pFillet);
std::string Text(const CBDpadstackRefLay* pEntry);
template <class X>
std::string Text(const laminate::NamedArray<X>* pArray) {
  if (pArray == nullptr) return "null";
  std::string s = "[";
  for (const X* p : *pArray) s += Text(p) + ";";
  return s + "]";
}

/// An object with all its fields, for comparing two at once.
template <class T>
std::string Describe(const T& o) {
  std::string s = "{";
  AllFields(o, [&s](const char* szName, const auto& field) { s += std::string(szName) + "=" + Text(field) + " "; });
  return s + "}";
}

namespace filling {

/// Counts up, so that no two fields are alike.
int Next();
/// From here on the same values come again.
void Restart();
/// While it lives, fields get random values that a file can hold: numbers of several magnitudes and lengths, plain
/// words, arrays of 0 to 5 elements.
class RandomScope {
 public:
  explicit RandomScope(unsigned nSeed);
  ~RandomScope();
  RandomScope(const RandomScope&) = delete;
  RandomScope& operator=(const RandomScope&) = delete;
};
void Set(double& d);
void Set(int& n);
void Set(CString& s);
void Set(CPointD& pt);
void Set(CArrayN& numbers);
void Set(CLPropertyArray*& p);
void Set(CBDdrawObjArray*& p);
void Set(CBDvertexArray*& p);
void Set(CBDopenShapeArray*& p);
void Set(CBDpadstackRefLayArray*& p);
void Set(CBDdrawObj*& p);
void Set(CBDtext*& p);
void Set(CBDfillet*& p);

}  // namespace filling

/// Sets every field but the tag to a value of its own that differs from the default; arrays and objects get content.
/// Values have at most five decimals.
template <class T>
void Fill(T& o) {
  AllFields(o, [](const char* szName, auto& field) {
    if (std::string_view(szName) != "m_sKind" &&
        (!std::is_base_of_v<CBDvertex, T> || std::string_view(szName) != "m_sType")) {
      filling::Set(field);
    }
  });
}

/// The field that a path leads to, as text: "m_pVertices/0/m_pFillet/m_dWidth". "?" when there is no such field.
std::string At(const CBDdrawObj& shape, std::string_view path);

/// Calls f.template operator()<C>("C") for every class.
template <class F>
void EachShapeClass(F&& f) {
  f.template operator()<CBDareaz>("CBDareaz");
  f.template operator()<CBDcircle>("CBDcircle");
  f.template operator()<CBDdelete>("CBDdelete");
  f.template operator()<CBDdonut>("CBDdonut");
  f.template operator()<CBDdrawPad>("CBDdrawPad");
  f.template operator()<CBDdrawPadstack>("CBDdrawPadstack");
  f.template operator()<CBDdrawSubBoard>("CBDdrawSubBoard");
  f.template operator()<CBDhole>("CBDhole");
  f.template operator()<CBDline>("CBDline");
  f.template operator()<CBDoblong>("CBDoblong");
  f.template operator()<CBDopenShape>("CBDopenShape");
  f.template operator()<CBDoval>("CBDoval");
  f.template operator()<CBDovalHole>("CBDovalHole");
  f.template operator()<CBDrectangle>("CBDrectangle");
  f.template operator()<CBDroundThermal>("CBDroundThermal");
  f.template operator()<CBDsquareHole>("CBDsquareHole");
  f.template operator()<CBDsquareThermal>("CBDsquareThermal");
  f.template operator()<CBDsurface>("CBDsurface");
  f.template operator()<CBDsymbolText>("CBDsymbolText");
  f.template operator()<CBDtext>("CBDtext");
}
template <class F>
void EachPartClass(F&& f) {
  f.template operator()<CBDfillet>("CBDfillet");
  f.template operator()<CBDpadstackRefLay>("CBDpadstackRefLay");
  f.template operator()<CBDvertexArc>("CBDvertexArc");
  f.template operator()<CBDvertexPt>("CBDvertexPt");
}
