#include "save/PreservedBoard.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <typeinfo>
#include <unordered_map>
#include <utility>

#include "board/CBDboardContainer.h"
#include "board/CBDcompGroup.h"
#include "board/CBDcomponent.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDnet.h"
#include "board/CBDparameter.h"
#include "board/CBDsubBoard.h"
#include "drawobj/CBDdrawObj.h"
#include "save/Content.h"
#include "save/ReadBack.h"
#include "save/WrittenForms.h"
#include "technology/CBDtechnologyContainer.h"

namespace laminate {

namespace {

using Kind = AlignedStep::Kind;

constexpr int kComponentLevel = 3;  // "pcf", "boardContainer" and "components" are open
constexpr int kLayoutLevel = 4;     // "pcf", "boardContainer", "boardLayout" and "layout" are
constexpr int kLayerContent = kLayoutLevel + 1;

// A board without its components and shapes, which borrows the rest of another one.
class RecordsOf {
 public:
  explicit RecordsOf(const SavedDesign& design) : m_view(design) {
    const CBDboardContainer& board = *design.pBoard;
    m_own = {m_board.m_pCompGroupArray, m_board.m_pNetArray, m_board.m_pSubBoardArray};
    m_board.m_pCompGroupArray = board.m_pCompGroupArray;
    m_board.m_pNetArray = board.m_pNetArray;
    m_board.m_pSubBoardArray = board.m_pSubBoardArray;
    m_view.pBoard = &m_board;
    m_view.nLayers = 0;
  }
  ~RecordsOf() {
    m_board.m_pCompGroupArray = m_own.pGroups;
    m_board.m_pNetArray = m_own.pNets;
    m_board.m_pSubBoardArray = m_own.pSubBoards;
  }
  RecordsOf(const RecordsOf&) = delete;
  RecordsOf& operator=(const RecordsOf&) = delete;

  const SavedDesign& View() const { return m_view; }

 private:
  struct Own {
    CBDcompGroupArray* pGroups;
    CBDnetArray* pNets;
    CBDsubBoardArray* pSubBoards;
  };
  CBDboardContainer m_board;
  Own m_own;
  SavedDesign m_view;
};

std::string WriteRecords(const SavedDesign& design, SaveLosses& losses) {
  const RecordsOf records(design);
  return FormsAsText(losses, [&](FormText& text) { PutBoardFile(text, records.View()); });
}

// The root as the load finds it.
const FormNode* FindRoot(const FormTree& tree) {
  for (const std::string_view sName : {"pcf", "tcf", "pnf"}) {
    for (const FormNode& form : tree.Roots()) {
      if (form.Name() == sName) return &form;
    }
  }
  return nullptr;
}

const CBDcomponent& ComponentAt(const SavedDesign& design, std::size_t n) {
  const CBDcomponent* p = design.pBoard->m_pComponentArray->GetAt(static_cast<__int64>(n));
  if (p == nullptr) AfxThrowInvalidArgException();
  return *p;
}
const CBDdrawObj& ShapeAt(const SavedDesign& design, std::size_t n) {
  const CBDdrawObj* p = design.pBoard->m_pDrawObjArray->GetAt(static_cast<__int64>(n));
  if (p == nullptr) AfxThrowInvalidArgException();
  return *p;
}
template <class Array>
std::size_t SizeOf(const Array* pArray) {
  if (pArray == nullptr) AfxThrowInvalidArgException();
  return static_cast<std::size_t>(pArray->GetSize());
}

bool AreAllKept(const std::vector<AlignedStep>& steps) {
  return std::all_of(steps.begin(), steps.end(), [](const AlignedStep& step) { return step.kind == Kind::kept; });
}

bool StandInOneLayer(const CBDdrawObj& a, const CBDdrawObj& b) {
  return a.m_sLayerType == b.m_sLayerType && a.m_sLayerName == b.m_sLayerName && a.m_nLayerNumber == b.m_nLayerNumber;
}

std::string WriteShape(const CBDdrawObj& shape, std::size_t n, SaveLosses& losses) {
  return FormsAsText(
      losses,
      [&](FormText& text) {
        const FormText::Step board(text, "m_pBoardContainer");
        const FormText::Step step(text, "m_pDrawObjArray", {}, static_cast<INT_PTR>(n));
        PutShape(text, ShapePlace::layout, {shape.m_sLayerType, shape.m_sLayerName, shape.m_nLayerNumber}, shape);
      },
      kLayerContent);
}
std::string WriteLayer(std::span<CBDdrawObj* const> shapes, SaveLosses& losses) {
  return FormsAsText(
      losses, [&](FormText& text) { PutLayer(text, ShapePlace::layout, shapes); }, kLayoutLevel);
}

// A single form that was written, laid out as its neighbours are.
std::string LaidOut(const std::string& sForm, const FormLayout& layout) {
  const HeldText held{std::string(sForm)};
  const FormTree tree(held.View());
  if (tree.Roots().size() != 1) RaiseDoesNotReadBack(sForm);
  return RenderForm(tree, tree.Roots().front(), layout);
}

// The beginning of a layer form, up to its first shape.
std::string HeadOfLayer(const std::string& sLayer) {
  const HeldText held{std::string(sLayer)};
  const FormTree tree(held.View());
  if (tree.Roots().size() != 1) RaiseDoesNotReadBack(sLayer);
  const FormNode& layer = tree.Roots().front();
  std::string s = "(" + std::string(layer.Name());
  for (const FormNode& child : layer.children) {
    if (NamesAnyLayer(child.Name())) s += " " + std::string(tree.TextOf(child));
  }
  return s;
}

}  // namespace

// A layer of the source, with places.
struct PreservedBoard::LayerPiece {
  explicit LayerPiece(const TextPiece& p) : piece(p), tree(p.Text(sJoined)) {}

