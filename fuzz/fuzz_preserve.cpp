// A board of any bytes that loads, edited in any way: what is saved over its text reads back as the edited board, or
// the save is refused, and the refusal says why. An unedited board keeps every byte. The edits, four bytes each,
// stand behind their number and before the board.
#include <array>

#include "base/CException.h"
#include "board/CBDtextSize.h"
#include "fuzz/FuzzSupport.h"
#include "save/PreserveTestSupport.h"

namespace {

using laminate::fuzz::Input;
using laminate::fuzz::Require;
using laminate::test::ReadsAs;

constexpr std::array<const char*, 8> kNames{"N1", "GND", "A B", "", "x\"y", "a\\", "(p)", "\x95\\"};
constexpr std::array<double, 8> kNumbers{0, 1, -1, 0.1, 12.345678, 1e9, -90, 1.0 / 3};

class Edits {
  template <class Array>
  auto* One(Array* pArray) const {
    return pArray->GetAt(pArray->IsEmpty() ? 0 : m_nWhich % pArray->GetSize());
  }
  template <class Array>
  void Remove(Array* pArray) const {
    if (!pArray->IsEmpty()) pArray->DeleteAt(static_cast<int>(m_nWhich % pArray->GetSize()), 1);
  }
  template <class Array, class X>
  X* Add(Array* pArray, X* p) const {
    pArray->InsertAt(m_nSecond % (pArray->GetSize() + 1), p);
    return p;
  }
  template <class Array>
  void Swap(Array* pArray) const {
    if (pArray->IsEmpty()) return;
    std::swap(pArray->ElementAt(m_nWhich % pArray->GetSize()), pArray->ElementAt(m_nSecond % pArray->GetSize()));
  }

 public:
  Edits(CBDboardContainer& board, CBDparameter& parameter) : m_board(board), m_parameter(parameter) {}

  void Next(Input& input) {
    const unsigned nKind = input.Byte();
    m_nWhich = input.Byte();
    const unsigned nValue = input.Byte();
    m_nSecond = input.Byte();
    const CString sName = kNames[nValue % kNames.size()];
    const double d = kNumbers[nValue % kNumbers.size()];
    switch (nKind % 20) {
      case 0:
        if (auto* p = One(m_board.m_pNetArray)) p->m_sName = sName;
        break;
      case 1:
        return Remove(m_board.m_pNetArray);
      case 2:
        return Add(m_board.m_pNetArray, new CBDnet)->m_sName = sName, void();
      case 3:
        return Swap(m_board.m_pNetArray);
      case 4:
        if (auto* p = One(m_board.m_pComponentArray)) p->m_ptLocation = CPointD(d, -d);
        break;
      case 5:
        if (auto* p = One(m_board.m_pComponentArray)) p->m_sReference = sName;
        break;
      case 6:
        if (auto* p = One(m_board.m_pComponentArray)) p->m_dAngle = d;
        break;
      case 7:
        return Remove(m_board.m_pComponentArray);
      case 8:
        return Add(m_board.m_pComponentArray, new CBDcomponent)->m_sReference = sName, void();
      case 9:
        return Swap(m_board.m_pComponentArray);
      case 10:
        if (auto* p = One(m_board.m_pDrawObjArray)) p->m_sNet = sName;
        break;
      case 11:
        return Remove(m_board.m_pDrawObjArray);
      case 12:
        if (const auto* p = One(m_board.m_pDrawObjArray)) Add(m_board.m_pDrawObjArray, p->pCopy());
        break;
      case 13:
        return Swap(m_board.m_pDrawObjArray);
      case 14:
        if (auto* p = One(m_board.m_pDrawObjArray)) p->vMoveRotate(d, 1, 0, "A");
        break;
      case 15:
        if (const auto* p = One(m_board.m_pComponentArray)) Remove(p->m_pDrawObjArray);
        break;
      case 16:
        if (const auto* p = One(m_board.m_pComponentArray)) Remove(p->m_pPinArray);
        break;
      case 17:
        if (const auto* p = One(m_board.m_pNetArray)) Remove(p->m_pRefPinArray);
        break;
      case 18:
        return Remove(m_board.m_pCompGroupArray);
      default:
        return Remove(m_parameter.m_pTextSizeArray);
    }
  }

 private:
  CBDboardContainer& m_board;
  CBDparameter& m_parameter;
  INT_PTR m_nWhich = 0;
  INT_PTR m_nSecond = 0;
};

// A reading of the text; false when it does not load.
bool Read(laminate::SourceDesign& design, std::string_view text) {
  try {
    return design.ReadBoardFile(text);
  } catch (const CInvalidArgException&) {
    return false;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
  Input input(pData, nSize);
  const unsigned nEdits = input.Byte() % 8;
  std::string sEdits;
  for (unsigned i = 0; i < 4 * nEdits; ++i) sEdits += static_cast<char>(input.Byte());
  const laminate::HeldText text{input.Rest()};
  laminate::SourceDesign edited;
  laminate::SourceDesign source;
  if (!Read(edited, text.View()) || !Read(source, text.View())) return 0;
  const laminate::OwnedDesign& design = edited.Design();
  Edits edits(*design.pBoard, *design.pParameter);
  Input bytes(reinterpret_cast<const std::uint8_t*>(sEdits.data()), sEdits.size());
  for (unsigned i = 0; i < nEdits; ++i) edits.Next(bytes);
  laminate::SaveLosses losses;
  std::string sSaved;
  try {
    sSaved = laminate::PreservedBoard(design.View(), source, text.View(), losses).Text();
  } catch (const CInvalidArgException& e) {
    // Sections may stand where an edit finds no place for what is new. Nothing is written then.
    Require(nEdits != 0 && std::string_view(e.what()).find("does not read back") != std::string_view::npos);
    return 0;
  }
  for (const laminate::SaveLoss& loss : losses.Refused()) Require(!loss.name.empty() && !loss.reason.empty());
  if (losses.IsRefused()) return 0;
  if (nEdits == 0) laminate::fuzz::RequireSame(std::string_view(sSaved), text.View());
  Require(ReadsAs(sSaved, design));
  return 0;
}
