#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "save/Alignment.h"
#include "save/FormPatch.h"
#include "save/FreshForms.h"
#include "save/SaveLosses.h"
#include "save/SourceDesign.h"
#include "save/SourceEdits.h"

namespace laminate {

/// The text of a board file in which a design is saved: that of its source, changed where the design has changed.
class PreservedBoard {
 public:
  /// `source` has read `text`. All arguments must outlive this object.
  PreservedBoard(const SavedDesign& design, const SourceDesign& source, std::string_view text, SaveLosses& losses);
  ~PreservedBoard();
  PreservedBoard(const PreservedBoard&) = delete;
  PreservedBoard& operator=(const PreservedBoard&) = delete;

  /// The text, which reads back as the design; without meaning where the losses have come to hold a refusal. Raises
  /// `CInvalidArgException` where no change of the source gives the design.
  std::string Text();

 private:
  struct LayerPiece;

  void EditRecords();
  void EditComponents();
  void ChangeComponent(std::size_t i, std::size_t j);
  void AddComponents(const AlignedStep* pBefore, const AlignedStep* pBehind, std::size_t jBegin, std::size_t jEnd);
  void EditShapes();
  void ChangeShape(std::size_t i, std::size_t j);
  void AddSection(const std::string& sText);
  void Verify(const HeldText& text) const;

  const TextPiece& PieceOfComponent(std::size_t i) const;
  FormRange PlaceOfComponent(std::size_t i, const char*& begin, const char*& end) const;
  LayerPiece& PieceOfShape(std::size_t i);
  std::string WriteComponent(const CBDcomponent& component, std::size_t n, SaveLosses& losses) const;

  const SavedDesign& m_design;
  const SourceDesign& m_source;
  const SavedDesign m_old;  // what the source says
  SaveLosses& m_losses;
  SourceEdits m_edits;
  bool m_bSameRecords = false;
  std::vector<std::size_t> m_pieceOfComponent;
  std::vector<AlignedStep> m_componentSteps;
  std::unordered_multimap<std::uint64_t, std::size_t> m_removedComponents;  // by content
  std::vector<AlignedStep> m_shapeSteps;
  std::vector<std::unique_ptr<LayerPiece>> m_layerPieces;
};

}  // namespace laminate
