#include "designdata/ComponentFile.h"

#include <algorithm>

#include "designdata/CPC_BD_OutClsGet.h"
#include "designdata/LineScanner.h"
#include "designdata/RecordLookup.h"

// A component database file. A setting is a keyword, "=", and its value:
//
//   $COMP "NAME"
//     componentType = parts
//     functionName = FUNCTION
//     symbolName = SYMBOL1 SYMBOL2
//     gateCount = 1
//     pin 1 = INOUT A1,A2 GATEPIN SEVENTH
//   $COMP_END
//
// A component enters the facade at its closing line and stays current behind it.

namespace laminate {
namespace {

constexpr int kMaxPinNames = 100;

class ComponentScanner {
 public:
  /// Settings are taken wherever they stand.
  enum class State { anywhere };
  State m_state = State::anywhere;

  ComponentScanner(CPC_BD_OutClsGet& data, const ScanReport& report) : m_data(data), m_report(report) {}

  static std::string_view Describe(State) { return "in a component"; }

  Outcome Open(const ScannedLine& line) {
    ReportDropped();
    m_component.Make(line).m_sCompName = line.Column(2);
    return Outcome::next;
  }
  Outcome Close(const ScannedLine& line) {
    if (!IsFor(line)) return Outcome::noRecord;
    m_component.Enter(Required(m_data.m_pLcdbCmpCompArray));
    return Outcome::next;
  }
  Outcome SetComponentType(const ScannedLine& line) {
    if (!IsFor(line)) return Outcome::noRecord;
    m_component->m_sComponentType = line.Column(3);
    return Outcome::next;
  }
  Outcome SetFunctionName(const ScannedLine& line) {
    if (!IsFor(line)) return Outcome::noRecord;
    m_component->m_sFunctionName = line.Column(3);
    m_report.RefersTo(NameKind::function, line.Place(), line.Column(3));
    return Outcome::next;
  }
  Outcome SetGateCount(const ScannedLine& line) {
    if (!IsFor(line)) return Outcome::noRecord;
    m_component->m_nGateCount = line.Integer(3);
    return Outcome::next;
  }
  // Columns are counted by blanks alone but honour quotes, so that a quoted name with a blank inside brings an empty
  // name along.
  Outcome AddSymbolNames(const ScannedLine& line) {
    if (!IsFor(line)) return Outcome::noRecord;
    constexpr std::size_t kFirstName = 3;
    const std::size_t nLast = std::max(kFirstName, CountColumns(line.Text()));
    for (std::size_t n = kFirstName; n <= nLast; ++n) m_component->m_aSymbolNames.Emplace(line.Column(n));
    return Outcome::next;
  }
  Outcome AddPin(const ScannedLine& line) {
    if (!IsFor(line)) return Outcome::noRecord;
    auto p = std::make_unique<CVRXoutLcdbCmpCompPin>();
    p->m_nPinId = line.Integer(2);
    SplitPinNames(line.Column(5), p->m_aPinNames);
    p->m_sGatePinName = line.Column(6);
    p->m_sSeventhColumn = line.Column(7);
    AppendOwned(Required(m_component->m_pPinArray), std::move(p));
    return Outcome::next;
  }

  void ReportDropped() const {
    if (m_component.IsOpen()) {
      m_report.NotClosed(m_component.Place(), "component", m_component->m_sCompName, "it is dropped");
    }
  }

 private:
  // Whether there is a component for the line to act on.
  bool IsFor(const ScannedLine& line) const {
    if (m_component && !m_component.IsOpen()) m_report.BehindEnd(line);
    return static_cast<bool>(m_component);
  }
  // Names beyond the hundredth are dropped.
  static void SplitPinNames(std::string_view s, CStringArray& arrNames) {
    const auto nCommas = static_cast<std::size_t>(std::count(s.begin(), s.end(), ','));
    arrNames.Preallocate(std::min<std::size_t>(nCommas + 1, kMaxPinNames));
    for (int i = 0; i < kMaxPinNames; ++i) {
      const std::size_t n = s.find(',');
      arrNames.Emplace(s.substr(0, n));
      if (n == std::string_view::npos) return;
      s.remove_prefix(n + 1);
    }
  }

  CPC_BD_OutClsGet& m_data;
  const ScanReport& m_report;
  CurrentRecord<CVRXoutLcdbCmpComp> m_component;
};

using C = ComponentScanner;

constexpr auto kComponentLines = MakeTransitions<ComponentScanner>({
    {{}, "$COMP", &C::Open},
    {{}, "$COMP_END", &C::Close},
    {{}, "componentType", &C::SetComponentType},
    {{}, "functionName", &C::SetFunctionName},
    {{}, "symbolName", &C::AddSymbolNames},
    {{}, "gateCount", &C::SetGateCount},
    {{}, "pin", &C::AddPin},
    {{}, "//"},
});

}  // namespace

void ScanComponentFile(CPC_BD_OutClsGet& data, std::string_view sText, const ScanReport& report) {
  ComponentScanner scanner(data, report);
  ScanText(kComponentLines, scanner, sText, report);
  scanner.ReportDropped();
}

}  // namespace laminate
