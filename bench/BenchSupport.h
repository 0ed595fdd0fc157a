#pragma once
#include <benchmark/benchmark.h>
#include <time.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace laminate::bench {

inline double CpuSeconds() {
  timespec t;
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
}

/// The process's largest resident size, in MiB; 0 where the system does not tell.
inline double PeakMiB() {
  std::ifstream in("/proc/self/status");
  std::string word;
  double n = 0;
  while (in >> word) {
    if (word == "VmHWM:") in >> n;
  }
  return n / 1024;
}

/// What the program tells when it runs itself with these arguments: a number.
inline double OfItsOwn(const std::string& sArguments) {
  const std::string command = std::filesystem::read_symlink("/proc/self/exe").string() + " " + sArguments;
  double n = 0;
  if (std::FILE* pipe = ::popen(command.c_str(), "r")) {
    if (std::fscanf(pipe, "%lf", &n) != 1) n = 0;
    ::pclose(pipe);
  }
  return n;
}

/// What an operation needs at most in a process of its own, in MiB beyond what the process takes anyway: the program
/// runs itself with the arguments `--peak` and these.
inline double PeakOfItsOwn(const std::string& sArguments) { return OfItsOwn("--peak " + sArguments); }
/// The other side: `run` is the operation.
template <class Run>
int ReportPeak(Run run) {
  const double nBefore = PeakMiB();
  run();
  std::printf("%f\n", PeakMiB() - nBefore);
  return 0;
}

/// Runs the library's way and the plain way in turn, and reports both in MB of input per CPU-second, and their ratio.
template <class Library, class Plain>
void InTurn(benchmark::State& state, double nBytes, Library library, Plain plain) {
  double nLibrary = 0;
  double nPlain = 0;
  int nRuns = 0;
  for (auto _ : state) {
    const double nStart = CpuSeconds();
    library();
    const double nMiddle = CpuSeconds();
    const double nPlainStart = CpuSeconds();
    plain();
    nPlain += CpuSeconds() - nPlainStart;
    nLibrary += nMiddle - nStart;
    ++nRuns;
    state.SetIterationTime(nMiddle - nStart);
  }
  state.counters["MB/s"] = nBytes * nRuns / 1e6 / nLibrary;
  state.counters["plain"] = nBytes * nRuns / 1e6 / nPlain;
  state.counters["ratio"] = nPlain / nLibrary;
}

/// A folder for the files of a benchmark, in memory-backed storage where there is some.
class BenchFolder {
 public:
  BenchFolder() {
    std::string name =
        std::string(std::filesystem::exists("/dev/shm") ? "/dev/shm" : "/tmp") + "/laminate-bench-XXXXXX";
    m_path = ::mkdtemp(name.data());
  }
  ~BenchFolder() { std::filesystem::remove_all(m_path); }
  BenchFolder(const BenchFolder&) = delete;
  BenchFolder& operator=(const BenchFolder&) = delete;
  std::string Write(const std::string& sName, const std::string& sText) const {
    std::ofstream(m_path / sName, std::ios::binary) << sText;
    return (m_path / sName).string();
  }
  std::filesystem::path Path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

}  // namespace laminate::bench
