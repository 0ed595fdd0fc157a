#include "save/RandomDesign.h"

#include <bit>
#include <cmath>
#include <initializer_list>

#include "base/CGProperty.h"
#include "base/CLProperty.h"
#include "base/Number.h"
#include "save/FieldsBoard.h"
#include "save/FieldsDrawObj.h"
#include "save/FieldsTechnology.h"
#include "save/Spelling.h"

namespace laminate::test {

namespace {

// Where a shape stands, and what it must hold for that.
struct Around {
  int bRefer = 0;
  CString sName = {};
  CString sType = {};
  int nNumber = 0;
  CString sSection = {};
  bool bInComponentRefer = false;
};

}  // namespace

class DesignFiller {
 public:
  explicit DesignFiller(RandomDesign& design) : m_random(design.m_random), m_filled(design.m_filled) {}

  void FillAll(Design& design) {
    design.sVersion = Text();
    Technology(design.technology);
    Filled(design.ftfTechnology.m_sName);
    FootprintLayers(design.ftfTechnology);
    Library(design.footprints);
    Board(design.board);
    Parameter(design.parameter);
    Entities(design.entities);
  }

 private:
  // ---- values ----
  unsigned Below(unsigned n) { return static_cast<unsigned>(m_random() % n); }
  bool Chance(unsigned nOf) { return Below(nOf) == 0; }
  int Integer() { return Chance(3) ? static_cast<int>(m_random()) : static_cast<int>(Below(2000)) - 500; }
  double Real() {
    switch (Below(6)) {
      case 0:
        return 0;
      case 1:
        return -0.0;
      case 2: {
        const auto d = std::bit_cast<double>((std::uint64_t{m_random()} << 32) | m_random());
        return std::isfinite(d) ? d : 1e-300;
      }
      default:
        return (static_cast<double>(Below(40000000)) - 20000000) / 100000;
    }
  }
  // `bAnywhere`: a further token may follow in its form.
  CString Text(bool bAnywhere = false) {
    static constexpr std::string_view kBytes("abZ09_-/%;' \"\\()\n\r\t\x83\x5c\x82\xa0\xb1", 23);
    static constexpr std::string_view kWords[] = {"GND", "R12", "A B", "Silk(top)", "", "NO", "YES", "3", "back\\"};
    for (;;) {
      std::string s;
      if (Chance(2)) {
        s = kWords[Below(std::size(kWords))];
      } else {
        for (unsigned n = Below(10); n > 0; --n) s += kBytes[Below(kBytes.size())];
      }
      std::string sToken;
      const TokenPlace place = SpellText(s, sToken);
      if (place != TokenPlace::nowhere && (!bAnywhere || place != TokenPlace::closingLine)) {
        return CString(std::string_view(s));
      }
    }
  }
  void Set(int& n) { n = Integer(); }
  void Set(double& d) { d = Real(); }
  void Set(CString& s) { s = Text(); }
  void Set(CPointD& pt) { pt = CPointD(Real(), Real()); }
  void Set(CStringArray& texts) {
    for (unsigned n = Below(4); n > 0; --n) texts.Add(Text(true));
  }
  void Set(CArrayN& numbers) {
    for (unsigned n = Below(4); n > 0; --n) numbers.Add(Integer());
  }
  template <class X>
  void Filled(X& field) {
    Set(field);
  }

  /// Gives every field of the class itself a value but for what holds objects and what is named.
  template <class T>
  void Fill(T& object, std::initializer_list<std::string_view> without = {}) {
    FieldsOf<T>::ForEachOwn([&](std::string_view sName, auto pMember) {
      if constexpr (requires { Set(object.*pMember); }) {
        if (std::find(without.begin(), without.end(), sName) != without.end()) return;
        m_filled.insert(std::string(ClassName<T>()) + "." + std::string(sName));
        if (!Chance(4)) Set(object.*pMember);
      }
    });
  }
  void Note(const char* szField) { m_filled.insert(szField); }
  int Flag(const char* szField) {
    Note(szField);
    return static_cast<int>(Below(2));
  }

