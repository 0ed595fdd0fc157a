#include "drawobj/CBDdrawObj.h"

#include <memory>

#include "base/HostInterface.h"
#include "base/TextOut.h"
#include "base/WriterText.h"
#include "drawobj/DrawObjFamily.h"
#include "drawobj/ShapeTools.h"

using laminate::FamilyRow;
using laminate::FindFamilyRow;

CBDdrawObj::CBDdrawObj() { m_sKind = "NONE"; }
CBDdrawObj::~CBDdrawObj() = default;

std::unique_ptr<CBDdrawObj> laminate::CopyDrawObj(const CBDdrawObj& shape) {
  const FamilyRow* pRow = FindFamilyRow(shape.m_sKind.View());
  if (pRow == nullptr || pRow->copy.act == nullptr) return nullptr;
  auto pCopy = pRow->copy.act(shape);
  if (pCopy == nullptr) return nullptr;
  pCopy->m_bRefer = shape.m_bRefer;
  pCopy->m_sLayerName = shape.m_sLayerName;
  pCopy->m_nLayerNumber = shape.m_nLayerNumber;
  pCopy->m_sLayerType = shape.m_sLayerType;
  pCopy->m_sNet = shape.m_sNet;
  pCopy->m_sPenShape = shape.m_sPenShape;
  return pCopy;
}

CBDdrawObj* CBDdrawObj::pCopy() const { return laminate::CopyDrawObj(*this).release(); }

int CBDdrawObj::nPrint2File(FILE* fp, int mode) {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { Write(out, mode); });
}

namespace {

// Doubles percent signs and puts a pair of quotes around a net name, in the object, each time that it is written.
void PrepareNet(CString& sNet) {
  if (sNet.IsEmpty()) return;
  // Apart, so that a failure between the two leaves the name whole.
  CString sPrepared = sNet;
  laminate::DoublePercents(sPrepared);
  laminate::Enquote(sPrepared);
  sNet = std::move(sPrepared);
}

void TellUnknownKind(const CString& sKind) {
  AfxMessageBox("You tried to MoveRotate() for UNKNOWN drawObj type - " + CString(sKind.CView()) + ".", MB_OK, 0);
}

}  // namespace

void CBDdrawObj::Write(laminate::TextOut& out, int nMode) {
  PrepareNet(m_sNet);
  const FamilyRow* pRow = FindFamilyRow(m_sKind.View());
  if (pRow != nullptr && pRow->print.act != nullptr) pRow->print.act(*this, out, nMode);
}

int CBDdrawObj::nPrint2Header2File(FILE* fp) const {
  return laminate::PrintTo(fp, [&](laminate::TextOut& out) { WriteHeader(out); });
}

void CBDdrawObj::WriteHeader(laminate::TextOut& out) const {
  const FamilyRow* pRow = FindFamilyRow(m_sKind.View());
  if (pRow != nullptr && pRow->header.act != nullptr) pRow->header.act(*this, out);
}

void CBDdrawObj::vMoveRotate(double dX, double dY, double dAngle, CString sSide) {
  const FamilyRow* pRow = FindFamilyRow(m_sKind.View());
  if (pRow != nullptr && pRow->move.act != nullptr && pRow->move.act(*this, dX, dY, dAngle, sSide)) return;
  TellUnknownKind(m_sKind);
}

void CBDdrawObj::vSetScale(double dScale) {
  const FamilyRow* pRow = FindFamilyRow(m_sKind.View());
  if (pRow != nullptr && pRow->scale.act != nullptr && pRow->scale.act(*this, dScale)) return;
  TellUnknownKind(m_sKind);
}

void CBDdrawObj::DeleteDrawObj(void* p) {
  auto* pShape = static_cast<CBDdrawObj*>(p);
  if (pShape == nullptr) return;
  const FamilyRow* pRow = FindFamilyRow(pShape->m_sKind.View());
  if (pRow != nullptr && pRow->remove.act != nullptr) pRow->remove.act(pShape);
}

void CBDdrawObj::DeleteDrawObjArray(void* p) {
  auto& shapes = laminate::Required(static_cast<CBDdrawObjArray*>(p));
  for (CBDdrawObj* pShape : shapes) DeleteDrawObj(pShape);
  shapes.SetSize(0, -1);
  delete &shapes;
}
