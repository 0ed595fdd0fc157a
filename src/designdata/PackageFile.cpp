#include "designdata/PackageFile.h"

#include "designdata/CPC_BD_OutClsGet.h"
#include "designdata/LineScanner.h"

// A package file, one element a line:
//
//   (unit mm)
//   (package "NAME"
//     (type SMD)
//     (uver 1)
//     (mountForm default
//       (footprintRef "F")
//       (bottomFootprint "B")
//       (spec "reflow")
//     )
//   )
//
// A package enters the facade, and a mount form its package, at the closing line.

namespace laminate {
namespace {

class PackageScanner {
 public:
  /// How many blocks are open. A mount form may stand outside a package; then it is the only block.
  enum class State { noBlock, oneBlock, twoBlocks, moreBlocks };
  State m_state = State::noBlock;

  PackageScanner(CPC_BD_OutClsGet& data, const ScanReport& report) : m_data(data), m_report(report) {}

  static std::string_view Describe(State state) {
    constexpr std::string_view kWhere[] = {"outside a package", "inside a package", "inside a mount form",
                                           "inside a mount form that stands in another one"};
    return kWhere[static_cast<std::size_t>(state)];
  }

  Outcome SetUnit(const ScannedLine& line) {
    m_data.m_sUnit = line.TrimmedColumn(2);
    return Outcome::next;
  }
  Outcome OpenPackage(const ScannedLine& line) {
    ReportDropped();
    m_package.Make(line).m_sName = line.Column(2);
    return Outcome::next;
  }
  Outcome SetUver(const ScannedLine& line) {
    if (!IsFor(line)) return Outcome::noRecord;
    m_package->m_nUver = Atoi(line.TrimmedColumn(2));
    return Outcome::next;
  }
  Outcome SetType(const ScannedLine& line) {
    if (!IsFor(line)) return Outcome::noRecord;
    m_package->m_sType = line.TrimmedColumn(2);
    return Outcome::next;
  }
  Outcome ClosePackage(const ScannedLine&) {
    if (!m_package) return Outcome::noRecord;
    if (m_package.Enter(Required(m_data.m_pPackageArray))) {
      m_report.Defines(NameKind::package, m_package.Place(), m_package->m_sName.View());
    }
    return Outcome::next;
  }
  Outcome OpenMountForm(const ScannedLine& line) {
    ReportMountForm();
    m_mountForm.Make(line).m_sMountForm = line.TrimmedColumn(2);
    return Outcome::next;
  }
  Outcome SetFootprint(const ScannedLine& line) {
    if (!m_mountForm) return Outcome::noRecord;
    m_mountForm->m_sFootprintRef = line.TrimmedColumn(2);
    return Outcome::next;
  }
  Outcome SetBottomFootprint(const ScannedLine& line) {
    if (!m_mountForm) return Outcome::noRecord;
    m_mountForm->m_sBottomFootprint = line.TrimmedColumn(2);
    return Outcome::next;
  }
  Outcome SetSpec(const ScannedLine& line) {
    if (!m_mountForm) return Outcome::noRecord;
    const std::string_view s = line.TrimmedColumn(2);
    m_mountForm->m_sSpec = s.empty() ? "default" : s;
    return Outcome::next;
  }
  Outcome CloseMountForm(const ScannedLine&) {
    if (!m_package || !m_mountForm) return Outcome::noRecord;
    m_mountForm.Enter(Required(m_package->m_pMountFormArray));
    m_mountForm.Forget();
    return Outcome::next;
  }

  void ReportDropped() {
    ReportMountForm();
    if (m_package.IsOpen()) m_report.NotClosed(m_package.Place(), "package", m_package->m_sName, "it is dropped");
  }

 private:
  // Whether there is a package for the line to act on.
  bool IsFor(const ScannedLine& line) const {
    if (m_package && !m_package.IsOpen()) m_report.BehindEnd(line);
    return static_cast<bool>(m_package);
  }
  void ReportMountForm() {
    // A mount form outlives the package around it; it is told of once.
    if (!m_mountForm.IsOpen() || m_nReportedLine == m_mountForm.Place().line) return;
    m_nReportedLine = m_mountForm.Place().line;
    m_report.NotClosed(m_mountForm.Place(), "mount form", m_mountForm->m_sMountForm, "it is dropped");
  }

  CPC_BD_OutClsGet& m_data;
  const ScanReport& m_report;
  CurrentRecord<CVRXoutPackage> m_package;
  CurrentRecord<CVRXoutPackageMountForm> m_mountForm;
  int m_nReportedLine = 0;
};

using P = PackageScanner;
using S = PackageScanner::State;

constexpr auto kPackageLines = MakeTransitions<PackageScanner>({
    // in every block
    {{}, "(Japanese_coding:"},
    {{}, "//"},
    {{}, "(unit", &P::SetUnit},
    {{}, "(package", &P::OpenPackage, S::oneBlock},
    {{}, "(uver", &P::SetUver},
    {{}, "(type", &P::SetType},
    {{}, "(footprintRef", &P::SetFootprint},
    {{}, "(bottomFootprint", &P::SetBottomFootprint},

    {S::noBlock, "(mountForm", &P::OpenMountForm, S::oneBlock},

    {S::oneBlock, "(mountForm", &P::OpenMountForm, S::twoBlocks},
    {S::oneBlock, ")", &P::ClosePackage, S::noBlock},

    {S::twoBlocks, "(mountForm", &P::OpenMountForm, S::moreBlocks},
    {S::twoBlocks, "(spec", &P::SetSpec},
    {S::twoBlocks, ")", &P::CloseMountForm, S::oneBlock},

    // no ")" counts any more: only a new package leads out
    {S::moreBlocks, "(mountForm", &P::OpenMountForm},
});

}  // namespace

void ScanPackageFile(CPC_BD_OutClsGet& data, std::string_view sText, const ScanReport& report) {
  PackageScanner scanner(data, report);
  ScanText(kPackageLines, scanner, sText, report);
  scanner.ReportDropped();
}

}  // namespace laminate
