#include "export/CompanionFiles.h"

#include <string_view>
#include <unordered_map>

#include "base/WriterText.h"

namespace laminate {
namespace {

// The first part for each pin assign. The names that it views do not change while the file is written.
using PartsByPinAssign = std::unordered_map<std::string_view, CVRXoutPrfPart*>;

PartsByPinAssign FindParts(const CVRXoutPrfPartArray* pParts) {
  PartsByPinAssign parts;
  if (pParts == nullptr) return parts;
  for (CVRXoutPrfPart* pPart : *pParts) {
    if (pPart != nullptr) parts.try_emplace(pPart->m_sPinAssignRef.View(), pPart);
  }
  return parts;
}

void WriteFunction(TextOut& out, const CVRXoutPrfFunction& function) {
  out.Print<"(function \"%s\"\n">(function.m_sName);
  out.Print<"(uver %d)\n">(function.m_nUver);
  out.Print<"(interface\n">();
  if (function.m_pPortArray != nullptr) {
    for (const CVRXoutPrfFunctionPort* pPort : *function.m_pPortArray) {
      if (pPort == nullptr) continue;
      if (!pPort->m_sPortType.IsEmpty()) {
        out.Print<"(port \"%s\" (symbPinId %d) (portType %s))\n">(pPort->m_sPortNo, pPort->m_nSymbPinId,
                                                                  pPort->m_sPortType);
      } else {
        out.Print<"(port \"%s\" (symbPinId %d))\n">(pPort->m_sPortNo, pPort->m_nSymbPinId);
      }
    }
  }
  out.Print<")\n)\n\n">();
}

void WritePartPorts(TextOut& out, const CVRXoutPrfPart& part) {
  if (part.m_pPortArray == nullptr) return;
  for (CVRXoutPrfPartPort* pPort : *part.m_pPortArray) {
    if (pPort == nullptr) continue;
    DoublePercents(pPort->m_sPortName);
    if (pPort->m_sPortType.IsEmpty()) pPort->m_sPortType = "INOUT";
    out.Print<"(port \"%s\" (symbPinId %d) (portName \"%s\") (portType %s))\n">(pPort->m_sPortNo, pPort->m_nSymbPinId,
                                                                                pPort->m_sPortName, pPort->m_sPortType);
  }
}

void WriteFunctionInstance(TextOut& out, const CVRXoutPrfPinAssignFuncInst& instance) {
  const auto form = Form<"(funcInst (functionRef \"%s\")\n">(out, instance.m_sFunctionRef);
  if (instance.m_pPortArray == nullptr) return;
  for (CVRXoutPrfPinAssignFuncInstPort* pPort : *instance.m_pPortArray) {
    if (pPort == nullptr) continue;
    DoublePercents(pPort->m_sPortNo);
    out.Print<"(port \"%s\" (match \"%s\"))\n">(pPort->m_sPortNo, pPort->m_sMatch);
  }
}

void WritePinAssign(TextOut& out, const CVRXoutPrfPinAssign& pinAssign, const PartsByPinAssign& parts) {
  out.Print<"(pinAssign \"%s\"\n">(pinAssign.m_sName);
  out.Print<"(uver %d)\n">(pinAssign.m_nUver);
  {
    const auto form = Form<"(interface\n">(out);
    const auto it = parts.find(pinAssign.m_sName.View());
    if (it != parts.end()) WritePartPorts(out, *it->second);
  }
  out.Print<"(internal\n">();
  if (pinAssign.m_pFuncInstArray != nullptr) {
    for (const CVRXoutPrfPinAssignFuncInst* pInstance : *pinAssign.m_pFuncInstArray) {
      if (pInstance != nullptr) WriteFunctionInstance(out, *pInstance);
    }
  }
  out.Print<")\n)\n\n">();
}

}  // namespace

void WritePackageFile(TextOut& out, const CVRXoutPackageArray& packages) {
  out.Print<"(Japanese_coding: sjis)\n">();
  out.Print<"(unit mm)\n">();
  out.Print<"\n">();
  for (const CVRXoutPackage* pPackage : packages) {
    if (pPackage == nullptr) continue;
    pPackage->Write(out);
    out.Print<"\n">();
  }
}

void WriteComponentDefinitionFile(TextOut& out, CVRXoutPrfPartArray* pParts, CVRXoutPrfPinAssignArray* pPinAssigns,
                                  CVRXoutPrfFunctionArray* pFunctions) {
  out.Print<"(Japanese_coding: sjis)\n">();
  if (pFunctions != nullptr) {
    for (const CVRXoutPrfFunction* pFunction : *pFunctions) {
      if (pFunction != nullptr) WriteFunction(out, *pFunction);
    }
  }
  if (pPinAssigns != nullptr) {
    const PartsByPinAssign parts = FindParts(pParts);
    for (const CVRXoutPrfPinAssign* pPinAssign : *pPinAssigns) {
      if (pPinAssign != nullptr) WritePinAssign(out, *pPinAssign, parts);
    }
  }
  if (pParts != nullptr) {
    for (CVRXoutPrfPart* pPart : *pParts) {
      if (pPart == nullptr) continue;
      pPart->Write(out);
      out.Print<"\n">();
    }
  }
}

}  // namespace laminate
