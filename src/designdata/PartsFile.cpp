#include "designdata/PartsFile.h"

#include "designdata/CPC_BD_OutClsGet.h"
#include "designdata/LineScanner.h"
#include "designdata/RecordLookup.h"

// A parts file: three kinds of block in any order, each keyword first on its line, and each ")" that closes a block
// too.
//
//   (part "NAME"                                     any other keyword with one value becomes a property
//     (footprintRef "F")
//     (packageRef "PACKAGE")
//     (pinAssignRef "PIN ASSIGN")
//     (partClass CLASS)
//     (stockInfo "S" (default))                      or a block: (property "KEY" "VALUE") lines, then ")"
//     (property "KEY" "VALUE")
//     (gateDef (gateName "G")                        (property ...), (gateTermDef ...), port references; then ")"
//     )
//     (interface
//       (port "1" (symbPinId 1) (portName "A") (portType IN))
//     )
//   )
//   (pinAssign "NAME"
//     (property "KEY" "VALUE")
//     (interface
//       (port "1" (pinId 1) (portName A) (portType IN))
//     )
//     (internal
//       (funcInst (functionRef "FUNCTION")
//         (port "1" (match "2"))
//       )
//     )
//   )
//   (function "NAME"
//     (property "KEY" "VALUE")
//     (port "1" (symbPinId 1) (portType "IN" ))
//   )
//
// Records enter their arrays at the opening line, so one that is never closed is kept.

namespace laminate {
namespace {

class PartsScanner {
 public:
  enum class State {
    outside,
    part,
    partInterface,
    gate,
    gateTerminal,
    stock,
    pinAssign,
    pinAssignInterface,
    internal,
    functionInstance,
    function
  };
  State m_state = State::outside;

  PartsScanner(CPC_BD_OutClsGet& data, const ScanReport& report) : m_data(data), m_report(report) {}

  static std::string_view Describe(State state) {
    constexpr std::string_view kWhere[] = {"outside a block",           "inside a part",
                                           "inside a part's interface", "inside a gate",
                                           "inside a gate terminal",    "inside a stock block",
                                           "inside a pin assign",       "inside a pin assign's interface",
                                           "inside an internal block",  "inside a function instance",
                                           "inside a function"};
    return kWhere[static_cast<std::size_t>(state)];
  }

  // ---- blocks ----
  Outcome OpenPart(const ScannedLine& line) {
    BeginBlock(line);
    m_pPart = &AppendOwned(Required(m_data.m_pPrfPartArray), std::make_unique<CVRXoutPrfPart>());
    m_pPart->m_sName = line.Column(2);
    m_report.Defines(NameKind::part, line.Place(), line.Column(2));
    return Outcome::next;
  }
  Outcome OpenPinAssign(const ScannedLine& line) {
    BeginBlock(line);
    m_pPinAssign = &AppendOwned(Required(m_data.m_pPrfPinAssignArray), std::make_unique<CVRXoutPrfPinAssign>());
    m_pPinAssign->m_sName = line.Column(2);
    m_report.Defines(NameKind::pinAssign, line.Place(), line.Column(2));
    return Outcome::next;
  }
  Outcome OpenFunction(const ScannedLine& line) {
    BeginBlock(line);
    m_pFunction = &AppendOwned(Required(m_data.m_pPrfFunctionArray), std::make_unique<CVRXoutPrfFunction>());
    m_pFunction->m_sName = line.Column(2);
    m_report.Defines(NameKind::function, line.Place(), line.Column(2));
    return Outcome::next;
  }
  void ReportOpenBlock() const {
    if (m_state == State::outside) return;
    m_report.NotClosed(m_block, kBlockNames[static_cast<std::size_t>(m_state)], m_sBlockName,
                       "what was read of it is kept");
  }

