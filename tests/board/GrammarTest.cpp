// Every table by which records are read, row by row: what a second reader of the same tables can rely on.
#include "board/BoardForms.h"
#include "board/CBDcompGroup.h"
#include "board/CBDcomponent.h"
#include "board/CBDgate.h"
#include "board/CBDlayerParameter.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDnet.h"
#include "board/CBDparameter.h"
#include "board/CBDpin.h"
#include "board/CBDsubBoard.h"
#include "board/CBDtextSize.h"
#include "technology/CBDcondLayer.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDtechnologyContainer.h"
#include "technology/CBDtoeprintPin.h"
#include "technology/LibraryForms.h"
#include "technology/RecordTestSupport.h"

namespace {

using laminate::Conversion;

const char* Name(Conversion conversion) {
  switch (conversion) {
    case Conversion::real:
      return "real";
    case Conversion::integer:
      return "integer";
    case Conversion::text:
      return "text";
    case Conversion::point:
      return "point";
    case Conversion::optionalText:
      return "optionalText";
    case Conversion::texts:
      return "texts";
    case Conversion::pointSequence:
      return "pointSequence";
    case Conversion::form:
      return "form";
    case Conversion::formByName:
      return "formByName";
    case Conversion::object:
      return "object";
    case Conversion::custom:
      return "custom";
    default:
      return "?";
  }
}

/// A row a line, `key conversion field`, members without their class.
template <class T, class Context>
std::string Rows(laminate::RowSpan<T, Context> rows) {
  std::string s;
  for (const auto& row : rows) {
    std::string_view field = row.field;
    if (field.starts_with("&")) field.remove_prefix(field.find("::") + 2);
    EXPECT_NE(nullptr, row.read);
    s += std::string(row.key) + " " + Name(row.conversion) + " " + std::string(field) + "\n";
  }
  return s;
}

TEST(RecordGrammar, Nets) {
  EXPECT_EQ(
      "type text m_sType\nlockMode text m_sLockMode\npen text m_sPen\ndrawRatsNest text m_sRatsNest\n"
      "rebuildRatsNest text m_sRatsNest\ncomp object m_pRefPinArray\n",
      Rows(laminate::NetRows()));
  EXPECT_EQ("pin text m_sPin\n", Rows(laminate::RefPinRows()));
  EXPECT_EQ("relativePath text m_sRelativePath\n", Rows(laminate::SubBoardRows()));
}

TEST(RecordGrammar, Components) {
  EXPECT_EQ(
      "reference text m_sReference\ngateCount integer m_nGateCount\npinCount integer m_nPinCount\npart text m_sPart\n"
      "stockId text m_sStockId\npackage text m_sPackage\nfootprint text m_sFootprint\n"
      "reverseFootprint text m_sReverseFootprint\nfootprintSpec text m_sFootprintSpec\n"
      "originalReferecne text m_sOriginalReference\nplaced text m_sPlaced\nplacementSide text m_sPlacementSide\n"
      "locationLock text m_sLocationLock\nangleLock text m_sAngleLock\n"
      "placementSideLock text m_sPlacementSideLock\npackageSymbol text m_sPackageSymbol\n"
      "outOfBoard text m_sOutOfBoard\ndrawRefDes text m_sDrawRefDes\noutOfBoardLocation formByName kOutOfBoardPt\n"
      "location formByName kLocationPt\nangle real m_dAngle\nlayout custom m_pDrawObjArray\ngate object m_pGateArray\n"
      "propertyF custom m_dScale and m_pPropertyArray\npropertyS custom m_pPropertyArray\npin object m_pPinArray\n",
      Rows(laminate::ComponentRows()));
  EXPECT_EQ("id text m_sId\npin object m_pGatePinArray\n", Rows(laminate::GateRows()));
  EXPECT_EQ(
      "pt point m_ptLocation\ngate object m_pPinGateArray\nlayout custom m_pDrawObjArray\n"
      "bondWire object m_pBondwireArray\n",
      Rows(laminate::PinRows()));
  EXPECT_EQ("name optionalText m_sName\n", Rows(laminate::PinGateRows()));
  EXPECT_EQ("lockMode text m_sLockMode\n", Rows(laminate::GatePinRows()));
}

TEST(RecordGrammar, GroupsAndSettings) {
  EXPECT_EQ("list texts m_aList\nside text m_sSide\npen integer m_nPen\nlayout custom m_pDrawObjArray\n",
            Rows(laminate::CompGroupRows()));
  EXPECT_EQ(
      "layerParameters form kLayerParameters\nvisibleLayerSet form kVisibleLayerSets\n"
      "textSizeParameters form kTextSizes\n",
      Rows(laminate::ParameterRows()));
  EXPECT_EQ(
      "colorId integer m_nColorId\npriority integer m_nPriority\ndisplayMode text m_sDisplayMode\n"
      "hatch formByName kHatch\nmrcMode text m_sMrcMode\n",
      Rows(laminate::LayerParameterRows()));
  EXPECT_EQ(
      "width integer m_nWidth\nheight integer m_nHeight\nspace integer m_nSpace\nvSpace integer m_nVSpace\n"
      "strokeWidth integer m_nStrokeWidth\n",
      Rows(laminate::TextSizeRows()));
  EXPECT_EQ(
      "part custom m_aParts\npackage custom m_aPackages\nfootprint object m_pLibFootprintArray\n"
      "pad object m_pLibPadArray\npadstack object m_pLibPadstackArray\n",
      Rows(laminate::LibraryEntitiesRows()));
  EXPECT_EQ("side text m_sSide\n", Rows(laminate::LibFootprintRows()));
  EXPECT_EQ("side text m_sSide\nflip text m_sFlip\n", Rows(laminate::LibPadstackRows()));
  EXPECT_EQ("side text m_sSide\nflip text m_sFlip\n", Rows(laminate::LibPadRows()));
}

TEST(RecordGrammar, TechnologyAndLibrary) {
  EXPECT_EQ("type text m_sType\npropertyI custom m_nProperty\nsoldering text m_sSoldering\nrefer object m_pRefArray\n",
            Rows(laminate::CondLayerRows()));
  EXPECT_EQ(
      "systemLayer object m_pSubLayerArray\ndrawLayerOf object m_pSubLayerArray\n"
      "infoLayerOf object m_pSubLayerArray\n",
      Rows(laminate::SubLayerRows()));
  EXPECT_EQ("type text m_sType\nthroughMode text m_sThroughMode\nhole custom m_pHole\npadSet object m_pPadSetArray\n",
            Rows(laminate::PadstackRows()));
  EXPECT_EQ("isBuildupVia text m_sIsBuildupVia\n", Rows(laminate::PadstackWholeRows()));
  EXPECT_EQ(
      "footLayer text m_sFootLayer\nconnect formByName kConnectPad\nnoconnect formByName kNoConnectPad\n"
      "thermal formByName kThermalPad\nclearance formByName kClearancePad\n",
      Rows(laminate::PadSetRows()));
  EXPECT_EQ("area formByName kArea\nheelprint custom m_pHeelprint\ntoeprint form kToeprint\n",
            Rows(laminate::FootprintRows()));
  EXPECT_EQ("uver integer m_nUver\npropertyS custom m_pPropertyArray\npropertyI custom m_pPropertyArray\n",
            Rows(laminate::FootprintWholeRows()));
  EXPECT_EQ("pt point m_ptLocation\n", Rows(laminate::ToeprintPinRows()));
}

}  // namespace
