#pragma once
#include "base/LoadStatus.h"

class CECadCls;
class CPC_BD_OutClsGet;

namespace laminate {

/// Reads a parsed rule file into the facade. Raises `CInvalidArgException` where a form lacks a value or form that it
/// needs; what was appended by then stays. Unknown forms are skipped, and told to `pDiagnostics` if there is one.
void ReadRuleFile(CPC_BD_OutClsGet& data, const CECadCls& reader, Diagnostics* pDiagnostics);

}  // namespace laminate