  // ---- a part ----
  Outcome SetFootprintRef(const ScannedLine& line) {
    if (m_pPart == nullptr) return Outcome::noRecord;
    if (m_state == State::outside || m_state >= State::pinAssign) m_report.BehindEnd(line);
    m_pPart->m_sFootprintRef = line.Column(2);
    return Outcome::next;
  }
  Outcome SetPackageRef(const ScannedLine& line) {
    m_pPart->m_sPackageRef = line.Column(2);
    m_report.RefersTo(NameKind::package, line.Place(), line.Column(2));
    return Outcome::next;
  }
  Outcome SetPinAssignRef(const ScannedLine& line) {
    m_pPart->m_sPinAssignRef = line.Column(2);
    m_report.RefersTo(NameKind::pinAssign, line.Place(), line.Column(2));
    return Outcome::next;
  }
  Outcome SetPartClass(const ScannedLine& line) {
    m_pPart->m_sPartClass = line.Column(2);
    m_data.vCleanString(m_pPart->m_sPartClass);
    return Outcome::next;
  }
  Outcome OpenStock(const ScannedLine& line) { return line.EndsIn(")") ? Outcome::stays : Outcome::next; }
  Outcome AddPartProperty(const ScannedLine& line) { return AddProperty(m_pPart->m_pPropertyArray, line); }
  Outcome AddStockProperty(const ScannedLine& line) { return AddProperty(m_pPart->m_pStockPropertyArray, line); }
  // Every other line of a part: its keyword becomes the key.
  Outcome AddGenericProperty(const ScannedLine& line) {
    CString sKey(line.Column(1));
    if (line.Column(1).starts_with('(')) sKey.Remove('(');
    CString sValue(line.Column(2));
    if (line.Column(2).ends_with(')')) sValue.Remove(')');
    AppendOwned(Required(m_pPart->m_pPropertyArray), std::make_unique<CLProperty>(sKey, sValue));
    return Outcome::next;
  }
  Outcome AddPartPort(const ScannedLine& line) {
    const bool bType = line.Contains("portType");
    auto p = std::make_unique<CVRXoutPrfPartPort>();
    p->m_sPortNo = line.Column(2);
    if (line.Contains("portName")) {
      p->m_sPortName = line.Column(6);
      if (bType) p->m_sPortType = line.TrimmedColumn(9);
    } else if (bType) {
      p->m_sPortType = line.TrimmedColumn(6);
    }
    AppendOwned(Required(m_pPart->m_pPortArray), std::move(p));
    return Outcome::next;
  }
  // Such a property is taken to span several lines, with a ")" of its own.
  Outcome OpenInterfaceProperty(const ScannedLine& line) {
    m_bInterfaceProperty = true;
    m_report.Warn(line, "a property inside an interface is not kept, and takes the next \")\" for its own");
    return Outcome::next;
  }
  Outcome CloseInterface(const ScannedLine&) {
    return std::exchange(m_bInterfaceProperty, false) ? Outcome::stays : Outcome::next;
  }

  // ---- a part's gate ----
  Outcome OpenGate(const ScannedLine& line) {
    m_pGate = &AppendOwned(Required(m_pPart->m_pGateDefArray), std::make_unique<CVRXoutPrfPartGateDef>());
    m_pGate->m_sGateName = line.Column(3);
    return Outcome::next;
  }
  Outcome AddGateProperty(const ScannedLine& line) { return AddProperty(m_pGate->m_pPropertyArray, line); }
  Outcome OpenGateTerminal(const ScannedLine& line) { return line.EndsIn("))") ? Outcome::stays : Outcome::next; }
  Outcome AddPortRef(const ScannedLine& line) {
    m_pGate->m_aPortRefs.Emplace(line.Column(3));
    return Outcome::next;
  }

  // ---- a pin assign ----
  Outcome AddPinAssignProperty(const ScannedLine& line) { return AddProperty(m_pPinAssign->m_pPropertyArray, line); }
  Outcome AddPinAssignPort(const ScannedLine& line) {
    auto p = std::make_unique<CVRXoutPrfPinAssignPort>();
    p->m_sPortNo = line.Column(2);
    p->m_nPinId = line.Integer(4);
    p->m_sPortName = line.Column(6);
    p->m_sPortType = line.Column(8);
    AppendOwned(Required(m_pPinAssign->m_pPortArray), std::move(p));
    return Outcome::next;
  }
  Outcome OpenFunctionInstance(const ScannedLine& line) {
    auto p = std::make_unique<CVRXoutPrfPinAssignFuncInst>();
    p->m_sFunctionRef = line.Column(3);
    m_pInstance = &AppendOwned(Required(m_pPinAssign->m_pFuncInstArray), std::move(p));
    m_report.RefersTo(NameKind::function, line.Place(), m_pInstance->m_sFunctionRef.View());
    return Outcome::next;
  }
  Outcome AddInstancePort(const ScannedLine& line) {
    auto p = std::make_unique<CVRXoutPrfPinAssignFuncInstPort>();
    p->m_sPortNo = line.Column(2);
    p->m_sMatch = line.Column(4);
    AppendOwned(Required(m_pInstance->m_pPortArray), std::move(p));
    return Outcome::next;
  }

  // ---- a function ----
  Outcome AddFunctionProperty(const ScannedLine& line) { return AddProperty(m_pFunction->m_pPropertyArray, line); }
  Outcome AddFunctionPort(const ScannedLine& line) {
    auto p = std::make_unique<CVRXoutPrfFunctionPort>();
    p->m_sPortNo = line.Column(2);
    p->m_nSymbPinId = line.Integer(4);
    p->m_sPortType = line.Column(6);
    AppendOwned(Required(m_pFunction->m_pPortArray), std::move(p));
    return Outcome::next;
  }

