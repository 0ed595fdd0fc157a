#include "DesignData.h"

#include <system_error>

#include "LoadBoard.h"
#include "base/CArchive.h"
#include "base/CFile.h"
#include "base/HeldFile.h"

namespace laminate::cli {

namespace {

void LoadArchive(Console& console, const std::string& sPath, CPC_BD_OutClsGet& data) {
  // The image is read twice.
  const HeldFile held(sPath.c_str());
  if (held.Result() != 0) console.Fail({sPath}, std::generic_category().message(-held.Result()));
  try {
    CFile file(sPath.c_str(), CFile::modeRead | CFile::typeBinary);
    {
      // An image begins with the facade's version word; anything else would be loaded as nothing at all.
      CArchive ar(&file, CArchive::load);
      int nVersion = 0;
      ar >> nVersion;
      if (nVersion < 1 || nVersion > CPC_BD_OutClsGet::m_nVersion) {
        console.Fail({sPath}, "not an archive of design data: version word " + std::to_string(nVersion));
      }
    }
    file.SeekToBegin();
    CArchive ar(&file, CArchive::load);
    data.Serialize(ar);
  } catch (const CFileException& e) {
    console.Fail({sPath}, e.what());
  } catch (const CArchiveException& e) {
    console.Fail({sPath}, e.what());
  } catch (const COleException& e) {
    console.Fail({sPath}, e.what());
  }
}

// What an archive writes goes on to the output.
class ArchiveTarget : public CFile {
 public:
  explicit ArchiveTarget(OutputFile& out) : m_out(out) {}
  void Write(const void* pBuffer, UINT nCount) override { m_out.Write({static_cast<const char*>(pBuffer), nCount}); }
  void Flush() override {}

 private:
  OutputFile& m_out;
};

}  // namespace

std::vector<std::string> DesignDataFiles::List() const {
  std::vector<std::string> list;
  for (const std::string* ps : {&archive, &package, &parts, &rules, &components}) {
    if (!ps->empty()) list.push_back(*ps);
  }
  return list;
}

void LoadDesignData(Console& console, Host& host, const DesignDataFiles& files, CPC_BD_OutClsGet& data) {
  if (!files.archive.empty()) LoadArchive(console, files.archive, data);
  struct Step {
    const std::string& path;
    void (CPC_BD_OutClsGet::*load)(CString);
  };
  const Step steps[] = {{files.package, &CPC_BD_OutClsGet::vGetOutPackageArray},
                        {files.parts, &CPC_BD_OutClsGet::vGetOutPrfPartArray},
                        {files.rules, &CPC_BD_OutClsGet::vGetOutRufCompAndNetArray},
                        {files.components, &CPC_BD_OutClsGet::vGetOutLcdbCmpCompArray}};
  for (const Step& step : steps) {
    if (step.path.empty()) continue;
    const bool bGood = RunLoad(
        console, host, step.path, [&] { (data.*step.load)(CString(std::string_view(step.path))); },
        [&]() -> const LoadStatus& { return data.GetLoadStatus(); });
    if (!bGood) throw Failure{kFailed};
  }
}

void StoreArchive(OutputFile& out, CPC_BD_OutClsGet& data) {
  ArchiveTarget target(out);
  CArchive ar(&target, CArchive::store);
  data.Serialize(ar);
  ar.Close();
}

}  // namespace laminate::cli