  template <class Array, class Make>
  void Some(Array* pArray, unsigned nAtMost, Make&& make) {
    for (unsigned n = Below(nAtMost + 1); n > 0; --n) {
      if (auto p = make()) pArray->Add(p.release());
    }
  }
  template <class X, class Array, class Finish>
  void SomeFilled(Array* pArray, unsigned nAtMost, std::initializer_list<std::string_view> without, Finish&& finish) {
    Some(pArray, nAtMost, [&] {
      auto p = std::make_unique<X>();
      Fill(*p, without);
      finish(*p);
      return p;
    });
  }
  template <class X, class Array>
  void SomeFilled(Array* pArray, unsigned nAtMost, std::initializer_list<std::string_view> without = {}) {
    SomeFilled<X>(pArray, nAtMost, without, [](X&) {});
  }

  // ---- shapes ----
  void Vertices(CBDvertexArray& vertices) {
    Some(&vertices, 4, [&]() -> std::unique_ptr<CBDvertex> {
      if (Chance(2)) {
        auto pArc = std::make_unique<CBDvertexArc>();
        Fill(*pArc);
        return pArc;
      }
      auto pPoint = std::make_unique<CBDvertexPt>();
      Fill(*pPoint);
      Note("CBDvertex.m_dWidth");
      if (Chance(2)) pPoint->m_dWidth = Real();
      if (Chance(2)) Fill(*pPoint->m_pFillet);
      return pPoint;
    });
  }

  void Special(CBDcircle&, const Around&, int) {}
  void Special(CBDdelete& shape, const Around& around, int) {
    shape.m_sLayerName.Empty();
    shape.m_sLayerType.Empty();
    shape.m_nLayerNumber = 0;
    if (!around.bInComponentRefer) shape.m_bRefer = 0;
  }
  template <class T>
  void Special(T&, const Around&, int) {}
  void Special(CBDdrawPad& pad, const Around& around, int nDepth) {
    Set(pad.m_sNet);
    Shapes(*pad.m_pShapes, 2, Inner(around), nDepth + 1);
  }
  void Special(CBDdrawPadstack& padstack, const Around& around, int nDepth) {
    Set(padstack.m_sNet);
    Around inner = Inner(around);
    Some(padstack.m_pRefLays, 4, [&] {
      auto pEntry = std::make_unique<CBDpadstackRefLay>();
      Note("CBDpadstackRefLay.m_sStatus");
      Set(pEntry->m_sStatus);
      if (Chance(2)) {
        Note("CBDpadstackRefLay.m_nLayerNumber");
        Set(pEntry->m_nLayerNumber);
        inner.nNumber = pEntry->m_nLayerNumber;
      } else {
        Note("CBDpadstackRefLay.m_sLayerName");
        pEntry->m_sLayerName = "L" + Text();
        std::string sToken;
        if (SpellText(pEntry->m_sLayerName.View(), sToken) == TokenPlace::nowhere) pEntry->m_sLayerName = "L";
        pEntry->m_bVisible = Flag("CBDpadstackRefLay.m_bVisible");
        inner.sName = pEntry->m_sLayerName;
      }
      Note("CBDdrawObj.m_sSection");
      inner.sSection = Chance(2) ? "conductive" : "nonConductive";
      Shapes(*padstack.m_pShapes, 2, inner, nDepth + 1);
      return pEntry;
    });
  }
  void Special(CBDhole& hole, const Around&, int) {
    if (Chance(3)) return;
    auto pCircle = std::make_unique<CBDcircle>();
    Fill(*pCircle);
    delete std::exchange(hole.m_pShape, pCircle.release());
  }
  void Special(CBDline& line, const Around&, int) {
    Set(line.m_sNet);
    Note("CBDdrawObj.m_sPenShape");
    Set(line.m_sPenShape);
    Vertices(*line.m_pVertices);
  }
  void Special(CBDsurface& surface, const Around&, int) {
    Set(surface.m_sNet);
    surface.m_bArea = 0;
    surface.m_bMesh = Flag("CBDsurface.m_bMesh");
    surface.m_bAlreadySpread = Flag("CBDsurface.m_bAlreadySpread");
    surface.m_bSubmesh = Flag("CBDsurface.m_bSubmesh");
    // Without the sub-mesh its parameters are those of a new surface.
    if (surface.m_bSubmesh == 0) {
      const CBDsurface fresh;
      ForEachField<CBDsurface>([&](std::string_view sName, auto pMember) {
        if (!sName.starts_with("m_dParam") && !sName.starts_with("m_sParam") && !sName.starts_with("m_ptParam") &&
            !sName.starts_with("m_nParam") && !sName.starts_with("m_arrParam")) {
          return;
        }
        if constexpr (requires { Set(surface.*pMember); }) surface.*pMember = fresh.*pMember;
      });
    }
    Vertices(*surface.m_pVertices);
    SomeFilled<CBDopenShape>(surface.m_pOpenShapes, 2, {},
                             [this](CBDopenShape& shape) { Vertices(*shape.m_pVertices); });
  }
  void Special(CBDsymbolText& text, const Around&, int) {
    text.m_sString.Empty();
    m_filled.erase("CBDsymbolText.m_sString");
    Fill(*text.m_pText);
  }

