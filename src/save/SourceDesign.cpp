#include "save/SourceDesign.h"

#include <utility>

#include "base/CException.h"
#include "base/FileSystem.h"
#include "base/HostInterface.h"
#include "board/CBDboardContainer.h"
#include "board/CBDcomponent.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDparameter.h"
#include "board/ComponentTranslator.h"
#include "board/LayerTranslator.h"
#include "board/OthersTranslator.h"
#include "drawobj/CBDdrawObj.h"
#include "reader/CECadCls.h"
#include "reader/LineReader.h"
#include "reader/TextParse.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDtechnologyContainer.h"
#include "technology/FootprintFileLoad.h"

namespace laminate {

HeldText::HeldText(std::string s) : m_s(std::move(s)) { Pad(); }

int HeldText::Read(const CString& sPath) {
  m_s.clear();
  const int nError = ReadWholeFile(sPath, m_s);
  Pad();
  return nError;
}

std::string HeldText::Take() {
  m_s.resize(std::exchange(m_nSize, 0));
  return std::move(m_s);
}

void HeldText::Pad() {
  m_nSize = m_s.size();
  m_s.append(LineReader::kPadding, '\0');
}

OwnedDesign::OwnedDesign()
    : sVersion("2.0"),
      pTechnology(new CBDtechnologyContainer),
      pFtfTechnology(new CBDtechnologyContainer),
      pFootprints(new CBDfootprintContainer),
      pBoard(new CBDboardContainer),
      pParameter(new CBDparameter),
      pLibraryEntities(new CBDlibraryEntities) {}
OwnedDesign::~OwnedDesign() = default;

SavedDesign OwnedDesign::View() const {
  return {&sVersion,    pTechnology.get(), pFtfTechnology.get(),  pFootprints.get(),
          pBoard.get(), pParameter.get(),  pLibraryEntities.get()};
}

namespace {

// The boxes were shown when the host loaded the files.
class Silence : public CHostInterface {
 public:
  Silence() : m_scope(*this) {}
  int OnAfxMessageBox(const CString&, UINT, UINT) override { return IDOK; }
  int OnMessageBox(HWND, const CString&, const CString&, UINT) override { return IDOK; }

 private:
  CHostInterfaceScope m_scope;
};

void TakeOver(LoadStatus& status, const LoadStatus& other) {
  status.Set(other.m_result, other.m_sFile, other.m_nLine, other.m_nColumn, other.m_sText);
}

// Parses a piece and hands the reader on; a piece that is not well formed is told.
template <class Translate>
void ReadPiece(std::string_view text, LoadStatus& status, Translate translate) {
  CECadCls reader;
  ParseText(reader, text);
  TakeOver(status, reader.m_status);
  translate(reader);
}

const CECadClsLvl* FirstForm(const CECadCls& reader) { return reader.m_pRootArray->GetAt(0); }

// What a translator raises says where the text is at fault.
template <class Read>
bool Watch(LoadStatus& status, Read read) {
  const Silence silence;
  try {
    read();
  } catch (const CInvalidArgException& e) {
    status.Set(LoadStatus::Result::invalidContent, {}, e.m_nLine, 0, e.what());
  }
  return status.IsOk();
}

void ReadOthersOf(CECadCls* pReader, OwnedDesign& design, LoadStatus& status) {
  OthersTarget target{design.sVersion, design.pTechnology.get(), design.pBoard.get(), design.pParameter.get(),
                      design.pLibraryEntities.get()};
  if (ReadOthers(pReader, target) != 0) {
    status.Set(LoadStatus::Result::notWellFormed, {}, 0, 0, "the file has no form that is the root of a board");
  }
}

// The translator may delete the reader.
void ReadOthersPiece(std::string_view text, OwnedDesign& design, LoadStatus& status) {
  auto pReader = std::make_unique<CECadCls>();
  ParseText(*pReader, text);
  TakeOver(status, pReader->m_status);
  if (!status.IsOk()) return;
  ReadOthersOf(pReader.get(), design, status);
  if (!status.IsOk()) static_cast<void>(pReader.release());
}

template <class Array, class Read>
std::vector<PieceObjects> ReadPieces(const std::vector<TextPiece>& pieces, const Array& array, LoadStatus& status,
                                     Read read) {
  std::vector<PieceObjects> objects;
  objects.reserve(pieces.size());
  std::string sJoined;
  for (const TextPiece& piece : pieces) {
    const auto nBegin = static_cast<std::size_t>(array.GetSize());
    ReadPiece(piece.Text(sJoined), status, [&](const CECadCls& reader) {
      if (const CECadClsLvl* pForm = FirstForm(reader)) read(pForm);
    });
    objects.push_back({nBegin, static_cast<std::size_t>(array.GetSize())});
  }
  return objects;
}

}  // namespace

bool SourceDesign::ReadFootprintFile(std::string_view text) {
  return Watch(m_status, [&] {
    ReadPiece(text, m_status, [&](const CECadCls& reader) {
      FootprintFileTarget target{*m_design.pFtfTechnology, *m_design.pFootprints,
                                 [this] { return m_design.pBoard->m_pDrawObjArray; }, nullptr, m_status};
      laminate::ReadFootprintFile(reader, target);
    });
  });
}

bool SourceDesign::ReadBoardFile(std::string_view text) {
  m_pieces = CutBoardText(text);
  CBDboardContainer& board = *m_design.pBoard;
  return Watch(m_status, [&] {
    std::string sJoined;
    ReadOthersPiece(m_pieces.others.Text(sJoined), m_design, m_status);
    if (!m_status.IsOk()) return;
    m_components = ReadPieces(m_pieces.components, *board.m_pComponentArray, m_status,
                              [&](const CECadClsLvl* pForm) { ReadComponent(pForm, board); });
    m_layers = ReadPieces(m_pieces.layers, *board.m_pDrawObjArray, m_status,
                          [&](const CECadClsLvl* pForm) { ReadBoardLayer(pForm, board); });
  });
}

bool ReadOthersText(std::string_view text, OwnedDesign& design) {
  LoadStatus status;
  return Watch(status, [&] { ReadOthersPiece(text, design, status); });
}

namespace {

template <class Read>
bool ReadFirstForm(std::string_view text, Read read) {
  LoadStatus status;
  bool bRead = false;
  return Watch(status,
               [&] {
                 ReadPiece(text, status, [&](const CECadCls& reader) {
                   const CECadClsLvl* pForm = FirstForm(reader);
                   bRead = pForm != nullptr;
                   if (bRead) read(pForm);
                 });
               }) &&
         bRead;
}

}  // namespace

bool ReadComponentText(std::string_view text, OwnedDesign& design) {
  return ReadFirstForm(text, [&](const CECadClsLvl* pForm) { ReadComponent(pForm, *design.pBoard); });
}

bool ReadLayerText(std::string_view text, OwnedDesign& design) {
  return ReadFirstForm(text, [&](const CECadClsLvl* pForm) { ReadBoardLayer(pForm, *design.pBoard); });
}

bool ReadFootprintText(std::string_view text, OwnedDesign& design) {
  LoadStatus status;
  return Watch(status, [&] {
    ReadPiece(text, status, [&](const CECadCls& reader) {
      FootprintFileTarget target{*design.pFtfTechnology, *design.pFootprints,
                                 [&] { return design.pBoard->m_pDrawObjArray; }, nullptr, status};
      ReadFootprintFile(reader, target);
    });
  });
}

}  // namespace laminate