  const char* At(std::size_t n) const { return piece.Source(n); }
  const char* BeginOf(const FormNode& form) const { return At(form.range.nBegin); }
  const char* EndOf(const FormNode& form) const { return At(form.range.nEnd - 1) + 1; }
  // How many forms a layer has besides those that name it. Its items ask one after the other.
  std::size_t CountContent(const FormNode& layer) {
    if (pCounted != &layer) {
      pCounted = &layer;
      nContent =
          static_cast<std::size_t>(std::count_if(layer.children.begin(), layer.children.end(),
                                                 [](const FormNode& child) { return !NamesAnyLayer(child.Name()); }));
    }
    return nContent;
  }

  const TextPiece& piece;
  std::string sJoined;
  FormTree tree;
  std::vector<LayerItem> items;
  std::size_t nFirst = 0;  // the shape that the first item became

 private:
  const FormNode* pCounted = nullptr;
  std::size_t nContent = 0;
};

PreservedBoard::PreservedBoard(const SavedDesign& design, const SourceDesign& source, std::string_view text,
                               SaveLosses& losses)
    : m_design(design), m_source(source), m_old(source.Design().View()), m_losses(losses), m_edits(text) {
  for (std::size_t n = 0; n < source.Components().size(); ++n) {
    const PieceObjects& objects = source.Components()[n];
    m_pieceOfComponent.resize(objects.nEnd, n);
  }
  m_layerPieces.resize(source.Pieces().layers.size());
}
PreservedBoard::~PreservedBoard() = default;

std::string PreservedBoard::Text() {
  m_bSameRecords = HasSameRecords(m_old, m_design);
  if (!m_bSameRecords) EditRecords();
  EditComponents();
  EditShapes();
  if (m_losses.IsRefused()) return {};
  if (m_bSameRecords && AreAllKept(m_componentSteps) && AreAllKept(m_shapeSteps)) return std::string(m_edits.Text());
  HeldText text(m_edits.Apply());
  Verify(text);
  return text.Take();
}

// ---- all that stands outside components and layout ----

void PreservedBoard::EditRecords() {
  SaveLosses lossesBefore = m_losses;
  SaveLosses lossesNow = m_losses;
  const std::string sWritten = WriteRecords(m_old, lossesBefore);
  std::string sWanted = WriteRecords(m_design, lossesNow);
  TellNewLosses(lossesBefore, lossesNow, m_losses);
  if (m_losses.IsRefused()) return;

  const TextPiece& piece = m_source.Pieces().others;
  std::string sJoined;
  const FormTree tree(piece.Text(sJoined));
  const FormNode* pRoot = FindRoot(tree);
  if (pRoot == nullptr) RaiseDoesNotReadBack("the records of the board");
  const auto again = [this](std::string s) -> std::optional<std::string> {
    const HeldText held(std::move(s));
    const BoardText pieces = CutBoardText(held.View());
    std::string sOthers;
    OwnedDesign got;
    if (!ReadOthersText(pieces.others.Text(sOthers), got)) return std::nullopt;
    SaveLosses ignored = m_losses;
    return WriteRecords(got.View(), ignored);
  };
  LeaveOutLosses(m_losses, again, sWanted);
  const bool bDone = PatchUntilItReadsBack(
      m_edits, tree, *pRoot, [&piece](std::size_t n) { return piece.Source(n); }, sWritten, sWanted,
      [&] { return again(m_edits.Apply()); });
  if (!bDone) RaiseDoesNotReadBack("the records of the board");
}

// ---- components ----

const TextPiece& PreservedBoard::PieceOfComponent(std::size_t i) const {
  return m_source.Pieces().components[m_pieceOfComponent[i]];
}

FormRange PreservedBoard::PlaceOfComponent(std::size_t i, const char*& begin, const char*& end) const {
  const TextPiece& piece = PieceOfComponent(i);
  std::string sJoined;
  const FormTree tree(piece.Text(sJoined));
  if (tree.Roots().empty()) RaiseDoesNotReadBack("a component that is not well formed");
  const FormRange range = tree.Roots().front().range;
  begin = piece.Source(range.nBegin);
  end = piece.Source(range.nEnd - 1) + 1;
  return range;
}

std::string PreservedBoard::WriteComponent(const CBDcomponent& component, std::size_t n, SaveLosses& losses) const {
  return FormsAsText(
      losses,
      [&](FormText& text) {
        const FormText::Step board(text, "m_pBoardContainer");
        const FormText::Step step(text, "m_pComponentArray", component.m_sReference.View(), static_cast<INT_PTR>(n));
        Put(text, component);
      },
      kComponentLevel);
}

void PreservedBoard::EditComponents() {
  const auto old = [this](std::size_t i) -> const CBDcomponent& { return ComponentAt(m_old, i); };
  const auto now = [this](std::size_t j) -> const CBDcomponent& { return ComponentAt(m_design, j); };
  const std::hash<std::string_view> hash;
  // Changes of a component that is still the same part: its name, and with it a place or a text.
  constexpr int kFewDifferences = 3;
  Comparison comparison;
  comparison.nOld = SizeOf(m_old.pBoard->m_pComponentArray);
  comparison.nNew = SizeOf(m_design.pBoard->m_pComponentArray);
  comparison.same = [&](std::size_t i, std::size_t j) { return SameContent(old(i), now(j)); };
  comparison.oldHash = [&](std::size_t i) { return ContentHash(old(i)); };
  comparison.newHash = [&](std::size_t j) { return ContentHash(now(j)); };
  comparison.oldName = [&](std::size_t i) { return hash(old(i).m_sReference.View()); };
  comparison.newName = [&](std::size_t j) { return hash(now(j).m_sReference.View()); };
  comparison.akin = [&](std::size_t i, std::size_t j) { return CountDifferences(old(i), now(j)) <= kFewDifferences; };
  m_componentSteps = Align(comparison);

  for (const AlignedStep& step : m_componentSteps) {
    if (step.kind == Kind::removed) m_removedComponents.emplace(ContentHash(old(step.i)), step.i);
  }

  const auto isAdded = [](const AlignedStep& step) { return step.kind == Kind::added; };
  const auto stays = [](const AlignedStep& step) { return step.kind == Kind::kept || step.kind == Kind::changed; };
  const AlignedStep* pBefore = nullptr;
  for (auto it = m_componentSteps.begin(); it != m_componentSteps.end(); ++it) {
    if (it->kind == Kind::added) {
      const auto end = std::find_if_not(it, m_componentSteps.end(), isAdded);
      auto behind = std::find_if(end, m_componentSteps.end(), stays);
      // Where all that was there is gone, its place is still known.
      if (behind == m_componentSteps.end()) {
        behind = std::find_if_not(m_componentSteps.begin(), m_componentSteps.end(), isAdded);
      }
      AddComponents(pBefore, behind == m_componentSteps.end() ? nullptr : &*behind, it->j, (end - 1)->j + 1);
      it = end - 1;
      continue;
    }
    if (it->kind == Kind::changed) ChangeComponent(it->i, it->j);
    if (it->kind == Kind::removed) {
      const char* begin = nullptr;
      const char* end = nullptr;
      PlaceOfComponent(it->i, begin, end);
      m_edits.Remove(begin, end);
    }
    if (stays(*it)) pBefore = &*it;
  }
}

void PreservedBoard::ChangeComponent(std::size_t i, std::size_t j) {
  SaveLosses lossesBefore = m_losses;
  SaveLosses lossesNow = m_losses;
  const std::string sWritten = WriteComponent(ComponentAt(m_old, i), i, lossesBefore);
  std::string sWanted = WriteComponent(ComponentAt(m_design, j), j, lossesNow);
  TellNewLosses(lossesBefore, lossesNow, m_losses);
  if (m_losses.IsRefused()) return;

  const TextPiece& piece = PieceOfComponent(i);
  std::string sJoined;
  const FormTree tree(piece.Text(sJoined));
  const char* begin = nullptr;
  const char* end = nullptr;
  PlaceOfComponent(i, begin, end);
  const std::size_t nMark = m_edits.Mark();
  const auto again = [&](std::string s) -> std::optional<std::string> {
    const HeldText held(std::move(s));
    OwnedDesign got;
    if (!ReadComponentText(held.View(), got)) return std::nullopt;
    SaveLosses ignored = m_losses;
    return WriteComponent(ComponentAt(got.View(), 0), j, ignored);
  };
  LeaveOutLosses(m_losses, again, sWanted);
  const bool bDone = PatchUntilItReadsBack(
      m_edits, tree, tree.Roots().front(), [&piece](std::size_t n) { return piece.Source(n); }, sWritten, sWanted,
      [&] { return again(m_edits.Apply(begin, end, nMark)); });
  if (!bDone) RaiseDoesNotReadBack("component " + std::string(ComponentAt(m_design, j).m_sReference.View()));
}

void PreservedBoard::AddComponents(const AlignedStep* pBefore, const AlignedStep* pBehind, std::size_t jBegin,
                                   std::size_t jEnd) {
  const AlignedStep* pNeighbour = pBefore != nullptr ? pBefore : pBehind;
  const char* begin = nullptr;
  const char* end = nullptr;
  if (pNeighbour != nullptr) PlaceOfComponent(pNeighbour->i, begin, end);
  const FormLayout layout{begin == nullptr ? std::string_view() : m_edits.IndentAt(begin), {}, m_edits.LineEnd()};
  std::string sSection = "(components";
  for (std::size_t j = jBegin; j != jEnd; ++j) {
    const CBDcomponent& component = ComponentAt(m_design, j);
    // One that has only moved to another place of the order keeps its form.
    std::string sForm;
    const auto [moved, movedEnd] = m_removedComponents.equal_range(ContentHash(component));
    const auto it = std::find_if(moved, movedEnd, [&](const auto& removed) {
      return SameContent(ComponentAt(m_old, removed.second), component);
    });
    if (it != movedEnd) {
      const char* formBegin = nullptr;
      const char* formEnd = nullptr;
      PlaceOfComponent(it->second, formBegin, formEnd);
      sForm.assign(formBegin, formEnd);
    }
    if (sForm.empty()) sForm = LaidOut(WriteComponent(component, j, m_losses), layout);
    if (pNeighbour == nullptr) {
      sSection += std::string(m_edits.LineEnd()) + sForm;
    } else if (pBefore != nullptr) {
      m_edits.AddBehind(end, layout.sIndent, sForm);
    } else {
      m_edits.AddBefore(begin, sForm);
    }
  }
  if (pNeighbour == nullptr) AddSection(sSection + std::string(m_edits.LineEnd()) + ")");
}

// ---- the layout ----

PreservedBoard::LayerPiece& PreservedBoard::PieceOfShape(std::size_t i) {
  const std::vector<PieceObjects>& layers = m_source.Layers();
  const auto it =
      std::find_if(std::lower_bound(layers.begin(), layers.end(), i,
                                    [](const PieceObjects& objects, std::size_t n) { return objects.nEnd <= n; }),
                   layers.end(), [i](const PieceObjects& objects) { return i >= objects.nBegin && i < objects.nEnd; });
  if (it == layers.end()) RaiseDoesNotReadBack("a shape of the layout that does not stand in a layer");
  const auto n = static_cast<std::size_t>(it - layers.begin());
  if (m_layerPieces[n] == nullptr) {
    auto pPiece = std::make_unique<LayerPiece>(m_source.Pieces().layers[n]);
    if (pPiece->tree.Roots().empty() || !CollectLayerItems(pPiece->tree.Roots().front(), pPiece->items) ||
        pPiece->items.size() != it->nEnd - it->nBegin) {
      RaiseDoesNotReadBack("a layer of the layout whose shapes do not stand one by one");
    }
    pPiece->nFirst = it->nBegin;
    m_layerPieces[n] = std::move(pPiece);
  }
  return *m_layerPieces[n];
}

void PreservedBoard::EditShapes() {
  const auto old = [this](std::size_t i) -> const CBDdrawObj& { return ShapeAt(m_old, i); };
  const auto now = [this](std::size_t j) -> const CBDdrawObj& { return ShapeAt(m_design, j); };
  Comparison comparison;
  comparison.nOld = SizeOf(m_old.pBoard->m_pDrawObjArray);
  comparison.nNew = SizeOf(m_design.pBoard->m_pDrawObjArray);
  comparison.same = [&](std::size_t i, std::size_t j) { return SameContent(old(i), now(j)); };
  comparison.oldHash = [&](std::size_t i) { return ContentHash(old(i)); };
  comparison.newHash = [&](std::size_t j) { return ContentHash(now(j)); };
  comparison.akin = [&](std::size_t i, std::size_t j) {
    const CBDdrawObj& a = old(i);
    const CBDdrawObj& b = now(j);
    return typeid(a) == typeid(b) && a.m_bRefer == b.m_bRefer && StandInOneLayer(a, b);
  };
  m_shapeSteps = Align(comparison);
  if (AreAllKept(m_shapeSteps)) return;

  // Shapes that other forms give stand before those of the layers, and have no place here.
  std::vector<AlignedStep> steps = m_shapeSteps;
  const std::size_t nFirst = m_source.Layers().empty() ? comparison.nOld : m_source.Layers().front().nBegin;
  std::erase_if(steps, [nFirst](const AlignedStep& step) { return step.kind == Kind::kept && step.i < nFirst; });

  CBDdrawObj* const* const shapes = m_design.pBoard->m_pDrawObjArray->GetData();
  LayerChange change;
  change.old = [this](std::size_t i) {
    LayerPiece& piece = PieceOfShape(i);
    const LayerItem& item = piece.items[i - piece.nFirst];
    const FormNode& layer = *item.pLayer;
    return PlacedItem{piece.BeginOf(layer),     piece.EndOf(layer), piece.BeginOf(*item.pItem),
                      piece.EndOf(*item.pItem), piece.items.size(), piece.CountContent(layer) == piece.items.size()};
  };
  change.sameLayer = [&](std::size_t j, std::size_t k) { return StandInOneLayer(now(j), now(k)); };
  change.change = [this](std::size_t i, std::size_t j) { ChangeShape(i, j); };
  change.item = [&](std::size_t j, const FormLayout& layout) {
    return LaidOut(WriteShape(now(j), j, m_losses), layout);
  };
  change.layer = [&](std::size_t j, std::size_t k, const FormLayout& layout) {
    return LaidOut(WriteLayer({shapes + j, k - j}, m_losses), layout);
  };
  change.head = [&](std::size_t j) {
    SaveLosses ignored = m_losses;
    return HeadOfLayer(WriteLayer({shapes + j, 1}, ignored));
  };
  if (EditLayers(m_edits, steps, change)) return;
  std::string sSection = "(boardLayout" + std::string(m_edits.LineEnd()) + "(layout";
  for (std::size_t j = 0; j < steps.size();) {
    std::size_t k = j + 1;
    while (k < steps.size() && change.sameLayer(steps[j].j, steps[k].j)) ++k;
    sSection += m_edits.LineEnd();
    sSection += change.layer(steps[j].j, steps[k - 1].j + 1, {{}, {}, m_edits.LineEnd()});
    j = k;
  }
  AddSection(sSection + std::string(m_edits.LineEnd()) + ")" + std::string(m_edits.LineEnd()) + ")");
}

void PreservedBoard::ChangeShape(std::size_t i, std::size_t j) {
  const CBDdrawObj& now = ShapeAt(m_design, j);
  SaveLosses lossesBefore = m_losses;
  SaveLosses lossesNow = m_losses;
  const std::string sWritten = WriteShape(ShapeAt(m_old, i), j, lossesBefore);
  std::string sWanted = WriteShape(now, j, lossesNow);
  TellNewLosses(lossesBefore, lossesNow, m_losses);
  if (m_losses.IsRefused()) return;

  const LayerPiece& piece = PieceOfShape(i);
  const FormNode& item = *piece.items[i - piece.nFirst].pItem;
  CBDdrawObj* const pNow = m_design.pBoard->m_pDrawObjArray->GetAt(static_cast<__int64>(j));
  const std::size_t nMark = m_edits.Mark();
  SaveLosses ignored = m_losses;
  const std::string sHead = HeadOfLayer(WriteLayer({&pNow, 1}, ignored));
  const auto again = [&](const std::string& s) -> std::optional<std::string> {
    const HeldText held(sHead + "\n" + s + "\n)");
    OwnedDesign got;
    if (!ReadLayerText(held.View(), got)) return std::nullopt;
    const CBDdrawObj* pGot = got.pBoard->m_pDrawObjArray->GetLastElement();
    if (pGot == nullptr) return std::nullopt;
    return WriteShape(*pGot, j, ignored);
  };
  LeaveOutLosses(m_losses, again, sWanted);
  const bool bDone = PatchUntilItReadsBack(
      m_edits, piece.tree, item, [&piece](std::size_t n) { return piece.At(n); }, sWritten, sWanted,
      [&] { return again(m_edits.Apply(piece.BeginOf(item), piece.EndOf(item), nMark)); });
  if (!bDone) RaiseDoesNotReadBack("shape " + std::to_string(j) + " of the layout");
}

// ---- a section that the source does not have ----

void PreservedBoard::AddSection(const std::string& sText) {
  const TextPiece& piece = m_source.Pieces().others;
  std::string sJoined;
  const FormTree tree(piece.Text(sJoined));
  const FormNode* pRoot = FindRoot(tree);
  if (pRoot == nullptr || pRoot->children.empty()) RaiseDoesNotReadBack("a board file without content");
  const auto end = [&piece](const FormNode& form) { return piece.Source(form.range.nEnd - 1) + 1; };
  const auto board = std::find_if(pRoot->children.begin(), pRoot->children.end(),
                                  [](const FormNode& form) { return form.Name() == "boardContainer"; });
  if (board == pRoot->children.end()) {
    const std::string sLineEnd(m_edits.LineEnd());
    m_edits.AddBehind(end(pRoot->children.back()), {}, "(boardContainer" + sLineEnd + sText + sLineEnd + ")");
  } else if (board->children.empty()) {
    m_edits.AddBehind(piece.Source(tree.HeadOf(*board).nEnd - 1) + 1, {}, sText);
  } else {
    m_edits.AddBehind(end(board->children.back()), {}, sText);
  }
}

// ---- the proof ----

void PreservedBoard::Verify(const HeldText& text) const {
  const BoardText pieces = CutBoardText(text.View());
  const BoardText& old = m_source.Pieces();
  // What was allowed to be lost need not come back.
  const bool bExact = m_losses.Allowed().empty();
  std::string sJoined;

  if (pieces.others == old.others) {
    if (bExact && !m_bSameRecords) RaiseDoesNotReadBack("the records of the board");
  } else {
    OwnedDesign got;
    if (!ReadOthersText(pieces.others.Text(sJoined), got)) RaiseDoesNotReadBack("the records of the board");
    if (bExact && !HasSameRecords(got.View(), m_design)) RaiseDoesNotReadBack("the records of the board");
  }

  // A piece that is as it was gives what it gave.
  std::vector<std::size_t> keptComponent(SizeOf(m_design.pBoard->m_pComponentArray), static_cast<std::size_t>(-1));
  for (const AlignedStep& step : m_componentSteps) {
    if (step.kind == Kind::kept) keptComponent[step.j] = step.i;
  }
  std::size_t j = 0;
  for (const TextPiece& piece : pieces.components) {
    if (j == keptComponent.size()) RaiseDoesNotReadBack("there are too many components");
    const std::size_t i = keptComponent[j];
    if (i == static_cast<std::size_t>(-1) || !(piece == PieceOfComponent(i))) {
      OwnedDesign got;
      if (!ReadComponentText(piece.Text(sJoined), got) || SizeOf(got.pBoard->m_pComponentArray) != 1 ||
          (bExact && !SameContent(ComponentAt(got.View(), 0), ComponentAt(m_design, j)))) {
        RaiseDoesNotReadBack("component " + std::string(ComponentAt(m_design, j).m_sReference.View()));
      }
    }
    ++j;
  }
  if (j != keptComponent.size()) RaiseDoesNotReadBack("components are missing");

  std::vector<std::size_t> keptShape(SizeOf(m_design.pBoard->m_pDrawObjArray), static_cast<std::size_t>(-1));
  for (const AlignedStep& step : m_shapeSteps) {
    if (step.kind == Kind::kept) keptShape[step.j] = step.i;
  }
  // Shapes that are given by other forms come first.
  std::size_t k = old.layers.empty() ? SizeOf(m_old.pBoard->m_pDrawObjArray) : m_source.Layers().front().nBegin;
  for (std::size_t n = 0; n < k; ++n) {
    if (n >= keptShape.size() || keptShape[n] != n) RaiseDoesNotReadBack("a shape that does not stand in a layer");
  }
  std::size_t nOld = 0;
  for (const TextPiece& piece : pieces.layers) {
    const auto it = std::find(old.layers.begin() + static_cast<std::ptrdiff_t>(nOld), old.layers.end(), piece);
    if (it != old.layers.end()) {
      nOld = static_cast<std::size_t>(it - old.layers.begin());
      const PieceObjects& objects = m_source.Layers()[nOld++];
      for (std::size_t i = objects.nBegin; i != objects.nEnd; ++i, ++k) {
        if (k == keptShape.size() ||
            (bExact && keptShape[k] != i && !SameContent(ShapeAt(m_old, i), ShapeAt(m_design, k)))) {
          RaiseDoesNotReadBack("shape " + std::to_string(k) + " of the layout");
        }
      }
      continue;
    }
    OwnedDesign got;
    if (!ReadLayerText(piece.Text(sJoined), got)) RaiseDoesNotReadBack("a layer of the layout");
    for (std::size_t i = 0; i != SizeOf(got.pBoard->m_pDrawObjArray); ++i, ++k) {
      if (k == keptShape.size() || (bExact && !SameContent(ShapeAt(got.View(), i), ShapeAt(m_design, k)))) {
        RaiseDoesNotReadBack("shape " + std::to_string(k) + " of the layout");
      }
    }
  }
  if (k != keptShape.size()) RaiseDoesNotReadBack("shapes of the layout are missing");
}

}  // namespace laminate
