#include "drawobj/DrawObjLedger.h"

namespace laminate {
namespace {

constexpr Fate kept = Fate::kept;
constexpr Fate norm = Fate::normalised;
constexpr Fate constant = Fate::constant;
constexpr Fate dropped = Fate::dropped;

constexpr std::string_view kFive = "rounded to five decimals";
constexpr std::string_view kSix = "rounded to six decimals";
constexpr std::string_view kDigits =
    "six significant digits; a value that is then written without a point reads back as a count of database units";
constexpr std::string_view kWord =
    "written without quotes: a plain word is kept, a text with blanks, quotes or brackets is not, and an empty one "
    "ends "
    "the load that reads it";
constexpr std::string_view kWordOrNone =
    "written without quotes: a plain word is kept, a text with blanks, quotes or brackets is not";
constexpr std::string_view kAround = "not in the shape's text; the form around it gives it again";
constexpr std::string_view kNever = "no file holds it";
constexpr std::string_view kNet = "written in quotes; a percent sign comes back as two, a quote ends the name";
constexpr std::string_view kSurfaceNet =
    "written in quotes; a percent sign comes back as two, a quote ends the name; in a geometry written of a mesh plane "
    "too, and nowhere of an area";

constexpr LedgerClass kClasses[] = {
    {"CBDdrawObj", ReadsBack::within, ReadsBack::within, "what all shapes share"},
    {"CBDareaz", ReadsBack::other, ReadsBack::other, "an area that a host made"},
    {"CBDcircle", ReadsBack::unknownKeyword, ReadsBack::same, "a circle"},
    {"CBDdelete", ReadsBack::same, ReadsBack::same, "a deletion"},
    {"CBDdonut", ReadsBack::same, ReadsBack::same, "a ring"},
    {"CBDdrawPad", ReadsBack::same, ReadsBack::same, "a placed pad"},
    {"CBDdrawPadstack", ReadsBack::same, ReadsBack::same, "a placed padstack"},
    {"CBDpadstackRefLay", ReadsBack::within, ReadsBack::within, "a placed padstack's entry for a layer"},
    {"CBDdrawSubBoard", ReadsBack::unknownKeyword, ReadsBack::unknownKeyword, "a placed sub-board"},
    {"CBDhole", ReadsBack::same, ReadsBack::defaults, "a hole"},
    {"CBDline", ReadsBack::same, ReadsBack::same, "a line"},
    {"CBDoblong", ReadsBack::same, ReadsBack::same, "an oblong"},
    {"CBDopenShape", ReadsBack::within, ReadsBack::within, "a cut-out of a surface"},
    {"CBDoval", ReadsBack::defaults, ReadsBack::same, "an oval"},
    {"CBDovalHole", ReadsBack::same, ReadsBack::other, "an oval hole"},
    {"CBDrectangle", ReadsBack::defaults, ReadsBack::same, "a rectangle"},
    {"CBDroundThermal", ReadsBack::same, ReadsBack::same, "a round thermal"},
    {"CBDsquareHole", ReadsBack::same, ReadsBack::same, "a square hole"},
    {"CBDsquareThermal", ReadsBack::defaults, ReadsBack::defaults, "a square thermal"},
    {"CBDsurface", ReadsBack::same, ReadsBack::same, "a surface, area or mesh plane"},
    {"CBDsymbolText", ReadsBack::raises, ReadsBack::raises, "a symbol text"},
    {"CBDtext", ReadsBack::same, ReadsBack::same, "a text"},
    {"CBDvertexPt", ReadsBack::within, ReadsBack::within, "a point of a line or outline"},
    {"CBDvertexArc", ReadsBack::within, ReadsBack::within, "an arc of a line or outline"},
    {"CBDfillet", ReadsBack::within, ReadsBack::within, "a point's fillet"},
};

// clang-format off
constexpr LedgerRow kRows[] = {
    {"CBDdrawObj", "m_bRefer", dropped, dropped, kAround},
    {"CBDdrawObj", "m_sLayerName", dropped, dropped, kAround},
    {"CBDdrawObj", "m_sLayerType", dropped, dropped, kAround},
    {"CBDdrawObj", "m_nLayerNumber", dropped, dropped, kAround},
    {"CBDdrawObj", "m_sKind", kept, kept, "by the keyword, where the class reads back"},
    {"CBDdrawObj", "m_sNet", dropped, dropped, "only of lines, surfaces and padstacks; see there"},
    {"CBDdrawObj", "m_sPenShape", dropped, dropped, "only of lines; see there"},
    {"CBDdrawObj", "m_sSection", dropped, dropped, "the shapes of a padstack are not written"},
    {"CBDdrawObj", "m_nCavityFrom", dropped, dropped, kAround},
    {"CBDdrawObj", "m_nCavityTo", dropped, dropped, kAround},

    {"CBDareaz", "m_adSpare", dropped, dropped, kNever},
    {"CBDareaz", "m_pVertices", dropped, dropped, "an empty area is written"},

    {"CBDcircle", "m_ptCenter", dropped, norm, kFive},
    {"CBDcircle", "m_dRadius", dropped, norm, kFive},

    {"CBDdonut", "m_dOut", norm, norm, kFive},
    {"CBDdonut", "m_dIn", norm, norm, kFive},
    {"CBDdonut", "m_pt", norm, norm, kFive},

    {"CBDdrawPad", "m_sNet", dropped, dropped, ""},
    {"CBDdrawPad", "m_pShapes", dropped, dropped, ""},
    {"CBDdrawPad", "m_sPadName", norm, norm, kWord},
    {"CBDdrawPad", "m_pt", norm, norm, kFive},
    {"CBDdrawPad", "m_dAngle", norm, norm, kFive},

    {"CBDdrawPadstack", "m_sNet", norm, dropped, kNet},
    {"CBDdrawPadstack", "m_pShapes", dropped, dropped, ""},
    {"CBDdrawPadstack", "m_dAngle", norm, norm, "rounded to five decimals; up to 0.001 degrees it counts as none"},
    {"CBDdrawPadstack", "m_pRefLays", norm, dropped, "those from m_nFrom to m_nTo, all as conductive"},
    {"CBDdrawPadstack", "m_nFrom", norm, dropped, "of a span of one layer nothing: its number is the end"},
    {"CBDdrawPadstack", "m_nTo", norm, dropped, "0 becomes m_nFrom"},
    {"CBDdrawPadstack", "m_nDrillType", dropped, dropped, ""},
    {"CBDdrawPadstack", "m_pt", norm, norm, kFive},
    {"CBDdrawPadstack", "m_sPadstackName", norm, norm, kWord},
    {"CBDdrawPadstack", "m_sSide", dropped, dropped, ""},
    {"CBDdrawPadstack", "m_sFlip", dropped, dropped, ""},
    {"CBDdrawPadstack", "m_sBuildupVia", dropped, dropped, ""},
    {"CBDdrawPadstack", "m_pHole", dropped, dropped, kNever},
    {"CBDdrawPadstack", "the token of \"padstackGroup\"", constant, constant, "\"default\", in a geometry"},

    {"CBDpadstackRefLay", "m_sStatus", norm, dropped, kWord},
    {"CBDpadstackRefLay", "m_nLayerNumber", kept, dropped, ""},
    {"CBDpadstackRefLay", "m_sLayerName", dropped, dropped, ""},
    {"CBDpadstackRefLay", "m_bVisible", dropped, dropped, ""},

    {"CBDdrawSubBoard", "m_pt", dropped, dropped, ""},
    {"CBDdrawSubBoard", "m_nSubBoard", dropped, dropped, ""},
    {"CBDdrawSubBoard", "m_dAngle", dropped, dropped, ""},
    {"CBDdrawSubBoard", "m_sFlip", dropped, dropped, ""},
    {"CBDdrawSubBoard", "m_pShapes", dropped, dropped, "the shapes that a file gives to it are the board's"},

    {"CBDhole", "m_nFrom", dropped, dropped, ""},
    {"CBDhole", "m_nTo", dropped, dropped, ""},
    {"CBDhole", "m_sDrillType", dropped, dropped, ""},
    {"CBDhole", "m_pShape", norm, dropped, "a circle, rounded to five decimals; a square hole stands in the hole's place"},
    {"CBDhole", "m_nHoleType", dropped, dropped, ""},

    {"CBDline", "m_sNet", norm, dropped, kNet},
    {"CBDline", "m_sPenShape", norm, norm, "\"SQUARE\" only; any other is dropped"},
    {"CBDline", "m_sThermalData", dropped, dropped, ""},
    {"CBDline", "m_sLineType", dropped, dropped, ""},
    {"CBDline", "m_dDash", dropped, dropped, ""},
    {"CBDline", "m_dBlank", dropped, dropped, ""},
    {"CBDline", "m_pVertices", norm, norm, "see the vertices"},
    {"CBDline", "the keyword", constant, constant, "\"line\", of a \"shieldLine\" too"},

    {"CBDoblong", "m_ptSecond", norm, norm, kFive},
    {"CBDoblong", "m_ptFirst", norm, norm, kFive},
    {"CBDoblong", "m_dWidth", norm, norm, kFive},

    {"CBDopenShape", "m_dOutlineWidth", norm, norm, kFive},
    {"CBDopenShape", "m_pVertices", norm, norm, "see the vertices"},

    {"CBDoval", "m_dAngle", dropped, norm, kFive},
    {"CBDoval", "m_dHeight", dropped, norm, kFive},
    {"CBDoval", "m_dWidth", dropped, norm, kFive},
    {"CBDoval", "m_pt", dropped, norm, kFive},

    {"CBDovalHole", "m_pt", norm, dropped, kDigits},
    {"CBDovalHole", "m_dWidth", norm, dropped, kDigits},
    {"CBDovalHole", "m_dHeight", norm, dropped, kDigits},
    {"CBDovalHole", "m_dAngle", norm, dropped, "six significant digits"},
    {"CBDovalHole", "m_nHoleType", dropped, dropped, ""},

    {"CBDrectangle", "m_dFillAngle", dropped, norm, kSix},
    {"CBDrectangle", "m_dFillWidth", dropped, norm, kFive},
    {"CBDrectangle", "m_dOutlineWidth", dropped, norm, kFive},
    {"CBDrectangle", "m_dAngle", dropped, norm, kSix},
    {"CBDrectangle", "m_dHeight", dropped, norm, kFive},
    {"CBDrectangle", "m_dWidth", dropped, norm, kFive},
    {"CBDrectangle", "m_pt", dropped, norm, kFive},

    {"CBDroundThermal", "m_nBridgeAngle", kept, kept, ""},
    {"CBDroundThermal", "m_dBridgeWidth", norm, norm, kFive},
    {"CBDroundThermal", "m_nBridge", kept, kept, ""},
    {"CBDroundThermal", "m_pt", norm, norm, kFive},
    {"CBDroundThermal", "m_dIn", norm, norm, kFive},
    {"CBDroundThermal", "m_dOut", norm, norm, kFive},

    {"CBDsquareHole", "m_dCorner", norm, norm, kFive},
    {"CBDsquareHole", "m_dHeight", norm, norm, kFive},
    {"CBDsquareHole", "m_dWidth", norm, norm, kFive},
    {"CBDsquareHole", "m_dAngle", norm, norm, kFive},
    {"CBDsquareHole", "m_pt", norm, norm, kFive},

    {"CBDsquareThermal", "m_dOut", dropped, dropped, ""},
    {"CBDsquareThermal", "m_dIn", dropped, dropped, ""},
    {"CBDsquareThermal", "m_pt", dropped, dropped, ""},
    {"CBDsquareThermal", "m_nBridge", dropped, dropped, ""},
    {"CBDsquareThermal", "m_dBridgeWidth", dropped, dropped, ""},
    {"CBDsquareThermal", "m_dBridgeAngle", dropped, dropped, ""},

    {"CBDsurface", "m_sNet", norm, dropped, kSurfaceNet},
    {"CBDsurface", "m_bArea", dropped, dropped, "decides only how the surface is written"},
    {"CBDsurface", "m_bMesh", kept, kept, "by the keyword"},
    {"CBDsurface", "m_bAlreadySpread", kept, dropped, "in a geometry kept of a mesh plane"},
    {"CBDsurface", "m_nMeshFlagXCount", dropped, dropped, ""},
    {"CBDsurface", "m_dLowerHeight", dropped, dropped, "kept, rounded to five decimals, where m_bArea is 1"},
    {"CBDsurface", "m_dUpperHeight", dropped, dropped, "kept, rounded to five decimals, where m_bArea is 1"},
    {"CBDsurface", "m_dOutlineWidth", norm, norm, kFive},
    {"CBDsurface", "m_dMeshPitch", dropped, dropped, ""},
    {"CBDsurface", "m_dFillWidth", norm, norm, kFive},
    {"CBDsurface", "m_dFillAngle", norm, norm, kSix},
    {"CBDsurface", "m_dMeshShapeDiameter", dropped, dropped, ""},
    {"CBDsurface", "m_dMeshFigureAngle", dropped, dropped, ""},
    {"CBDsurface", "m_dMeshWindowClearance", dropped, dropped, ""},
    {"CBDsurface", "m_dMeshFigureClearance", dropped, dropped, ""},
    {"CBDsurface", "m_dMeshAngle", dropped, dropped, ""},
    {"CBDsurface", "m_dMeshOutlineClearance", dropped, dropped, ""},
    {"CBDsurface", "m_sMeshShape", dropped, dropped, ""},
    {"CBDsurface", "m_sMeshArrangeType", dropped, dropped, ""},
    {"CBDsurface", "m_ptMeshBase", dropped, dropped, ""},
    {"CBDsurface", "m_ptMeshRotate", dropped, dropped, ""},
    {"CBDsurface", "m_arrMeshFlags", dropped, dropped, ""},
    {"CBDsurface", "m_bSubmesh", dropped, dropped, ""},
    {"CBDsurface", "m_nParamFlagXCount", dropped, dropped, ""},
    {"CBDsurface", "m_dParamPitch", dropped, dropped, ""},
    {"CBDsurface", "m_dParamShapeDiameter", dropped, dropped, ""},
    {"CBDsurface", "m_dParamFigureAngle", dropped, dropped, ""},
    {"CBDsurface", "m_dParamWindowClearance", dropped, dropped, ""},
    {"CBDsurface", "m_dParamFigureClearance", dropped, dropped, ""},
    {"CBDsurface", "m_dParamAngle", dropped, dropped, ""},
    {"CBDsurface", "m_dParamOutlineClearance", dropped, dropped, ""},
    {"CBDsurface", "m_sParamShape", dropped, dropped, ""},
    {"CBDsurface", "m_sParamArrangeType", dropped, dropped, ""},
    {"CBDsurface", "m_ptParamBase", dropped, dropped, ""},
    {"CBDsurface", "m_ptParamRotate", dropped, dropped, ""},
    {"CBDsurface", "m_arrParamFlags", dropped, dropped, ""},
    {"CBDsurface", "m_pProperties", dropped, dropped, "a host's; written of a mesh plane, and read as its mesh fields"},
    {"CBDsurface", "m_pVertices", norm, norm, "see the vertices; of fewer than three points without an arc the whole surface is left out, but not a mesh plane"},
    {"CBDsurface", "m_pOpenShapes", norm, norm, "see the cut-outs"},
    {"CBDsurface", "the token of \"alreadySpread\"", constant, constant, "\"YES\""},

    {"CBDsymbolText", "m_sSymbolType", dropped, dropped, "written under another key than it is read"},
    {"CBDsymbolText", "m_sString", dropped, dropped, "a host's; the text does not read back without it"},
    {"CBDsymbolText", "m_pText", dropped, dropped, "written without its string"},

    {"CBDtext", "m_sString", norm, norm, "written in quotes as it stands: a quote in it ends it"},
    {"CBDtext", "m_nFont", kept, kept, ""},
    {"CBDtext", "m_nKFont", kept, kept, ""},
    {"CBDtext", "m_dWidth", norm, norm, kFive},
    {"CBDtext", "m_dHeight", norm, norm, kFive},
    {"CBDtext", "m_dSpace", norm, norm, kFive},
    {"CBDtext", "m_dVSpace", norm, norm, kFive},
    {"CBDtext", "m_dStrokeWidth", norm, norm, kFive},
    {"CBDtext", "m_pt", norm, norm, kFive},
    {"CBDtext", "m_dAngle", norm, norm, kFive},
    {"CBDtext", "m_sDir", norm, norm, kWord},
    {"CBDtext", "m_sJustify", norm, norm, kWord},
    {"CBDtext", "m_sFlip", norm, norm, kWord},
    {"CBDtext", "m_sReverse", norm, norm, kWord},
    {"CBDtext", "m_sSpare", dropped, dropped, kNever},
    {"CBDtext", "m_dTextFrameOffset", dropped, dropped, ""},
    {"CBDtext", "m_dSpare", dropped, dropped, kNever},
    {"CBDtext", "the \"font\" beside \"geometry\"", constant, constant, "0"},

    {"CBDvertexPt", "m_dWidth", norm, dropped, "rounded to five decimals; up to 0.001 mm it counts as none"},
    {"CBDvertexPt", "m_sType", kept, kept, "by the keyword"},
    {"CBDvertexPt", "m_dTarc", norm, norm, kFive},
    {"CBDvertexPt", "m_pFillet", norm, norm, "only if its m_dFilletWidth is not 0"},
    {"CBDvertexPt", "m_pt", norm, norm, kFive},
    {"CBDvertexPt", "the token of \"tarc\"", constant, constant, "\"ON\""},

    {"CBDvertexArc", "m_dWidth", dropped, dropped, "written in place of a begin width of 0"},
    {"CBDvertexArc", "m_sType", kept, kept, "by the keyword"},
    {"CBDvertexArc", "m_dEndWidth", dropped, dropped, "the begin width is written in its place"},
    {"CBDvertexArc", "m_dBeginWidth", norm, dropped, kFive},
    {"CBDvertexArc", "m_nSpare", dropped, dropped, kNever},
    {"CBDvertexArc", "m_sDirection", norm, norm, kWord},
    {"CBDvertexArc", "m_dR", norm, norm, kFive},
    {"CBDvertexArc", "m_ptBegin", norm, norm, kFive},
    {"CBDvertexArc", "m_ptCenter", norm, norm, kFive},
    {"CBDvertexArc", "m_ptEnd", norm, norm, kFive},

    {"CBDfillet", "m_sType", norm, norm, kWordOrNone},
    {"CBDfillet", "m_dWidth", norm, norm, kFive},
    {"CBDfillet", "m_dLength", norm, norm, kFive},
    {"CBDfillet", "m_dFilletWidth", norm, norm, kFive},
    {"CBDfillet", "m_sDir", norm, norm, "a plain word is kept; not on the first and the last point of a line"},
};
// clang-format on

}  // namespace

std::span<const LedgerRow> DrawObjLedger() { return kRows; }
std::span<const LedgerClass> DrawObjLedgerClasses() { return kClasses; }

const LedgerRow* FindLedgerRow(std::string_view className, std::string_view field) {
  for (const LedgerRow& row : kRows) {
    if (row.className == className && row.field == field) return &row;
  }
  return nullptr;
}

}  // namespace laminate
