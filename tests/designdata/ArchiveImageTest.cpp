// The image of every record, byte by byte.
#include <cstring>
#include <limits>

#include "designdata/DesignDataTestSupport.h"

namespace {

constexpr int kVersion1 = 1;
constexpr int kVersion2 = 2;

// Stores the record, holds the image against the expected bytes, loads it into a fresh one and shows that, with what
// the image leaves out taken from a fresh record.
template <class T>
void Check(T& record, const Bytes& expected, int nVersion) {
  EXPECT_EQ(T::m_nVersion + 0, nVersion);
  const std::string image = Image(record);
  EXPECT_SAME_BYTES(image, expected.Str());
  T loaded;
  EXPECT_EQ(LoadImage(loaded, image), 0u);
  EXPECT_EQ(Show(loaded, laminate::kNotInImage), Show(record, laminate::kNotInImage));
  EXPECT_SAME_BYTES(Image(loaded), image);
}

void AddTo(CLPropertyArray& arr, const char* szItem, const char* szComment, const char* szKind = "") {
  laminate::AppendOwned(arr, std::make_unique<CLProperty>(szItem, szComment, szKind));
}
template <class Array, class T>
T& AddTo(Array& arr, std::unique_ptr<T> p) {
  return laminate::AppendOwned(arr, std::move(p));
}

TEST(ArchiveImage, MountForm) {
  CVRXoutPackageMountForm r;
  Check(r, Bytes().Int(1).Text("default").Text("").Text("").Text(""), kVersion1);
  r.m_sMountForm = "m";
  r.m_sSpec = "sp";
  r.m_sBottomFootprint = "bot";
  r.m_sFootprintRef = "foot";
  Check(r, Bytes().Int(1).Text("m").Text("sp").Text("bot").Text("foot"), kVersion1);
  // The same, written out.
  EXPECT_EQ(Hex(Image(r)), "01 00 00 00 01 6D 02 73 70 03 62 6F 74 04 66 6F 6F 74 ");
}

TEST(ArchiveImage, Package) {
  CVRXoutPackage r;
  Check(r, Bytes().Int(1).Int(1).Text("").Text("UNDEF").Array(0), kVersion1);
  r.m_nUver = -2;
  r.m_sType = "SMD";
  r.m_sName = "P";
  AddTo(*r.m_pMountFormArray, std::make_unique<CVRXoutPackageMountForm>()).m_sSpec = "s";
  Check(r, Bytes().Int(1).Int(-2).Text("SMD").Text("P").Array(1).Int(1).Text("default").Text("s").Text("").Text(""),
        kVersion1);
  EXPECT_EQ(Hex(Image(r)).substr(0, 51 + 36),
            "01 00 00 00 FE FF FF FF 03 53 4D 44 01 50 01 00 00 80 01 00 00 00 00 00 00 00 01 00 00 ");
}

TEST(ArchiveImage, Part) {
  CVRXoutPrfPart r;
  Check(r, Bytes().Int(1).Text("").Text("").Text("").Text("").Text("").Text("").Array(0).Array(0).Int16(0).Int16(0),
        kVersion1);
  r.m_sName = "A";
  r.m_sFootprintRef = "F";
  r.m_sPinAssignRef = "Q";
  r.m_sStockInfo = "S";
  r.m_sPartClass = "C";
  r.m_sPackageRef = "P";
  AddTo(*r.m_pPropertyArray, "k", "v");
  AddTo(*r.m_pStockPropertyArray, "s", "t", "u");
  for (int i = 0; i < 2; ++i) AddTo(*r.m_pPortArray, std::make_unique<CVRXoutPrfPartPort>());
  AddTo(*r.m_pGateDefArray, std::make_unique<CVRXoutPrfPartGateDef>());
  const Bytes head = Bytes().Int(1).Text("A").Text("F").Text("Q").Text("S").Text("C").Text("P");
  const std::string expected = Bytes()
                                   .Raw(head.Str())
                                   .Array(1)
                                   .Text("k")
                                   .Text("v")
                                   .Text("")
                                   .Array(1)
                                   .Text("s")
                                   .Text("t")
                                   .Text("u")
                                   .Int16(2)
                                   .Int64(0)
                                   .Int64(0)
                                   .Int16(1)
                                   .Int64(0);
  EXPECT_SAME_BYTES(Image(r), expected);
  // Ports and gates do not come back.
  CVRXoutPrfPart loaded;
  EXPECT_EQ(LoadImage(loaded, expected), 0u);
  EXPECT_EQ(Show(loaded), "{A,F,Q,S,C,P,[k=v],[s=t:u],[],[]}");
}

TEST(ArchiveImage, Function) {
  CVRXoutPrfFunction r;
  Check(r, Bytes().Int(1).Int(1).Text("").Array(0).Array(0), kVersion1);
  r.m_nUver = 3;
  r.m_sName = "F";
  AddTo(*r.m_pPropertyArray, "k", "v");
  CVRXoutPrfFunctionPort& port = AddTo(*r.m_pPortArray, std::make_unique<CVRXoutPrfFunctionPort>());
  Check(port, Bytes().Int(1).Text("").Int(0).Text(""), kVersion1);
  port.m_sPortType = "IN";
  port.m_nSymbPinId = 0x01020304;
  port.m_sPortNo = "7";
  const Bytes expectedPort = Bytes().Int(1).Text("IN").Raw("\x04\x03\x02\x01").Text("7");
  Check(port, expectedPort, kVersion1);
  Check(r, Bytes().Int(1).Int(3).Text("F").Array(1).Text("k").Text("v").Text("").Array(1).Raw(expectedPort.Str()),
        kVersion1);
}

TEST(ArchiveImage, PinAssign) {
  CVRXoutPrfPinAssign r;
  Check(r, Bytes().Int(1).Int(1).Text("").Array(0).Array(0).Array(0), kVersion1);
  r.m_nUver = 3;
  r.m_sName = "Q";
  AddTo(*r.m_pPropertyArray, "k", "v");
  CVRXoutPrfPinAssignPort& port = AddTo(*r.m_pPortArray, std::make_unique<CVRXoutPrfPinAssignPort>());
  Check(port, Bytes().Int(1).Text("").Text("").Int(-1).Text(""), kVersion1);
  port.m_sPortType = "T";
  port.m_sPortName = "N";
  port.m_nPinId = 5;
  port.m_sPortNo = "1";
  const Bytes expectedPort = Bytes().Int(1).Text("T").Text("N").Int(5).Text("1");
  Check(port, expectedPort, kVersion1);
  CVRXoutPrfPinAssignFuncInst& inst = AddTo(*r.m_pFuncInstArray, std::make_unique<CVRXoutPrfPinAssignFuncInst>());
  Check(inst, Bytes().Int(1).Text("").Array(0), kVersion1);
  inst.m_sFunctionRef = "F";
  CVRXoutPrfPinAssignFuncInstPort& instPort =
      AddTo(*inst.m_pPortArray, std::make_unique<CVRXoutPrfPinAssignFuncInstPort>());
  Check(instPort, Bytes().Int(1).Text("").Text(""), kVersion1);
  instPort.m_sMatch = "M";
  instPort.m_sPortNo = "2";
  const Bytes expectedInstPort = Bytes().Int(1).Text("M").Text("2");
  Check(instPort, expectedInstPort, kVersion1);
  const Bytes expectedInst = Bytes().Int(1).Text("F").Array(1).Raw(expectedInstPort.Str());
  Check(inst, expectedInst, kVersion1);
  Check(r,
        Bytes()
            .Int(1)
            .Int(3)
            .Text("Q")
            .Array(1)
            .Raw(expectedInst.Str())
            .Array(1)
            .Raw(expectedPort.Str())
            .Array(1)
            .Text("k")
            .Text("v")
            .Text(""),
        kVersion1);
}

TEST(ArchiveImage, LibraryComponent) {
  CVRXoutLcdbCmpComp r;
  Check(r, Bytes().Int(1).Text("").Text("parts").Int(1).Text("").Int16(0).Array(0), kVersion1);
  r.m_sCompName = "C";
  r.m_sComponentType = "T";
  r.m_nGateCount = 4;
  r.m_sFunctionName = "F";
  r.m_aSymbolNames.Add("S1");
  r.m_aSymbolNames.Add("");
  CVRXoutLcdbCmpCompPin& pin = AddTo(*r.m_pPinArray, std::make_unique<CVRXoutLcdbCmpCompPin>());
  Check(pin, Bytes().Int(1).Text("").Text("").Int(-1).Int16(0), kVersion1);
  pin.m_sSeventhColumn = "7";
  pin.m_sGatePinName = "G";
  pin.m_nPinId = 9;
  pin.m_aPinNames.Add("A");
  const Bytes expectedPin = Bytes().Int(1).Text("7").Text("G").Int(9).Int16(1).Text("A");
  Check(pin, expectedPin, kVersion1);
  Check(
      r,
      Bytes().Int(1).Text("C").Text("T").Int(4).Text("F").Int16(2).Text("S1").Text("").Array(1).Raw(expectedPin.Str()),
      kVersion1);
}

TEST(ArchiveImage, StackUp) {
  CVRXoutRufStackup r;
  Check(r, Bytes().Int(2).Array(0).Text(""), kVersion2);
  r.m_sBaseMaterial = "B";
  CVRXoutRufStackupLayer& layer = AddTo(*r.m_pLayerArray, std::make_unique<CVRXoutRufStackupLayer>());
  Check(layer, Bytes().Int(2).Text("").Text("").Text("").Int(1).Int(1).Double(0).Double(0).Double(0).Int(0).Text(""),
        kVersion2);
  layer.m_sLayerKind = "K";
  layer.m_sMaterial = "M";
  layer.m_sLayerRole = "R";
  layer.m_nLayerNo = 2;
  layer.m_nAuxNo = 3;
  layer.m_dThickness = 0.5;
  layer.m_dResistivity = -1;
  layer.m_dDielectricConstant = 4.5;
  layer.m_dLossTangent = 0.25;
  layer.m_bPhysical = 1;
  layer.m_sPlace = "P";
  const Bytes expectedLayer = Bytes()
                                  .Int(2)
                                  .Text("K")
                                  .Text("M")
                                  .Text("R")
                                  .Int(2)
                                  .Int(3)
                                  .Raw("\0\0\0\0\0\0\xE0\x3F"sv)
                                  .Raw("\0\0\0\0\0\0\xF0\xBF"sv)
                                  .Raw("\0\0\0\0\0\0\x12\x40"sv)
                                  .Int(1)
                                  .Text("P");
  Check(layer, expectedLayer, kVersion2);
  Check(r, Bytes().Int(2).Array(1).Raw(expectedLayer.Str()).Text("B"), kVersion2);
  CVRXoutRufStackup loaded;
  LoadImage(loaded, Image(r));
  EXPECT_EQ(loaded.m_pLayerArray->GetAt(0)->m_dLossTangent, 0.0);
}

// A solder resist that was named after its loss tangent keeps that name and loses the value.
TEST(ArchiveImage, SolderResist) {
  auto pData = Loaded(Kind::rules,
                      "(design d (boardSpec (bareBoard (physical ABOVE (dielectricConstant 4) (lossTangent 0.02)))))");
  CPC_BD_OutClsGet loaded;
  LoadImage(loaded, Image(*pData));
  const CVRXoutRufStackupLayer& layer = *loaded.m_pStackup->m_pLayerArray->GetAt(0);
  EXPECT_EQ(layer.m_sMaterial, "Solder_Resist_4_0.02");
  EXPECT_EQ(layer.m_dLossTangent, 0.0);
}

TEST(ArchiveImage, BoardSpec) {
  CVRXoutRufBoardSpec r;
  Check(r, Bytes().Int(1).Array(0).Array(0).Array(0).Array(0).Array(0), kVersion1);
  CVRXoutRufBoardSpecDefaultGrid& grid = AddTo(r.m_aDefaultGrid, std::make_unique<CVRXoutRufBoardSpecDefaultGrid>());
  Check(grid, Bytes().Int(1).Text("").Text(""), kVersion1);
  grid.m_sName = "g";
  grid.m_sValue = "v";
  const Bytes expectedGrid = Bytes().Int(1).Text("g").Text("v");
  Check(grid, expectedGrid, kVersion1);
  CVRXoutRufBoardSpecDrillingRule& drill =
      AddTo(r.m_aDrillingRule, std::make_unique<CVRXoutRufBoardSpecDrillingRule>());
  Check(drill, Bytes().Int(1).Text("").Int(0).Int(0), kVersion1);
  drill.m_sName = "d";
  drill.m_nValue1 = 1;
  drill.m_nValue2 = -2;
  const Bytes expectedDrill = Bytes().Int(1).Text("d").Int(1).Int(-2);
  Check(drill, expectedDrill, kVersion1);
  CVRXoutRufBoardSpecpatternWidth& width =
      AddTo(r.m_aPatternWidth, std::make_unique<CVRXoutRufBoardSpecpatternWidth>());
  Check(width, Bytes().Int(1).Text("").Double(0), kVersion1);
  width.m_sName = "w";
  width.m_dWidth = 0.125;
  const Bytes expectedWidth = Bytes().Int(1).Text("w").Double(0.125);
  Check(width, expectedWidth, kVersion1);
  CVRXoutRufBoardSpecGridDef& def = AddTo(r.m_aGridDef, std::make_unique<CVRXoutRufBoardSpecGridDef>());
  Check(def, Bytes().Int(1).Text("").Double(0).Double(0).Double(0).Double(0), kVersion1);
  def.m_sName = "G";
  def.m_dPitchX = 1;
  def.m_dPitchY = 2;
  def.m_dPtX = 3;
  def.m_dPtY = 4;
  const Bytes expectedDef = Bytes().Int(1).Text("G").Double(1).Double(2).Double(3).Double(4);
  Check(def, expectedDef, kVersion1);
  AddTo(r.m_aProperty, "k", "v");
  Check(r,
        Bytes()
            .Int(1)
            .Array(1)
            .Raw(expectedGrid.Str())
            .Array(1)
            .Raw(expectedDrill.Str())
            .Array(1)
            .Raw(expectedWidth.Str())
            .Array(1)
            .Raw(expectedDef.Str())
            .Array(1)
            .Text("k")
            .Text("v")
            .Text(""),
        kVersion1);
}

TEST(ArchiveImage, RuleComponent) {
  CVRXoutRufComp r;
  Check(r, Bytes().Int(2).Text("").Array(0).Array(0), kVersion2);
  r.m_sName = "C";
  AddTo(*r.m_pPropertyArray, "k", "v");
  AddTo(*r.m_pAssignArray, "a", "b");
  Check(r, Bytes().Int(2).Text("C").Array(1).Text("k").Text("v").Text("").Array(1).Text("a").Text("b").Text(""),
        kVersion2);
}

TEST(ArchiveImage, Net) {
  CVRXoutRufNet r;
  Check(r, Bytes().Int(1).Text("").Text("").Array(0).Array(0), kVersion1);
  r.m_sName = "N";
  r.m_sColorId = "4";
  AddTo(*r.m_pPropertyArray, "k", "v");
  CVRXoutRufNetFuncTerm& term = AddTo(*r.m_pFuncTermArray, std::make_unique<CVRXoutRufNetFuncTerm>());
  Check(term, Bytes().Int(1).Text("").Text(""), kVersion1);
  term.m_sValue1 = "A";
  term.m_sValue2 = "1";
  const Bytes expectedTerm = Bytes().Int(1).Text("A").Text("1");
  Check(term, expectedTerm, kVersion1);
  Check(r, Bytes().Int(1).Text("N").Text("4").Array(1).Text("k").Text("v").Text("").Array(1).Raw(expectedTerm.Str()),
        kVersion1);
}

TEST(ArchiveImage, Rule) {
  CVRXoutRufRule r;
  Check(r, Bytes().Int(2).Text("").Text("").Text("").Text("").Double(0).Text(""), kVersion2);
  r.m_sRuleKind = "K";
  r.m_sRuleName = "N";
  r.m_sRuleItem = "I";
  r.m_sFirst = "F";
  r.m_sSecond = "S";
  r.m_dValue = 0.125;
  Check(r, Bytes().Int(2).Text("K").Text("I").Text("F").Text("S").Double(0.125).Text("N"), kVersion2);
}

TEST(ArchiveImage, RuleArrays) {
  CVRXoutRufRuleArrayArray r;
  EXPECT_SAME_BYTES(Image(r), Bytes().Array(0).Str());
  CVRXoutRufRuleArray& rules = AddTo(r, std::make_unique<CVRXoutRufRuleArray>());
  rules.m_sName = "not in the image";
  AddTo(rules, std::make_unique<CVRXoutRufRule>());
  const std::string expected = Bytes().Array(1).Array(1).Int(2).Text("").Text("").Text("").Text("").Double(0).Text("");
  EXPECT_SAME_BYTES(Image(r), expected);
  CVRXoutRufRuleArrayArray loaded;
  EXPECT_EQ(LoadImage(loaded, expected), 0u);
  EXPECT_EQ(Show(loaded), "[[{,,,,0,}]]");
  EXPECT_EQ(loaded.GetAt(0)->m_sName, "");
}

TEST(ArchiveImage, BoardSetting) {
  CVRXoutRufRuleBoard r;
  Check(r, Bytes().Int(1).Text("").Text(""), kVersion1);
  r.m_sName = "n";
  r.m_sValue = "v";
  Check(r, Bytes().Int(1).Text("n").Text("v"), kVersion1);
}

TEST(ArchiveImage, DesignRuleStack) {
  CVRXoutRufRuleDesignRuleStack r;
  Check(r, Bytes().Int(1).Text("").Array(0), kVersion1);
  r.m_sName = "S";
  CVRXoutRufRuleDesignRuleStackEachLayer& layer =
      AddTo(r.m_aEachLayer, std::make_unique<CVRXoutRufRuleDesignRuleStackEachLayer>());
  Check(layer, Bytes().Int(1).Text("").Int(0), kVersion1);
  layer.m_nLayerNo = 3;
  layer.m_sRuleName = "R";
  const Bytes expectedLayer = Bytes().Int(1).Text("R").Int(3);
  Check(layer, expectedLayer, kVersion1);
  Check(r, Bytes().Int(1).Text("S").Array(1).Raw(expectedLayer.Str()), kVersion1);
}

TEST(ArchiveImage, TraceRuleStack) {
  CVRXoutRufRuleTraceRuleStack r;
  Check(r, Bytes().Int(1).Text("").Array(0), kVersion1);
  r.m_sName = "S";
  CVRXoutRufRuleTraceRuleStackEachLayer& layer =
      AddTo(r.m_aEachLayer, std::make_unique<CVRXoutRufRuleTraceRuleStackEachLayer>());
  Check(layer, Bytes().Int(1).Int(0).Double(0).Double(0).Double(0).Double(0).Double(0), kVersion1);
  layer.m_nLayerNo = 3;
  layer.m_dWidth = 1;
  layer.m_dMinWidth = 2;
  layer.m_dMinLandOverlap = 3;
  layer.m_dMaxWireWidth = 4;
  layer.m_dMinWireWidth = 5;
  const Bytes expectedLayer = Bytes().Int(1).Int(3).Double(1).Double(2).Double(3).Double(4).Double(5);
  Check(layer, expectedLayer, kVersion1);
  Check(r, Bytes().Int(1).Text("S").Array(1).Raw(expectedLayer.Str()), kVersion1);
}

TEST(ArchiveImage, ElectricalNet) {
  CVRXoutRufRuleElectricalNet r;
  Check(r, Bytes().Int(1).Text("").Int16(0), kVersion1);
  r.m_sName = "E";
  r.m_bPair = 1;
  r.m_aNetNames.Add("A");
  r.m_aNetNames.Add("B");
  Check(r, Bytes().Int(1).Text("E").Int16(2).Text("A").Text("B"), kVersion1);
  CVRXoutRufRuleElectricalNet loaded;
  LoadImage(loaded, Image(r));
  EXPECT_EQ(loaded.m_bPair, 0);
}

// Host text, unit, packages, stack-up, components, functions, pin assigns, component settings, parts, nets, rules, the
// two lists; then what version 2 brought.
Bytes EmptyFacade(int nVersion) {
  Bytes bytes;
  bytes.Int(nVersion).Text("").Text("").Array(0).Int(2).Array(0).Text("");
  for (int i = 0; i < 7; ++i) bytes.Array(0);
  return bytes.Int16(0).Int16(0);
}

TEST(ArchiveImage, Facade) {
  CPC_BD_OutClsGet data;
  Bytes expected = EmptyFacade(2);
  expected.Array(0).Array(0).Array(0);
  expected.Int(1).Array(0).Array(0).Array(0).Array(0).Array(0);
  expected.Array(0);
  Check(data, expected, kVersion2);
  EXPECT_EQ(Image(data).size(), 4u + 2 + 12 + (4 + 12 + 1) + 7 * 12 + 4 + 3 * 12 + (4 + 5 * 12) + 12);
}

TEST(ArchiveImage, FacadeWithOneOfEach) {
  CPC_BD_OutClsGet data;
  data.m_sUnit = "mm";
  data.m_sHostText = "host";
  data.m_aHostList1.Add("one");
  data.m_aHostList2.Add("two");
  AddTo(*data.m_pPackageArray, std::make_unique<CVRXoutPackage>());
  data.m_pStackup->m_sBaseMaterial = "base";
  AddTo(*data.m_pLcdbCmpCompArray, std::make_unique<CVRXoutLcdbCmpComp>());
  AddTo(*data.m_pPrfFunctionArray, std::make_unique<CVRXoutPrfFunction>());
  AddTo(*data.m_pPrfPinAssignArray, std::make_unique<CVRXoutPrfPinAssign>());
  AddTo(*data.m_pRufCompArray, std::make_unique<CVRXoutRufComp>());
  AddTo(*data.m_pPrfPartArray, std::make_unique<CVRXoutPrfPart>());
  AddTo(*data.m_pRufNetArray, std::make_unique<CVRXoutRufNet>());
  AddTo(*data.m_pRufRuleArray, std::make_unique<CVRXoutRufRule>());
  AddTo(*data.m_pRufRuleBoardArray, std::make_unique<CVRXoutRufRuleBoard>());
  AddTo(*data.m_pDesignRuleStackArray, std::make_unique<CVRXoutRufRuleDesignRuleStack>());
  AddTo(*data.m_pTraceRuleStackArray, std::make_unique<CVRXoutRufRuleTraceRuleStack>());
  AddTo(data.m_pBoardSpec->m_aProperty, "k", "v");
  AddTo(*data.m_pElectricalNetArray, std::make_unique<CVRXoutRufRuleElectricalNet>());
  Bytes e;
  e.Int(2).Text("host").Text("mm");
  e.Array(1).Int(1).Int(1).Text("").Text("UNDEF").Array(0);                    // package
  e.Int(2).Array(0).Text("base");                                              // stack-up
  e.Array(1).Int(1).Text("").Text("parts").Int(1).Text("").Int16(0).Array(0);  // library component
  e.Array(1).Int(1).Int(1).Text("").Array(0).Array(0);                         // function
  e.Array(1).Int(1).Int(1).Text("").Array(0).Array(0).Array(0);                // pin assign
  e.Array(1).Int(2).Text("").Array(0).Array(0);                                // component settings
  e.Array(1).Int(1).Text("").Text("").Text("").Text("").Text("").Text("").Array(0).Array(0).Int16(0).Int16(0);  // part
  e.Array(1).Int(1).Text("").Text("").Array(0).Array(0);                                                        // net
  e.Array(1).Int(2).Text("").Text("").Text("").Text("").Double(0).Text("");                                     // rule
  e.Int16(1).Text("one").Int16(1).Text("two");                                         // the host's lists
  e.Array(1).Int(1).Text("").Text("");                                                 // board setting
  e.Array(1).Int(1).Text("").Array(0);                                                 // design-rule stack
  e.Array(1).Int(1).Text("").Array(0);                                                 // trace-rule stack
  e.Int(1).Array(0).Array(0).Array(0).Array(0).Array(1).Text("k").Text("v").Text("");  // board spec
  e.Array(1).Int(1).Text("").Int16(0);                                                 // electrical net
  Check(data, e, kVersion2);
}

// ---- earlier versions ----
TEST(ArchiveVersion, FacadeOfVersion1) {
  CPC_BD_OutClsGet data;
  Load(data, Kind::rules,
       "(design d (boardSpec (defaultGrid (a b))) (rule (net N) (board (c 1)) (designRuleStack S) (traceRuleStack T)\n"
       "(electricalNet E)))");
  Bytes image = EmptyFacade(1);
  image.Raw("behind");
  EXPECT_EQ(LoadImage(data, image.Str()), 6u);
  EXPECT_EQ(Show(data),
            "{,,[],{[],},[],[],[],[],[],[],[],[],[],[{c,1}],[{S,[]}],[{T,[]}],{[{a,b}],[],[],[],[]},[{E,[],0}]}");
}

TEST(ArchiveVersion, RecordsOfVersion1KeepWhatCameLater) {
  {
    CVRXoutRufComp r;
    AddTo(*r.m_pAssignArray, "a", "b");
    AddTo(*r.m_pPropertyArray, "old", "old");
    EXPECT_EQ(LoadImage(r, Bytes().Int(1).Text("C").Array(1).Text("k").Text("v").Text("").Str()), 0u);
    EXPECT_EQ(Show(r), "{C,[k=v],[a=b]}");
  }
  {
    CVRXoutRufRule r;
    r.m_sRuleName = "kept";
    EXPECT_EQ(LoadImage(r, Bytes().Int(1).Text("K").Text("I").Text("F").Text("S").Double(2).Str()), 0u);
    EXPECT_EQ(Show(r), "{K,I,F,S,2,kept}");
  }
  {
    CVRXoutRufStackup r;
    r.m_sBaseMaterial = "kept";
    EXPECT_EQ(LoadImage(r, Bytes().Int(1).Array(0).Str()), 0u);
    EXPECT_EQ(Show(r), "{[],kept}");
  }
  {
    CVRXoutRufStackupLayer r;
    r.m_bPhysical = 1;
    r.m_sPlace = "kept";
    r.m_dLossTangent = 0.5;
    const std::string image = Bytes().Int(1).Text("K").Text("M").Text("R").Int(2).Int(3).Double(4).Double(5).Double(6);
    EXPECT_EQ(LoadImage(r, image), 0u);
    EXPECT_EQ(Show(r), "{K,M,R,2,3,4,5,6,1,kept,0.5}");
  }
}

// A version word that the class does not know ends the load of that record there, silently.
template <class T>
void CheckUnknownVersions() {
  T record;
  const std::string image = Image(record);
  for (const int nVersion : {0, -1, 3, 256, T::m_nVersion + 1}) {
    T loaded;
    const std::string before = Show(loaded);
    const std::string changed = Bytes().Int(nVersion).Raw(image.substr(4));
    EXPECT_EQ(LoadImage(loaded, changed), image.size() - 4) << nVersion;
    EXPECT_EQ(Show(loaded), before) << nVersion;
  }
}

TEST(ArchiveVersion, UnknownOnes) {
  CheckUnknownVersions<CPC_BD_OutClsGet>();
  CheckUnknownVersions<CVRXoutPackage>();
  CheckUnknownVersions<CVRXoutPackageMountForm>();
  CheckUnknownVersions<CVRXoutPrfPart>();
  CheckUnknownVersions<CVRXoutPrfFunction>();
  CheckUnknownVersions<CVRXoutPrfFunctionPort>();
  CheckUnknownVersions<CVRXoutPrfPinAssign>();
  CheckUnknownVersions<CVRXoutPrfPinAssignPort>();
  CheckUnknownVersions<CVRXoutPrfPinAssignFuncInst>();
  CheckUnknownVersions<CVRXoutPrfPinAssignFuncInstPort>();
  CheckUnknownVersions<CVRXoutLcdbCmpComp>();
  CheckUnknownVersions<CVRXoutLcdbCmpCompPin>();
  CheckUnknownVersions<CVRXoutRufStackup>();
  CheckUnknownVersions<CVRXoutRufStackupLayer>();
  CheckUnknownVersions<CVRXoutRufBoardSpec>();
  CheckUnknownVersions<CVRXoutRufBoardSpecDefaultGrid>();
  CheckUnknownVersions<CVRXoutRufBoardSpecDrillingRule>();
  CheckUnknownVersions<CVRXoutRufBoardSpecGridDef>();
  CheckUnknownVersions<CVRXoutRufBoardSpecpatternWidth>();
  CheckUnknownVersions<CVRXoutRufComp>();
  CheckUnknownVersions<CVRXoutRufNet>();
  CheckUnknownVersions<CVRXoutRufNetFuncTerm>();
  CheckUnknownVersions<CVRXoutRufRule>();
  CheckUnknownVersions<CVRXoutRufRuleBoard>();
  CheckUnknownVersions<CVRXoutRufRuleDesignRuleStack>();
  CheckUnknownVersions<CVRXoutRufRuleDesignRuleStackEachLayer>();
  CheckUnknownVersions<CVRXoutRufRuleTraceRuleStack>();
  CheckUnknownVersions<CVRXoutRufRuleTraceRuleStackEachLayer>();
  CheckUnknownVersions<CVRXoutRufRuleElectricalNet>();
}

// ---- arrays ----
template <class Array>
class RecordArrayImage : public testing::Test {};
using RecordArrays = testing::Types<
    CLPropertyArray, CVRXoutLcdbCmpCompArray, CVRXoutLcdbCmpCompPinArray, CVRXoutPackageArray,
    CVRXoutPackageMountFormArray, CVRXoutPrfFunctionArray, CVRXoutPrfFunctionPortArray, CVRXoutPrfPartArray,
    CVRXoutPrfPinAssignArray, CVRXoutPrfPinAssignFuncInstArray, CVRXoutPrfPinAssignFuncInstPortArray,
    CVRXoutPrfPinAssignPortArray, CVRXoutRufBoardSpecDefaultGridArray, CVRXoutRufBoardSpecDrillingRuleArray,
    CVRXoutRufBoardSpecGridDefArray, CVRXoutRufBoardSpecpatternWidthArray, CVRXoutRufCompArray, CVRXoutRufNetArray,
    CVRXoutRufNetFuncTermArray, CVRXoutRufRuleArray, CVRXoutRufRuleArrayArray, CVRXoutRufRuleBoardArray,
    CVRXoutRufRuleDesignRuleStackArray, CVRXoutRufRuleDesignRuleStackEachLayerArray, CVRXoutRufRuleElectricalNetArray,
    CVRXoutRufRuleTraceRuleStackArray, CVRXoutRufRuleTraceRuleStackEachLayerArray, CVRXoutRufStackupLayerArray>;
TYPED_TEST_SUITE(RecordArrayImage, RecordArrays);

TYPED_TEST(RecordArrayImage, BothCountsAndUnknownMarkers) {
  using Element = std::remove_pointer_t<decltype(std::declval<TypeParam>().GetAt(0))>;
  const int nVersion = TypeParam::m_nVersion;
  EXPECT_EQ(nVersion, 1);
  TypeParam arr;
  EXPECT_SAME_BYTES(Image(arr), "\x01\x00\x00\x80\0\0\0\0\0\0\0\0"sv);
  AddTo(arr, std::make_unique<Element>());
  arr.SetSize(2);  // a null slot is not there
  AddTo(arr, std::make_unique<Element>());
  Element element;
  const std::string elements = Image(element) + Image(element);
  EXPECT_SAME_BYTES(Image(arr), Bytes().Array(2).Raw(elements).Str());
  struct Case {
    const char* name;
    Bytes image;
    int size;
    std::size_t left;
  };
  const Case kCases[] = {
      {"64-bit count", Bytes().Array(2).Raw(elements), 2, 0},
      {"32-bit count", Bytes().Int(1).Int(2).Raw(elements), 2, 0},
      {"32-bit count of none", Bytes().Int(1).Int(0).Raw("x"), 0, 1},
      {"negative count", Bytes().Int(1).Int(-1).Raw("x"), 0, 1},
      {"most negative count", Bytes().Int(1).Raw("\0\0\0\x80"sv).Raw("x"), 0, 1},
      {"marker 2", Bytes().Int(2).Raw("x"), 0, 1},
      {"marker 2 with the top bit", Bytes().Raw("\x02\0\0\x80"sv).Raw("x"), 0, 1},
      {"marker 0", Bytes().Int(0).Raw("x"), 0, 1},
      {"marker -1", Bytes().Int(-1).Raw("x"), 0, 1},
      {"the top bit alone", Bytes().Raw("\0\0\0\x80"sv).Raw("x"), 0, 1},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    TypeParam loaded;
    AddTo(loaded, std::make_unique<Element>());  // is deleted by the load
    EXPECT_EQ(LoadImage(loaded, c.image.Str()), c.left);
    EXPECT_EQ(loaded.GetSize(), c.size);
    if (c.size == 2) {
      EXPECT_EQ(Show(loaded), "[" + Show(element) + "," + Show(element) + "]");
    }
  }
}

TEST(ArchiveImage, PropertiesHoldTheirKind) {
  CLPropertyArray arr;
  AddTo(arr, "item", "comment", "propertyS");
  const std::string expected = Bytes().Array(1).Text("item").Text("comment").Text("propertyS");
  EXPECT_SAME_BYTES(Image(arr), expected);
  CLPropertyArray loaded;
  EXPECT_EQ(LoadImage(loaded, expected), 0u);
  EXPECT_EQ(Show(loaded), "[item=comment:propertyS]");
  EXPECT_EQ(loaded == arr, true);
}

// What an old image holds is overwritten, what it does not hold stays; stored again it has the present version.
TEST(ArchiveVersion, AWholeImageOfVersion1) {
  const std::string image = Bytes()
                                .Int(1)
                                .Text("h")
                                .Text("mm")
                                .Array(0)
                                .Int(1)
                                .Array(1)
                                .Int(1)
                                .Text("K")
                                .Text("M")
                                .Text("R")
                                .Int(2)
                                .Int(3)
                                .Double(4)
                                .Double(5)
                                .Double(6)
                                .Array(0)
                                .Array(0)
                                .Array(0)
                                .Array(1)
                                .Int(1)
                                .Text("C")
                                .Array(0)
                                .Array(0)
                                .Array(0)
                                .Array(1)
                                .Int(1)
                                .Text("k")
                                .Text("i")
                                .Text("f")
                                .Text("s")
                                .Double(2)
                                .Int16(1)
                                .Text("a")
                                .Int16(0);
  CPC_BD_OutClsGet data;
  data.m_pStackup->m_sBaseMaterial = "kept";
  EXPECT_EQ(LoadImage(data, image), 0u);
  EXPECT_EQ(Show(data),
            "{h,mm,[],{[{K,M,R,2,3,4,5,6,0,,0}],kept},[],[],[],[{C,[],[]}],[],[],[{k,i,f,s,2,}],[a],[],[],[],[],"
            "{[],[],[],[],[]},[]}");
  const std::string stored = Image(data);
  EXPECT_EQ(Hex(stored.substr(0, 4)), "02 00 00 00 ");
  CPC_BD_OutClsGet again;
  EXPECT_EQ(LoadImage(again, stored), 0u);
  EXPECT_EQ(Show(again), Show(data));
}

// Behind a record whose version is not known the rest is read out of step.
TEST(ArchiveVersion, OutOfStepInsideAFacade) {
  const std::string image = Bytes()
                                .Int(2)
                                .Text("")
                                .Text("")
                                .Array(2)
                                .Int(2)
                                .Int(1)
                                .Int(7)
                                .Text("T")
                                .Text("N")
                                .Array(0)
                                .Int(2)
                                .Array(0)
                                .Text("B")
                                .Array(0)
                                .Array(0)
                                .Array(0)
                                .Array(0)
                                .Array(0)
                                .Array(0)
                                .Array(0)
                                .Int16(0)
                                .Int16(0)
                                .Array(0)
                                .Array(0)
                                .Array(0)
                                .Int(1)
                                .Array(0)
                                .Array(0)
                                .Array(0)
                                .Array(0)
                                .Array(0)
                                .Array(0);
  CPC_BD_OutClsGet data;
  EXPECT_EQ(LoadImage(data, image), 0u);
  EXPECT_EQ(Show(*data.m_pPackageArray), "[{1,,UNDEF,[]},{7,T,N,[]}]");
  EXPECT_EQ(data.m_pStackup->m_sBaseMaterial, "B");
}

// An image knows no identity: arrays that two parts share are stored, and loaded, twice.
TEST(ArchiveImage, SharedArraysComeBackAsTwo) {
  CVRXoutPrfPartArray parts;
  CVRXoutPrfPart& part = laminate::AppendOwned(parts, std::make_unique<CVRXoutPrfPart>());
  laminate::AppendOwned(*part.m_pPropertyArray, std::make_unique<CLProperty>("k", "v"));
  laminate::AppendOwned(parts, std::unique_ptr<CVRXoutPrfPart>(part.clone()));
  CVRXoutPrfPartArray loaded;
  const std::string image = Image(parts);
  EXPECT_EQ(LoadImage(loaded, image), 0u);
  EXPECT_EQ(Show(loaded), "[{,,,,,,[k=v],[],[],[]},{,,,,,,[k=v],[],[],[]}]");
  EXPECT_NE(loaded.GetAt(0)->m_pPropertyArray, loaded.GetAt(1)->m_pPropertyArray);
  // A load into one of two parts that share is seen by the other.
  CVRXoutPrfPart empty;
  LoadImage(part, Image(empty));
  EXPECT_EQ(Show(*parts.GetAt(1)->m_pPropertyArray), "[]");
}

TEST(ArchiveImage, NumbersKeepTheirBits) {
  for (const double d : {-0.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                         std::numeric_limits<double>::denorm_min()}) {
    CVRXoutRufRule rule;
    rule.m_dValue = d;
    CVRXoutRufRule loaded;
    LoadImage(loaded, Image(rule));
    EXPECT_EQ(std::memcmp(&loaded.m_dValue, &d, sizeof d), 0) << d;
  }
}

}  // namespace
