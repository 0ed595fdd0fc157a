#pragma once
#include <string>
#include <string_view>

#include "base/BKUtility.h"
#include "base/CException.h"
#include "base/HostInterface.h"
#include "designdata/CVRXoutPackage.h"
#include "facade/CBDesigner.h"
#include "fuzz/FuzzSupport.h"
#include "reader/MemoryFileSystem.h"

namespace laminate::fuzz {

/// What a design's files come to: they are loaded as far as they let themselves be, the root is exported twice, and
/// what was exported is loaded and exported again. Loads end well or by the failure of an invalid argument; an export
/// leaves the whole set or nothing, and none of its temporary files.
class DesignExport {
 public:
  DesignExport(std::string sBoard, std::string sFootprints) {
    m_files.folders = {"/in", "/out", "/data"};
    m_files.files["/in/design.pcf"] = std::move(sBoard);
    m_files.files["/in/design.ftf"] = std::move(sFootprints);
  }

  void Run() {
    const FileSystemScope scope(m_files);
    BKUtility::GetInstance()->SetDataPath("/data");
    Silent silent;
    CHostInterfaceScope host(silent);
    {
      CBDesigner root;
      Load(root, "/in/design");
      if (Export(root, "/out/first") && Export(root, "/out/second")) {
        CBDesigner again;
        Load(again, "/out/first");
        Export(again, "/out/third");
      }
    }
    Require(m_files.OpenCount() == 0);
    BKUtility::GetInstance()->SetDataPath(CString());
  }

 private:
  struct Silent : CHostInterface {
    int OnAfxMessageBox(const CString&, UINT, UINT) override { return IDOK; }
  };

  static void Load(CBDesigner& root, const std::string& sStem) {
    try {
      root.vParseFTF(CString(sStem + ".ftf"));
      root.vParsePCF(CString(sStem + ".pcf"));
    } catch (const CInvalidArgException&) {
      Require(!root.GetLoadStatus().IsOk());
    }
  }

  bool Export(CBDesigner& root, const std::string& sStem) {
    CVRXoutPackageArray packages;
    bool bWritten = true;
    try {
      root.nPrint2File(CString(sStem), &root, &packages, nullptr, nullptr, nullptr);
    } catch (const CInvalidArgException&) {
      bWritten = false;
    }
    int nFiles = 0;
    for (const auto& [sName, sText] : m_files.files) {
      if (!sName.starts_with(sStem)) continue;
      ++nFiles;
      const std::string_view sEnding = std::string_view(sName).substr(sStem.size());
      Require(sEnding == ".pcf" || sEnding == ".ftf" || sEnding == ".tcf" || sEnding == ".pkf" || sEnding == ".cdf");
    }
    Require(bWritten ? nFiles == 5 : nFiles < 5);
    return bWritten;
  }

  MemoryFileSystem m_files;
};

}  // namespace laminate::fuzz
