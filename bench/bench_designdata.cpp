// The design data: the three line scanners, the rule file, and the archive. Scanners stand beside a plain one that cuts
// a line anew for every column, as the columns are told. MB are of the file, or of the image.
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "base/CArchive.h"
#include "base/CMemFile.h"
#include "bench/BenchSupport.h"
#include "designdata/CPC_BD_OutClsGet.h"

namespace {

using laminate::bench::BenchFolder;

// ---- generated files ----
std::string PackageFile(std::size_t nBytes) {
  std::string s = "(Japanese_coding: sjis)\n(unit mm)\n\n";
  for (int i = 0; s.size() < nBytes; ++i) {
    const std::string n = std::to_string(i);
    s += "(package \"PKG_" + n +
         "\"\n    (type SMD)\n    (uver 1)\n    (mountForm default\n        (footprintRef \"FP_" + n +
         "\")\n        (spec \"reflow\")\n    )\n)\n\n";
  }
  return s;
}

std::string PartsFile(std::size_t nBytes) {
  std::string s = "(Japanese_coding: sjis)\n";
  for (int i = 0; s.size() < nBytes; ++i) {
    const std::string n = std::to_string(i);
    s += "(function \"FN_" + n + "\"\n(uver 1)\n(property \"symbol\" \"U\")\n";
    for (int k = 1; k <= 8; ++k) {
      const std::string p = std::to_string(k);
      s += "(port \"" + p + "\" (symbPinId " + p + ") (portType \"INOUT\" ))\n";
    }
    s += ")\n\n(pinAssign \"PA_" + n + "\"\n(uver 1)\n(interface\n";
    for (int k = 1; k <= 8; ++k) {
      const std::string p = std::to_string(k);
      s += "(port \"" + p + "\" (symbPinId " + p + ") (portName \"P" + p + "\") (portType INOUT))\n";
    }
    s += ")\n(internal\n(funcInst (functionRef \"FN_" + n + "\")\n";
    for (int k = 1; k <= 8; ++k) {
      const std::string p = std::to_string(k);
      s += "(port \"" + p + "\" (match \"" + p + "\"))\n";
    }
    s += ")\n)\n)\n\n(part \"PART_" + n + "\"\n(uver 1)\n(packageRef \"PKG_" + n + "\")\n(pinAssignRef \"PA_" + n +
         "\")\n(interface\n";
    for (int k = 1; k <= 8; ++k) {
      const std::string p = std::to_string(k);
      s += "(port \"" + p + "\" (symbPinId " + p + ") (portName \"P" + p + "\") (portType INOUT))\n";
    }
    s += ")\n(partClass IC)\n(useInSchema yes)\n(property \"value\" \"100n\")\n)\n\n";
  }
  return s;
}

std::string ComponentFile(std::size_t nBytes) {
  std::string s;
  for (int i = 0; s.size() < nBytes; ++i) {
    const std::string n = std::to_string(i);
    s += "$COMP \"COMP_" + n + "\"\n  componentType = parts\n  functionName = FN_" + n +
         "\n  symbolName = U_SYM U_IEC\n";
    for (int k = 1; k <= 8; ++k) {
      const std::string p = std::to_string(k);
      s += "  pin " + p + " = INOUT A" + p + ",B" + p + " GND A\n";
    }
    s += "$COMP_END\n\n";
  }
  return s;
}

std::string RuleFile(std::size_t nBytes) {
  std::string s =
      "(design bench\n(boardSpec\n(bareBoard\n(conductor 1\n(thickness 0.035)\n(material COPPER)\n)\n)\n)\n(rule\n";
  for (int i = 0; s.size() < nBytes; ++i) {
    const std::string n = std::to_string(i);
    s += "(net \"NET_" + n + "\"\n(propertyS netClass \"Default\")\n(pinList\n";
    for (int k = 1; k <= 8; ++k) s += "(funcTerm U" + n + " " + std::to_string(k) + ")\n";
    s += ")\n)\n(designRuleUnit \"DR" + n +
         "\"\n(clearance 0.125 (element LINE LINE))\n(clearance 0.2 (element PAD PAD))\n)\n";
  }
  return s + ")\n)\n";
}

// ---- a plain scanner of the parts file's ports ----
std::string PlainColumn(const std::string& sLine, int nColumn) {
  std::vector<std::string> columns;
  std::string column;
  bool bQuoted = false;
  for (const char ch : sLine) {
    if (bQuoted ? ch == '"' : ch == '"' || ch == ' ') {
      if (bQuoted || !column.empty()) columns.push_back(column);
      column.clear();
      if (ch == '"') bQuoted = !bQuoted;
    } else {
      column += ch;
    }
  }
  if (!column.empty()) columns.push_back(column);
  return nColumn <= static_cast<int>(columns.size()) ? columns[static_cast<std::size_t>(nColumn) - 1] : std::string();
}
std::size_t PlainScan(const std::string& sPath) {
  std::ifstream in(sPath);
  std::string line;
  std::vector<std::unique_ptr<std::vector<std::string>>> records;
  while (std::getline(in, line)) {
    line.erase(0, line.find_first_not_of(" \t"));
    if (line.empty()) continue;
    const std::string key = PlainColumn(line, 1);
    if (key != "(port" && key != "pin" && key != "(package" && key != "(footprintRef") continue;
    auto p = std::make_unique<std::vector<std::string>>();
    for (const int n : {2, 4, 6, 9}) p->push_back(PlainColumn(line, n));
    records.push_back(std::move(p));
  }
  return records.size();
}

using LoadOperation = void (CPC_BD_OutClsGet::*)(CString);

void Scan(benchmark::State& state, const std::string& path, LoadOperation load) {
  laminate::bench::InTurn(
      state, static_cast<double>(std::filesystem::file_size(path)),
      [&] {
        CPC_BD_OutClsGet data;
        (data.*load)(CString(std::string_view(path)));
        if (!data.GetLoadStatus().IsOk()) state.SkipWithError(data.GetLoadStatus().m_sText.GetString());
      },
      [&] { benchmark::DoNotOptimize(PlainScan(path)); });
}

// ---- the archive ----
std::unique_ptr<CPC_BD_OutClsGet> LoadAll(const std::vector<std::pair<std::string, LoadOperation>>& files) {
  auto p = std::make_unique<CPC_BD_OutClsGet>();
  for (const auto& [path, load] : files) (p.get()->*load)(CString(std::string_view(path)));
  return p;
}

/// Keeps a file's bytes in a buffer that was made before, so that only the archive is measured.
class BufferFile : public CFile {
 public:
  explicit BufferFile(std::vector<BYTE>& bytes) : m_bytes(bytes) {}
  UINT Read(void* pBuffer, UINT nCount) override {
    const std::size_t n = std::min<std::size_t>(nCount, m_bytes.size() - m_nAt);
    std::memcpy(pBuffer, m_bytes.data() + m_nAt, n);
    m_nAt += n;
    return static_cast<UINT>(n);
  }
  void Write(const void* pBuffer, UINT nCount) override {
    if (m_nAt + nCount > m_bytes.size()) m_bytes.resize((m_nAt + nCount) * 2);
    std::memcpy(m_bytes.data() + m_nAt, pBuffer, nCount);
    m_nAt += nCount;
  }
  ULONGLONG Seek(__int64 nOffset, UINT nFrom) override {
    m_nAt = static_cast<std::size_t>(nFrom == current ? static_cast<__int64>(m_nAt) + nOffset : nOffset);
    return m_nAt;
  }
  ULONGLONG GetPosition() const override { return m_nAt; }
  void Flush() override {}

