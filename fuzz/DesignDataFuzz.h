#pragma once
// What the fuzz targets of the design data do with what they loaded.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/CArchive.h"
#include "base/CMemFile.h"
#include "base/HostInterface.h"
#include "designdata/CPC_BD_OutClsGet.h"
#include "fuzz/FuzzSupport.h"
#include "reader/MemoryFileSystem.h"

namespace laminate::fuzz {

inline std::string Store(CPC_BD_OutClsGet& data) {
  CMemFile file(64 * 1024);
  CArchive ar(&file, CArchive::store);
  data.Serialize(ar);
  ar.Close();
  const auto nLength = static_cast<std::size_t>(file.GetLength());
  BYTE* p = file.Detach();
  std::string s(reinterpret_cast<const char*>(p), nLength);
  std::free(p);
  return s;
}

inline void LoadImage(CPC_BD_OutClsGet& data, std::string_view sImage) {
  std::string bytes(sImage);
  CMemFile file(reinterpret_cast<BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()), 0);
  CArchive ar(&file, CArchive::load);
  try {
    data.Serialize(ar);
  } catch (const CArchiveException& e) {
    Require(e.m_cause == CArchiveException::endOfFile);
  } catch (const COleException& e) {
    Require(e.m_sc == 0x80070216);
  }
  ar.Close();
}

inline std::string Written(CPC_BD_OutClsGet& data) {
  std::string s;
  TextOut out(s);
  for (const CVRXoutPackage* p : *data.m_pPackageArray) p->Write(out);
  for (CVRXoutPrfPart* p : *data.m_pPrfPartArray) {
    p->Write(out);
    for (CVRXoutPrfPartGateDef* pGate : *p->m_pGateDefArray) pGate->Write(out);
  }
  out.Flush();
  return s;
}

/// Whatever was loaded is sound: it is copied, written, stored, and loads again to the same image.
inline void Use(CPC_BD_OutClsGet& data) {
  {
    CPC_BD_OutClsGet copy(data);
    Require(*copy.m_pPackageArray == *data.m_pPackageArray);
    Require(*copy.m_pPrfPartArray == *data.m_pPrfPartArray);
    Require(*copy.m_pLcdbCmpCompArray == *data.m_pLcdbCmpCompArray);
  }
  Written(data);
  // What is written a second time differs in nothing but the percent signs of the gates.
  for (CVRXoutPrfPart* p : *data.m_pPrfPartArray) p->m_pGateDefArray->DeleteAll();
  const std::string sFirst = Written(data);
  Require(Written(data) == sFirst);
  CPC_BD_OutClsGet loaded;
  LoadImage(loaded, Store(data));
  const std::string sImage = Store(loaded);
  CPC_BD_OutClsGet again;
  LoadImage(again, sImage);
  Require(Store(again) == sImage);
}

/// Takes the boxes of the reader.
class QuietHost : public CHostInterface {
 public:
  int OnAfxMessageBox(const CString&, UINT, UINT) override { return IDOK; }
};

/// Loads a text by one of the facade's operations, with remarks and without, and uses what came of it.
inline int LoadText(void (CPC_BD_OutClsGet::*load)(CString), const std::uint8_t* pData, std::size_t nSize) {
  MemoryFileSystem fileSystem;
  fileSystem.files["file"] = std::string(reinterpret_cast<const char*>(pData), nSize);
  const FileSystemScope scope(fileSystem);
  QuietHost host;
  const CHostInterfaceScope hostScope(host);
  CPC_BD_OutClsGet data;
  CPC_BD_OutClsGet remarked;
  Diagnostics diagnostics;
  remarked.SetDiagnostics(&diagnostics);
  for (CPC_BD_OutClsGet* p : {&data, &remarked}) {
    try {
      (p->*load)("file");
    } catch (const CInvalidArgException&) {
      Require(!p->GetLoadStatus().IsOk());
    }
  }
  remarked.ReportUndefinedNames();
  Require(Store(data) == Store(remarked));
  Use(data);
  return 0;
}

}  // namespace laminate::fuzz