  static Around Inner(const Around& around) {
    Around inner = around;
    inner.bInComponentRefer = false;
    inner.sSection.Empty();
    return inner;
  }

  template <class T>
  std::unique_ptr<CBDdrawObj> One(const Around& around, int nDepth) {
    auto p = std::make_unique<T>();
    p->m_bRefer = around.bRefer;
    p->m_sLayerName = around.sName;
    p->m_sLayerType = around.sType;
    p->m_nLayerNumber = around.nNumber;
    p->m_sSection = around.sSection;
    Note("CBDdrawObj.m_bRefer");
    Note("CBDdrawObj.m_sLayerName");
    Note("CBDdrawObj.m_sLayerType");
    Note("CBDdrawObj.m_nLayerNumber");
    Note("CBDdrawObj.m_sNet");
    if (around.bInComponentRefer) {
      Set(p->m_sNet);
      if (Chance(2)) {
        Note("CBDdrawObj.m_nCavityFrom");
        Note("CBDdrawObj.m_nCavityTo");
        p->m_nCavityFrom = static_cast<int>(Below(9));
        p->m_nCavityTo = static_cast<int>(Below(9));
      }
    }
    Fill(*p, {"m_bArea"});
    Special(*p, around, nDepth);
    return p;
  }

  std::unique_ptr<CBDdrawObj> Shape(const Around& around, int nDepth) {
    using Maker = std::unique_ptr<CBDdrawObj> (DesignFiller::*)(const Around&, int);
    static constexpr Maker kMakers[] = {
        &DesignFiller::One<CBDcircle>,        &DesignFiller::One<CBDdelete>,       &DesignFiller::One<CBDdonut>,
        &DesignFiller::One<CBDdrawSubBoard>,  &DesignFiller::One<CBDhole>,         &DesignFiller::One<CBDline>,
        &DesignFiller::One<CBDoblong>,        &DesignFiller::One<CBDoval>,         &DesignFiller::One<CBDovalHole>,
        &DesignFiller::One<CBDrectangle>,     &DesignFiller::One<CBDroundThermal>, &DesignFiller::One<CBDsquareHole>,
        &DesignFiller::One<CBDsquareThermal>, &DesignFiller::One<CBDsurface>,      &DesignFiller::One<CBDsymbolText>,
        &DesignFiller::One<CBDtext>,          &DesignFiller::One<CBDdrawPad>,      &DesignFiller::One<CBDdrawPadstack>};
    constexpr unsigned kHolders = 2;  // the last ones hold shapes
    const unsigned n = static_cast<unsigned>(std::size(kMakers)) - (nDepth > 1 ? kHolders : 0);
    return (this->*kMakers[Below(n)])(around, nDepth);
  }
  void Shapes(CBDdrawObjArray& shapes, unsigned nAtMost, const Around& around, int nDepth) {
    Some(&shapes, nAtMost, [&] { return Shape(around, nDepth); });
  }

