#pragma once

class CBDboardContainer;
class CECadClsLvl;

namespace laminate {

/// Reads one "component" form and appends the component to the board. Always 0. A value that the form needs and lacks,
/// or a null node, raises `CInvalidArgException`, and no component is appended then. Shapes inside board assemblies go
/// to the board's own; those that stood before the fault stay there.
int ReadComponent(const CECadClsLvl* pNode, CBDboardContainer& board);

}  // namespace laminate
