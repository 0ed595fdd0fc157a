#include "designdata/CVRXoutPackage.h"

#include <memory>
#include <utility>

#include "designdata/RecordLookup.h"

CVRXoutPackageMountForm::CVRXoutPackageMountForm(const CVRXoutPackageMountForm& source) : CVRXoutPackageMountForm() {
  *this = source;
}
CVRXoutPackageMountForm& CVRXoutPackageMountForm::operator=(const CVRXoutPackageMountForm& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
void CVRXoutPackageMountForm::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutPackageMountForm* CVRXoutPackageMountForm::clone() const { return new CVRXoutPackageMountForm(*this); }
int CVRXoutPackageMountForm::operator==(const CVRXoutPackageMountForm& other) const {
  return laminate::EqualRecords(*this, other);
}

void CVRXoutPackageMountForm::Write(laminate::TextOut& out, int nIndex) const {
  if (nIndex == 0) {
    out.Print<"(mountForm %s\n">(m_sMountForm);
  } else {
    out.Print<"(mountForm\n">();
  }
  const laminate::OpenForm form(out);
  out.Print<"(footprintRef \"%s\")\n">(m_sFootprintRef);
  if (!m_sBottomFootprint.IsEmpty()) out.Print<"(bottomFootprint \"%s\")\n">(m_sBottomFootprint);
  out.Print<"(spec \"%s\")\n">(m_sSpec);
}

int CVRXoutPackageMountForm::nPrint2File(FILE* fp, int nIndex) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, nIndex); });
}

CVRXoutPackage::CVRXoutPackage() { laminate::MakeOwned(m_pMountFormArray); }
CVRXoutPackage::CVRXoutPackage(const CVRXoutPackage& source) : CVRXoutPackage() { *this = source; }
CVRXoutPackage& CVRXoutPackage::operator=(const CVRXoutPackage& source) {
  laminate::CopyRecord(*this, source);
  return *this;
}
CVRXoutPackage::~CVRXoutPackage() { delete m_pMountFormArray; }
void CVRXoutPackage::Serialize(CArchive& ar) { laminate::SerializeRecord(ar, *this); }
CVRXoutPackage* CVRXoutPackage::clone() const { return new CVRXoutPackage(*this); }
int CVRXoutPackage::operator==(const CVRXoutPackage& other) const { return laminate::EqualRecords(*this, other); }

void CVRXoutPackage::Write(laminate::TextOut& out) const {
  const CVRXoutPackageMountFormArray& mountForms = laminate::Required(m_pMountFormArray);
  const laminate::OpenForm form = laminate::Form<"(package \"%s\"\n">(out, m_sName);
  // The test for emptiness is of the name: an empty type under a name leaves a blank before the bracket.
  if (m_sName.IsEmpty() || m_sType == "user-defined") {
    out.Print<"(type UNDEF)\n">();
  } else {
    out.Print<"(type %s)\n">(m_sType);
  }
  out.Print<"(uver %d)\n">(m_nUver);
  int nIndex = 0;
  for (const CVRXoutPackageMountForm* pForm : mountForms) {
    if (pForm != nullptr) pForm->Write(out, nIndex++);
  }
}

int CVRXoutPackage::nPrint2File(FILE* fp) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out); });
}

CVRXoutPackageMountForm* CVRXoutPackage::pGetOutPackageMountFormWithSolderSpec(CString sSpec) const {
  return laminate::FindFirst(laminate::Required(m_pMountFormArray), &CVRXoutPackageMountForm::m_sSpec, sSpec);
}

void CVRXoutPackage::vFindSpecWithNameAndNoneCaseRegister(CString sSpec) {
  if (pGetOutPackageMountFormWithSolderSpec(sSpec) != nullptr) return;
  auto pForm = std::make_unique<CVRXoutPackageMountForm>();
  pForm->m_sSpec = sSpec;
  laminate::AppendOwned(*m_pMountFormArray, std::move(pForm));
}
