#pragma once
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "save/Alignment.h"
#include "save/FormTree.h"
#include "save/SourceEdits.h"

class CBDdrawObj;

namespace laminate {

/// How forms that come into a source are laid out: as those beside them.
struct FormLayout {
  std::string_view sIndent = {};  ///< before every line but the first
  std::string_view sStep = {};    ///< once more for every form that is open
  std::string_view sLineEnd = "\n";
};

/// The text of a form on lines of its own, the first one not indented and the last one without an end.
std::string RenderForm(const FormTree& tree, const FormNode& form, const FormLayout& layout);

/// A shape in a form that holds layers.
struct LayerItem {
  const FormNode* pLayer = nullptr;
  const FormNode* pItem = nullptr;   ///< the shape, or the "refer" around it
  const FormNode* pShape = nullptr;  ///< the same as the item where there is no "refer"
};
/// Appends the shapes of a layer form in the order of the objects that they become. False where a "refer" does not hold
/// exactly one.
bool CollectLayerItems(const FormNode& layer, std::vector<LayerItem>& items);
/// True for the keywords by which a layer form names its layer.
bool NamesAnyLayer(std::string_view sKeyword);

/// Where a shape stands in a source.
struct PlacedItem {
  const char* layerBegin;
  const char* layerEnd;
  const char* itemBegin;
  const char* itemEnd;
  std::size_t nInLayer;  ///< shapes in the layer form
  bool bNothingElse;     ///< the layer form holds nothing but its name and them
};

/// Shapes in layers that have become others; who knows them says what is where. `i` is a shape of the source, `j` one
/// that is wanted.
struct LayerChange {
  std::function<PlacedItem(std::size_t i)> old;
  std::function<bool(std::size_t j, std::size_t k)> sameLayer;
  std::function<void(std::size_t i, std::size_t j)> change;
  std::function<std::string(std::size_t j, const FormLayout&)> item;
  /// A layer form with the wanted shapes from `j` up to `k`.
  std::function<std::string(std::size_t j, std::size_t k, const FormLayout&)> layer;
  /// The beginning of the layer form of a wanted shape, up to its first shape.
  std::function<std::string(std::size_t j)> head;
};

/// Makes the edits of such a change. False where there is no layer form to go by.
bool EditLayers(SourceEdits& edits, const std::vector<AlignedStep>& steps, const LayerChange& change);

/// Changes a form of a source into what is wanted, touching as little of it as can be. Three readings of it are held
/// against one another: the source as it stands; the same as this library writes it; and as it writes what is wanted.
/// What differs between the last two is looked up in the first by keyword and order.
///
/// The result need not be right where the source says things twice or in unusual ways; whoever patches reads it back,
/// and marks in the wanted forms what is to be written whole (`MarkDifferences`) until it is.
class FormPatch {
 public:
  /// `at` tells where an offset of the source forms' text stands in the text that the edits change.
  FormPatch(SourceEdits& edits, const FormTree& source, std::function<const char*(std::size_t)> at, FormTree& wanted);

  /// False when not even writing the form whole can do it.
  bool Patch(const FormNode& source, const FormNode& written, FormNode& wanted);

 private:
  bool PatchInside(const FormNode& source, const FormNode& written, FormNode& wanted);
  bool PatchHead(const FormNode& source, const FormNode& written, const FormNode& wanted);
  bool PatchChildren(const FormNode& source, const FormNode& written, FormNode& wanted);
  bool PatchLayout(const FormNode& source, const FormNode& written, FormNode& wanted);
  void WriteWhole(const FormNode& source, FormNode& wanted);
  // The forms in it; where the library writes a shape's geometry without forms of their own, also those in these.
  static std::vector<const FormNode*> ChildrenOf(const FormNode& source, const FormNode& written);
  // For each form that the library writes, the one of the source that says it, or null.
  static std::vector<const FormNode*> MapChildren(const std::vector<const FormNode*>& source, const FormNode& written);
  FormLayout LayoutOf(const FormNode& source) const;
  const char* BeginOf(const FormNode& form) const { return m_at(form.range.nBegin); }
  // Behind the closing bracket.
  const char* EndOf(const FormNode& form) const { return m_at(form.range.nEnd - 1) + 1; }

  SourceEdits& m_edits;
  const FormTree& m_source;
  const std::function<const char*(std::size_t)> m_at;
  FormTree& m_wanted;
  bool m_bPossible = true;
};

/// Marks the forms of what is wanted that a patched text, read and written again, does not give. True when one that is
/// marked already is not given either.
bool MarkDifferences(const FormNode& got, FormNode& wanted);

/// Patches the source form of `patch` until it reads back: `readBack` gives what the edited text becomes when it is
/// read and written again, and nothing when it cannot be read. False when it never gives what is wanted.
bool PatchUntilItReadsBack(SourceEdits& edits, const FormTree& source, const FormNode& sourceForm,
                           const std::function<const char*(std::size_t)>& at, std::string_view written,
                           std::string_view wanted, const std::function<std::optional<std::string>()>& readBack);

}  // namespace laminate
