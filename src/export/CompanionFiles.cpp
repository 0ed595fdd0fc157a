#include "export/CompanionFiles.h"

#include <map>
#include <string_view>

#include "base/WriterText.h"

namespace laminate {
namespace {

// The first part for each pin assign. The names that it views do not change while the file is written. They are kept in
// order, for a file may choose them so that those of a hash table collide.
using PartsByPinAssign = std::map<std::string_view, CVRXoutPrfPart*>;

PartsByPinAssign FindParts(const CVRXoutPrfPartArray* pParts) {
  PartsByPinAssign parts;
  if (pParts == nullptr) return parts;
  for (CVRXoutPrfPart* pPart : *pParts) {
    if (pPart == nullptr) continue;
    WithPlatformFailures([&] { parts.try_emplace(pPart->m_sPinAssignRef.View(), pPart); });
  }
  return parts;
}

void WriteFunction(TextOut& out, const CVRXoutPrfFunction& function) {
  const auto form = Form<"(function \"%s\"\n">(out, function.m_sName);
  out.Print<"(uver %d)\n">(function.m_nUver);
  const auto interface = Form<"(interface\n">(out);
  for (const CVRXoutPrfFunctionPort* pPort : Required(function.m_pPortArray)) {
    if (pPort == nullptr) continue;
    if (!pPort->m_sPortType.IsEmpty()) {
      out.Print<"(port \"%s\" (symbPinId %d) (portType %s))\n">(pPort->m_sPortNo, pPort->m_nSymbPinId,
                                                                pPort->m_sPortType);
    } else {
      out.Print<"(port \"%s\" (symbPinId %d))\n">(pPort->m_sPortNo, pPort->m_nSymbPinId);
    }
  }
}

void WritePartPorts(TextOut& out, const CVRXoutPrfPart& part) {
  for (CVRXoutPrfPartPort* pPort : Required(part.m_pPortArray)) {
    if (pPort == nullptr) continue;
    DoublePercents(pPort->m_sPortName);
    if (pPort->m_sPortType.IsEmpty()) pPort->m_sPortType = "INOUT";
    pPort->Write(out);
  }
}

void WriteFunctionInstance(TextOut& out, const CVRXoutPrfPinAssignFuncInst& instance) {
  const auto form = Form<"(funcInst (functionRef \"%s\")\n">(out, instance.m_sFunctionRef);
  for (CVRXoutPrfPinAssignFuncInstPort* pPort : Required(instance.m_pPortArray)) {
    if (pPort == nullptr) continue;
    DoublePercents(pPort->m_sPortNo);
    out.Print<"(port \"%s\" (match \"%s\"))\n">(pPort->m_sPortNo, pPort->m_sMatch);
  }
}

void WritePinAssign(TextOut& out, const CVRXoutPrfPinAssign& pinAssign, const PartsByPinAssign& parts) {
  const auto form = Form<"(pinAssign \"%s\"\n">(out, pinAssign.m_sName);
  out.Print<"(uver %d)\n">(pinAssign.m_nUver);
  {
    const auto interface = Form<"(interface\n">(out);
    const auto it = parts.find(pinAssign.m_sName.View());
    if (it != parts.end()) WritePartPorts(out, *it->second);
  }
  const auto internal = Form<"(internal\n">(out);
  for (const CVRXoutPrfPinAssignFuncInst* pInstance : Required(pinAssign.m_pFuncInstArray)) {
    if (pInstance != nullptr) WriteFunctionInstance(out, *pInstance);
  }
}

// Each record is followed by an empty line. A null array is an empty one.
template <class Array, class Writer>
void WriteRecords(TextOut& out, const Array* pArray, Writer&& write) {
  if (pArray == nullptr) return;
  for (auto* p : *pArray) {
    if (p == nullptr) continue;
    write(*p);
    out.Print<"\n">();
  }
}

}  // namespace

void WritePackageFile(TextOut& out, const CVRXoutPackageArray& packages) {
  out.Print<"(Japanese_coding: sjis)\n">();
  out.Print<"(unit mm)\n">();
  out.Print<"\n">();
  WriteRecords(out, &packages, [&](const CVRXoutPackage& package) { package.Write(out); });
}

void WriteComponentDefinitionFile(TextOut& out, CVRXoutPrfPartArray* pParts, CVRXoutPrfPinAssignArray* pPinAssigns,
                                  CVRXoutPrfFunctionArray* pFunctions) {
  out.Print<"(Japanese_coding: sjis)\n">();
  WriteRecords(out, pFunctions, [&](const CVRXoutPrfFunction& function) { WriteFunction(out, function); });
  const PartsByPinAssign parts = FindParts(pParts);
  WriteRecords(out, pPinAssigns, [&](const CVRXoutPrfPinAssign& p) { WritePinAssign(out, p, parts); });
  WriteRecords(out, pParts, [&](CVRXoutPrfPart& part) { part.Write(out); });
}

}  // namespace laminate
