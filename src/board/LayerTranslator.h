#pragma once

class CBDboardContainer;
class CECadClsLvl;

namespace laminate {

/// Reads one "layer" form of the board layout and appends its shapes to the board. A form with "drawOf" or "infoOf" for
/// its layer gives none. Always 0. A value that the form needs and lacks, or a null node, raises
/// `CInvalidArgException`; the shapes before it stay.
int ReadBoardLayer(const CECadClsLvl* pNode, CBDboardContainer& board);

}  // namespace laminate
