#include "Paths.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>

namespace laminate::cli {

std::string FolderOf(const std::string& sPath) {
  const std::size_t n = sPath.rfind('/');
  if (n == std::string::npos) return ".";
  return n == 0 ? "/" : sPath.substr(0, n);
}

std::string NameOf(const std::string& sPath) {
  const std::size_t n = sPath.rfind('/');
  return n == std::string::npos ? sPath : sPath.substr(n + 1);
}

std::string ResolveLinks(const std::string& sPath) {
  std::string s = sPath;
  // As many steps as the system itself takes.
  for (int i = 0; i < 40; ++i) {
    char target[PATH_MAX];
    const ssize_t n = readlink(s.c_str(), target, sizeof target);
    if (n < 0) return s;
    const std::string sTarget(target, static_cast<std::size_t>(n));
    s = sTarget.starts_with('/') ? sTarget : FolderOf(s) + "/" + sTarget;
  }
  errno = ELOOP;
  return {};
}

bool SameFile(const std::string& sA, const std::string& sB) {
  struct stat a {};
  struct stat b {};
  const bool bA = stat(sA.c_str(), &a) == 0;
  const bool bB = stat(sB.c_str(), &b) == 0;
  if (bA && bB) return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
  if (bA || bB) return false;
  const std::string sRealA = ResolveLinks(sA);
  const std::string sRealB = ResolveLinks(sB);
  if (stat(FolderOf(sRealA).c_str(), &a) != 0 || stat(FolderOf(sRealB).c_str(), &b) != 0) return false;
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino && NameOf(sRealA) == NameOf(sRealB);
}

namespace {

void Refuse(Console& console, const std::string& sOutput, const std::vector<std::string>& others,
            std::string_view sReason) {
  if (sOutput.empty() || sOutput == "-") return;
  struct stat st {};
  // A device that serves as both, such as a terminal, loses nothing.
  if (stat(sOutput.c_str(), &st) == 0 && !S_ISREG(st.st_mode)) return;
  for (const std::string& sOther : others) {
    if (!sOther.empty() && sOther != "-" && SameFile(sOutput, sOther)) console.Fail({sOutput}, sReason, kUsage);
  }
}

}  // namespace

void RefuseOutputOverInputs(Console& console, const std::string& sOutput, const std::vector<std::string>& inputs) {
  Refuse(console, sOutput, inputs, "the output is also an input");
}

void RefuseOutputOverOutputs(Console& console, const std::string& sOutput, const std::vector<std::string>& outputs) {
  Refuse(console, sOutput, outputs, "two outputs have the same name");
}

}  // namespace laminate::cli