  Around BoardLayer() {
    Around around;
    switch (Below(4)) {
      case 0:
        around.sType = "systemLayer";
        around.sName = Text();
        break;
      case 1:
        around.sType = "conductive";
        around.sName = Chance(2) ? CString("4") : Text();
        around.nNumber = Atoi(around.sName.View());
        break;
      case 2:
        around.sType = "nonConductive";
        around.sName = Text();
        break;
      default:
        break;
    }
    return around;
  }
  void BoardShapes(CBDdrawObjArray& shapes, unsigned nAtMost, bool bOfComponent, int nDepth = 0) {
    Around around = BoardLayer();
    Some(&shapes, nAtMost, [&] {
      if (Chance(3)) around = BoardLayer();
      Around one = around;
      one.bRefer = static_cast<int>(Below(2));
      one.bInComponentRefer = bOfComponent && one.bRefer == 1;
      return Shape(one, nDepth);
    });
  }
  void FootprintShapes(CBDdrawObjArray& shapes) {
    Around around;
    Some(&shapes, 5, [&] {
      if (Chance(2)) around.sName = Chance(2) ? CString("FPADSTACK") : Text();
      return Shape(around, 1);  // deeper ones would need too many levels of forms
    });
  }

  // ---- the sections ----
  void FootprintLayers(CBDtechnologyContainer& technology) {
    SomeFilled<CBDfootprintLayer>(technology.m_pFootprintLayerArray, 3);
  }
  void Technology(CBDtechnologyContainer& technology) {
    Fill(technology);
    FootprintLayers(technology);
    SomeFilled<CBDnonConductiveLayer>(technology.m_pNonConductiveLayerArray, 3);
    SomeFilled<CBDcondLayer>(technology.m_pCondLayerArray, 3, {}, [this](CBDcondLayer& layer) {
      SomeFilled<CBDcondLayerRef>(layer.m_pRefArray, 2, {"m_nUserDefType"});
    });
    Some(technology.m_pSubLayerArray, 4, [&] {
      auto p = std::make_unique<CBDsubLayer>();
      Note("CBDsubLayer.m_sLayerKind");
      Note("CBDsubLayer.m_sName");
      const char* const kKinds[] = {"systemLayer", "conductive", "nonConductive", ""};
      p->m_sLayerKind = kKinds[Below(4)];
      if (!p->m_sLayerKind.IsEmpty()) p->m_sName = Text();
      return p;
    });
    SomeFilled<CBDmap>(technology.m_pMapArray, 2, {},
                       [this](CBDmap& map) { SomeFilled<CBDcorrespondence>(map.m_pCorrespondenceArray, 3); });
  }
  void Library(CBDfootprintContainer& library) {
    SomeFilled<CBDpad>(library.m_pPadArray, 4, {"m_nUver"},
                       [this](CBDpad& pad) { Shapes(*pad.m_pDrawObjArray, 3, {}, 0); });
    SomeFilled<CBDpadstack>(library.m_pPadstackArray, 4, {"m_nUver", "m_aVerbatim"}, [this](CBDpadstack& padstack) {
      SomeFilled<CBDpadSet>(padstack.m_pPadSetArray, 3);
      if (Chance(3)) return;
      auto pHole = std::make_unique<CBDhole>();
      pHole->m_sLayerName = "HOLE";
      if (!Chance(3)) delete std::exchange(pHole->m_pShape, Shape({}, 0).release());
      padstack.m_pHole->m_pDrawObj = pHole.release();
    });
    SomeFilled<CBDfootprint>(library.m_pFootprintArray, 4, {"m_aVerbatim"}, [this](CBDfootprint& footprint) {
      FootprintShapes(*footprint.m_pHeelprint->m_pDrawObjArray);
      SomeFilled<CBDtoeprintPin>(footprint.m_pToeprintPinArray, 3, {},
                                 [this](CBDtoeprintPin& pin) { FootprintShapes(*pin.m_pDrawObjArray); });
      Some(footprint.m_pPropertyArray, 3,
           [this] { return std::make_unique<CLProperty>(Text(true), Text(), Chance(2) ? "propertyS" : "propertyI"); });
    });
  }
  void Board(CBDboardContainer& board) {
    SomeFilled<CBDsubBoard>(board.m_pSubBoardArray, 3);
    SomeFilled<CBDcompGroup>(board.m_pCompGroupArray, 3, {},
                             // A group's own forms take levels that a shape inside two others would need.
                             [this](CBDcompGroup& group) { BoardShapes(*group.m_pDrawObjArray, 4, false, 1); });
    SomeFilled<CBDnet>(board.m_pNetArray, 4, {}, [this](CBDnet& net) { SomeFilled<CBDrefPin>(net.m_pRefPinArray, 3); });
    SomeFilled<CBDcomponent>(board.m_pComponentArray, 4, {"m_ptMinRect1", "m_ptMinRect2", "m_aVerbatim", "m_dScale"},
                             [this](CBDcomponent& component) { Component(component); });
    BoardShapes(*board.m_pDrawObjArray, 20, false);
  }
  void Component(CBDcomponent& component) {
    BoardShapes(*component.m_pDrawObjArray, 6, true);
    SomeFilled<CBDgate>(component.m_pGateArray, 3, {"m_sLockMode"},
                        [this](CBDgate& gate) { SomeFilled<CBDgatePin>(gate.m_pGatePinArray, 3); });
    SomeFilled<CBDpin>(component.m_pPinArray, 4, {}, [this](CBDpin& pin) {
      SomeFilled<CBDpinGate>(pin.m_pPinGateArray, 2);
      SomeFilled<CBDbondwire>(pin.m_pBondwireArray, 2);
      BoardShapes(*pin.m_pDrawObjArray, 3, false);
    });
    Note("CBDcomponent.m_dScale");
    Some(component.m_pPropertyArray, 4, [&] {
      auto p = std::make_unique<CGProperty>(Text(true), Text());
      if (Chance(2)) {
        p->m_sItem = "Scale";
        if (Chance(2)) component.m_dScale = Atof(p->m_sComment.View());
      }
      return p;
    });
  }
  void Parameter(CBDparameter& parameter) {
    SomeFilled<CBDlayerParameter>(parameter.m_pLayerParameterArray, 3,
                                  {"m_sLayerType", "m_sLayerName", "m_nLayerNumber"});
    SomeFilled<CBDvisibleLayerSet>(parameter.m_pVisibleLayerSetArray, 3);
    SomeFilled<CBDtextSize>(parameter.m_pTextSizeArray, 3);
  }
  void Entities(CBDlibraryEntities& entities) {
    Fill(entities);
    SomeFilled<CBDlibFootprint>(entities.m_pLibFootprintArray, 3);
    SomeFilled<CBDlibPad>(entities.m_pLibPadArray, 3);
    SomeFilled<CBDlibPadstack>(entities.m_pLibPadstackArray, 3);
  }

  std::mt19937& m_random;
  std::set<std::string>& m_filled;
};

void RandomDesign::Fill(Design& design) { DesignFiller(*this).FillAll(design); }

}  // namespace laminate::test