 private:
  std::vector<BYTE>& m_bytes;
  std::size_t m_nAt = 0;
};

std::size_t Store(CPC_BD_OutClsGet& data, std::vector<BYTE>& bytes) {
  BufferFile file(bytes);
  CArchive ar(&file, CArchive::store);
  data.Serialize(ar);
  ar.Close();
  return static_cast<std::size_t>(file.GetPosition());
}

void Archive(benchmark::State& state, CPC_BD_OutClsGet& data, bool bStore) {
  std::vector<BYTE> bytes;
  const std::size_t nBytes = Store(data, bytes);
  bytes.resize(nBytes);
  double dSeconds = 0;
  int nRuns = 0;
  for (auto _ : state) {
    const double dStart = laminate::bench::CpuSeconds();
    if (bStore) {
      benchmark::DoNotOptimize(Store(data, bytes));
    } else {
      CPC_BD_OutClsGet loaded;
      BufferFile file(bytes);
      CArchive ar(&file, CArchive::load);
      loaded.Serialize(ar);
    }
    const double d = laminate::bench::CpuSeconds() - dStart;
    dSeconds += d;
    ++nRuns;
    state.SetIterationTime(d);
  }
  state.counters["image_MB"] = static_cast<double>(nBytes) / 1e6;
  state.counters["MB/s"] = static_cast<double>(nBytes) * nRuns / 1e6 / dSeconds;
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const BenchFolder folder;
  for (const int nMegabytes : {1, 10, 100}) {
    const std::size_t nBytes = static_cast<std::size_t>(nMegabytes) * 1000000;
    const std::string size = std::to_string(nMegabytes);
    const std::vector<std::tuple<std::string, std::string (*)(std::size_t), LoadOperation>> kinds = {
        {"package", &PackageFile, &CPC_BD_OutClsGet::vGetOutPackageArray},
        {"parts", &PartsFile, &CPC_BD_OutClsGet::vGetOutPrfPartArray},
        {"components", &ComponentFile, &CPC_BD_OutClsGet::vGetOutLcdbCmpCompArray},
        {"rules", &RuleFile, &CPC_BD_OutClsGet::vGetOutRufCompAndNetArray}};
    std::vector<std::pair<std::string, LoadOperation>> files;
    for (const auto& [name, make, load] : kinds) {
      const std::string path = folder.Write(name + size, make(nBytes));
      files.emplace_back(path, load);
      const int nIterations = nMegabytes == 1 ? 40 : nMegabytes == 10 ? 8 : 2;
      benchmark::RegisterBenchmark((name + "/" + size + "MB").c_str(),
                                   [path = path, load = load](benchmark::State& state) { Scan(state, path, load); })
          ->UseManualTime()
          ->Iterations(nIterations)
          ->Unit(benchmark::kMillisecond);
    }
    // For the archive a quarter of each kind.
    std::vector<std::pair<std::string, LoadOperation>> quarters;
    for (const auto& [name, make, load] : kinds) {
      quarters.emplace_back(folder.Write(name + "quarter" + size, make(nBytes / 4)), load);
    }
    for (const bool bStore : {true, false}) {
      benchmark::RegisterBenchmark(
          ((bStore ? "store/" : "load/") + size + "MB").c_str(),
          [quarters, bStore](benchmark::State& state) { Archive(state, *LoadAll(quarters), bStore); })
          ->UseManualTime()
          ->Iterations(nMegabytes == 1    ? 100
                       : nMegabytes == 10 ? 20
                                          : 4)
          ->Unit(benchmark::kMillisecond);
    }
  }
  benchmark::RunSpecifiedBenchmarks();
}
