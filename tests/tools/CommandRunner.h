#pragma once
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// The folder of one test: the command runs in it.
class TestFolder {
 public:
  TestFolder() {
    std::string s = (std::filesystem::temp_directory_path() / "laminate-command-XXXXXX").string();
    if (mkdtemp(s.data()) == nullptr) throw std::runtime_error("no temporary folder");
    m_path = s;
  }
  ~TestFolder() {
    std::error_code error;
    std::filesystem::remove_all(m_path, error);
  }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  std::filesystem::path operator/(const std::string& sName) const { return m_path / sName; }
  const std::filesystem::path& Path() const { return m_path; }
  void Write(const std::string& sName, const std::string& sContent) const {
    std::ofstream(m_path / sName, std::ios::binary) << sContent;
  }
  std::string Read(const std::string& sName) const {
    std::ifstream in(m_path / sName, std::ios::binary);
    if (!in) return "<no " + sName + ">";
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
  }
  /// The names in the folder, hidden ones included, sorted.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(m_path)) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::filesystem::path m_path;
};

struct CommandResult {
  int status = -1;  ///< exit status, or minus the number of the signal that ended it
  std::string out;
  std::string err;
};

/// The built command as a process of its own.
class CommandRunner {
 public:
  explicit CommandRunner(const TestFolder& folder) : m_folder(folder) {}

  /// A file that takes standard output instead of the result, or "closed".
  std::string standardOutput;
  std::string standardError;
  /// Largest file that the process may write; 0: any.
  rlim_t nFileSize = 0;
  std::vector<std::pair<std::string, std::string>> environment;

  CommandResult operator()(const std::vector<std::string>& arguments) const {
    const std::string sOut = MakeCapture();
    const std::string sErr = MakeCapture();
    std::vector<std::string> all{LAMINATE_COMMAND};
    all.insert(all.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& s : all) argv.push_back(s.data());
    argv.push_back(nullptr);

    const pid_t pid = fork();
    if (pid == 0) {
      if (chdir(m_folder.Path().c_str()) != 0) _exit(126);
      Redirect(STDOUT_FILENO, standardOutput.empty() ? sOut : standardOutput);
      Redirect(STDERR_FILENO, standardError.empty() ? sErr : standardError);
      for (const auto& [sName, sValue] : environment) setenv(sName.c_str(), sValue.c_str(), 1);
      if (nFileSize != 0) {
        const rlimit limit{nFileSize, nFileSize};
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
      }
      execv(argv[0], argv.data());
      _exit(127);
    }
    int nStatus = 0;
    waitpid(pid, &nStatus, 0);
    CommandResult result;
    result.status = WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -WTERMSIG(nStatus);
    result.out = TakeCapture(sOut);
    result.err = TakeCapture(sErr);
    return result;
  }

 private:
  static std::string MakeCapture() {
    std::string s = (std::filesystem::temp_directory_path() / "laminate-capture-XXXXXX").string();
    const int h = mkstemp(s.data());
    if (h < 0) throw std::runtime_error("no temporary file");
    close(h);
    return s;
  }
  static std::string TakeCapture(const std::string& sPath) {
    std::ifstream in(sPath, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    std::filesystem::remove(sPath);
    return s.str();
  }
  static void Redirect(int nTarget, const std::string& sPath) {
    close(nTarget);
    if (sPath == "closed") return;
    const int h = open(sPath.c_str(), O_WRONLY);
    if (h != nTarget) {
      dup2(h, nTarget);
      close(h);
    }
  }
  const TestFolder& m_folder;
};

/// What most tests begin with: a folder and the command in it.
struct CommandTest : testing::Test {
  TestFolder folder;
  CommandRunner run{folder};
};

/// A small board of two nets, two components and one line, and a library for it.
inline const char kBoard[] =
    "// a board\n"
    "(pcf\n(header\n(version 2.0)\n(unit MM)\n)\n"
    "(technologyContainer\n(technology two\n(numberOfConductorLayer 2)\n"
    "(footprintLayer\n(layer Top (type CONDUCTIVE))\n(layer Edge (type OUTLINE))\n)\n"
    "(nonConductiveLayer\n(layer Outline)\n)\n"
    "(conductiveLayer\n(layerNumber 1 (type POSI))\n(layerNumber 2 (type POSI))\n)\n"
    "(subLayer\n)\n"
    "(layerMapping\n(map A\n(correspondence (footLayer Edge) (boardLayer (nonConductive Outline)))\n)\n)\n"
    ")\n)\n"
    "(boardContainer\n"
    "(components\n"
    "(component (reference R1)\n(part \"10k, 1%\")\n(package P0402)\n(footprint F0402)\n(placementSide A)\n"
    "(location (pt 100000 250000))\n(angle 90)\n(pin 1 (pt 50000 250000))\n(pin 2 (pt 150000 250000))\n)\n"
    "(component (reference R2)\n(part X)\n(package P0402)\n(footprint F0402)\n(placementSide B)\n"
    "(location (pt 1.5 -2.25))\n(angle 0)\n(pin 1 (pt 0 0))\n)\n"
    ")\n"
    "(nets\n(net \"VCC 3V3\"\n(type POWER)\n(pen 1)\n(comp R1 (pin 1))\n(comp R2 (pin 1))\n)\n"
    "(net GND\n(type POWER)\n(pen 2)\n(comp R1 (pin 2))\n)\n(net NC\n(type NORMAL)\n(pen 0)\n)\n)\n"
    "(boardLayout\n(layout\n"
    "(layer (conductive 1)\n(line (net GND) (geometry (line (vertex (pt 0 0 (width 20000)) (pt 100000 0)))))\n)\n"
    "(layer (nonConductive Outline)\n"
    "(line (geometry (line (vertex (pt 0 0) (pt 2000000 0) (pt 2000000 1000000) (pt 0 1000000) (pt 0 0)))))\n)\n"
    ")\n)\n"
    ")\n"
    ")\n";

inline const char kLibrary[] =
    "(ftf\n(header\n(version 2.0)\n)\n(technologyContainer\n(technology two\n(footprintLayer\n"
    "(layer Top (type CONDUCTIVE))\n)\n)\n)\n"
    "(footprintContainer\n(pads\n(pad PAD1 (geometry (circle 50000 (pt 0 0))))\n)\n"
    "(padstacks\n(padstack STACK1 (type SMD) (throughMode NO))\n)\n"
    "(footprints\n(footprint F0402 (pin 1))\n)\n)\n)\n";
