#pragma once

class CBDboardContainer;
class CECadClsLvl;

namespace laminate {

/// Reads one "layer" form of the board layout and appends its shapes to the board:
///   (layer HEADER? (ruleArea ...) ... (message ...) ... (info ...) ... (refer SHAPE ...) ... SHAPE ...)
/// in any order; HEADER as board/LayerForms.h tells. Rules, messages and infos are passed over, and of a "refer" the
/// first form counts. A form with "drawOf" or "infoOf" and no HEADER gives no shape. Always 0. A value that the form
/// needs and lacks, or a null node, raises `CInvalidArgException`; the shapes before it stay.
int ReadBoardLayer(const CECadClsLvl* pNode, CBDboardContainer& board);

}  // namespace laminate
