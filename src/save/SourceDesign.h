#pragma once
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/CString.h"
#include "base/LoadStatus.h"
#include "reader/BoardFileSplitter.h"
#include "save/FreshForms.h"

class CBDdrawObjArray;

namespace laminate {

/// A text that is parsed where it stands: the bytes behind it that the parse asks for are there.
class HeldText {
 public:
  HeldText() = default;
  explicit HeldText(std::string s);
  /// Reads a file; 0 or the negative `errno`.
  int Read(const CString& sPath);
  std::string_view View() const { return std::string_view(m_s).substr(0, m_nSize); }
  /// The text as it was given, which this object has no longer.
  std::string Take();

 private:
  void Pad();
  std::string m_s;
  std::size_t m_nSize = 0;
};

/// The database of a design that belongs to a save and not to a host.
class OwnedDesign {
 public:
  OwnedDesign();
  ~OwnedDesign();
  OwnedDesign(const OwnedDesign&) = delete;
  OwnedDesign& operator=(const OwnedDesign&) = delete;

  SavedDesign View() const;

  CString sVersion;
  std::unique_ptr<CBDtechnologyContainer> pTechnology;
  std::unique_ptr<CBDtechnologyContainer> pFtfTechnology;
  std::unique_ptr<CBDfootprintContainer> pFootprints;
  std::unique_ptr<CBDboardContainer> pBoard;
  std::unique_ptr<CBDparameter> pParameter;
  std::unique_ptr<CBDlibraryEntities> pLibraryEntities;
};

/// The objects of an array that came of one piece.
struct PieceObjects {
  std::size_t nBegin = 0;
  std::size_t nEnd = 0;
};

/// The texts of a design's files, read as a load reads them, but in memory, and with what came of each piece. Message
/// boxes are not shown again.
class SourceDesign {
 public:
  /// A load's order: footprints first. False when a load of these texts would not end well; the status tells.
  bool ReadFootprintFile(std::string_view text);
  bool ReadBoardFile(std::string_view text);

  const OwnedDesign& Design() const { return m_design; }
  const LoadStatus& Status() const { return m_status; }

  const BoardText& Pieces() const { return m_pieces; }
  /// By piece: what it made of components, and of the layout's shapes.
  const std::vector<PieceObjects>& Components() const { return m_components; }
  const std::vector<PieceObjects>& Layers() const { return m_layers; }

 private:
  OwnedDesign m_design;
  LoadStatus m_status;
  BoardText m_pieces;
  std::vector<PieceObjects> m_components;
  std::vector<PieceObjects> m_layers;
};

// ---- one piece at a time, for those who hold a text against an object ----
// Each gives false when the text does not become what it should, or raises as the translators do.

/// All that stands outside components and layout.
bool ReadOthersText(std::string_view text, OwnedDesign& design);
bool ReadComponentText(std::string_view text, OwnedDesign& design);
bool ReadLayerText(std::string_view text, OwnedDesign& design);
bool ReadFootprintText(std::string_view text, OwnedDesign& design);

}  // namespace laminate