 private:
  static constexpr std::string_view kBlockNames[] = {"",
                                                     "part",
                                                     "interface of part",
                                                     "gate of part",
                                                     "gate terminal of part",
                                                     "stock block of part",
                                                     "pin assign",
                                                     "interface of pin assign",
                                                     "internal block of pin assign",
                                                     "function instance of pin assign",
                                                     "function"};

  static Outcome AddProperty(CLPropertyArray* pArray, const ScannedLine& line) {
    auto p = std::make_unique<CLProperty>();
    p->m_sItem = line.Column(2);
    p->m_sComment = line.Column(3);
    AppendOwned(Required(pArray), std::move(p));
    return Outcome::next;
  }
  void BeginBlock(const ScannedLine& line) {
    if (!m_report.IsWanted()) return;
    ReportOpenBlock();
    m_block = line.Place();
    m_sBlockName = line.Column(2);
  }

  CPC_BD_OutClsGet& m_data;
  const ScanReport& m_report;
  // Not owned: each is in its array from its opening line on. A block's state is entered with its record, so a record
  // can only be missing for the lines that count in every state.
  CVRXoutPrfPart* m_pPart = nullptr;
  CVRXoutPrfPartGateDef* m_pGate = nullptr;
  CVRXoutPrfPinAssign* m_pPinAssign = nullptr;
  CVRXoutPrfPinAssignFuncInst* m_pInstance = nullptr;
  CVRXoutPrfFunction* m_pFunction = nullptr;
  bool m_bInterfaceProperty = false;
  TextPlace m_block;
  CString m_sBlockName;
};

using P = PartsScanner;
using S = PartsScanner::State;

constexpr auto kPartsLines = MakeTransitions<PartsScanner>({
    // in every block: a new one needs no ")" of the last
    {{}, "(part", &P::OpenPart, S::part},
    {{}, "(footprintRef", &P::SetFootprintRef},
    {{}, "(pinAssign", &P::OpenPinAssign, S::pinAssign},
    {{}, "(function", &P::OpenFunction, S::function},

    {S::outside, "(Japanese_coding:"},
    {S::outside, "//"},
    // the last of a function, whose interface has closed it
    {S::outside, ")"},

    {S::part, "(interface", nullptr, S::partInterface},
    {S::part, "(gateDef", &P::OpenGate, S::gate},
    {S::part, "(stockInfo", &P::OpenStock, S::stock},
    {S::part, ")", nullptr, S::outside},
    {S::part, "(packageRef", &P::SetPackageRef},
    {S::part, "(pinAssignRef", &P::SetPinAssignRef},
    {S::part, "(partClass", &P::SetPartClass},
    {S::part, "(property", &P::AddPartProperty},
    {S::part, kAnythingElse, &P::AddGenericProperty},

    {S::partInterface, ")", &P::CloseInterface, S::part},
    {S::partInterface, "(port", &P::AddPartPort},
    {S::partInterface, "(property", &P::OpenInterfaceProperty},

    {S::gate, ")", nullptr, S::part},
    {S::gate, "(property", &P::AddGateProperty},
    {S::gate, "(gateTermDef", &P::OpenGateTerminal, S::gateTerminal},
    {S::gate, kAnythingElse, &P::AddPortRef},

    {S::gateTerminal, ")", nullptr, S::gate},

    {S::stock, ")", nullptr, S::part},
    {S::stock, "(property", &P::AddStockProperty},

    {S::pinAssign, ")", nullptr, S::outside},
    {S::pinAssign, "(interface", nullptr, S::pinAssignInterface},
    {S::pinAssign, "(internal", nullptr, S::internal},
    {S::pinAssign, "(uver"},
    {S::pinAssign, "(property", &P::AddPinAssignProperty},

    {S::pinAssignInterface, ")", nullptr, S::pinAssign},
    {S::pinAssignInterface, "(port", &P::AddPinAssignPort},

    {S::internal, ")", nullptr, S::pinAssign},
    {S::internal, "(funcInst", &P::OpenFunctionInstance, S::functionInstance},

    {S::functionInstance, ")", nullptr, S::internal},
    {S::functionInstance, "(port", &P::AddInstancePort},

    {S::function, ")", nullptr, S::outside},
    {S::function, "(port", &P::AddFunctionPort},
    {S::function, "(property", &P::AddFunctionProperty},
    {S::function, "(uver"},
    {S::function, "(interface"},
});

}  // namespace

void ScanPartsFile(CPC_BD_OutClsGet& data, std::string_view sText, const ScanReport& report) {
  PartsScanner scanner(data, report);
  ScanText(kPartsLines, scanner, sText, report);
  scanner.ReportOpenBlock();
}

}  // namespace laminate
