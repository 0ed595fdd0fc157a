#include "save/FormPatch.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

#include "board/BoardForms.h"
#include "drawobj/ShapeGrammar.h"
#include "reader/LineReader.h"
#include "save/SourceDesign.h"
#include "technology/FootprintLayers.h"
#include "technology/LibraryForms.h"

namespace laminate {

namespace {

using Kind = AlignedStep::Kind;

void AppendLines(std::string& text, std::string_view s, std::string_view sLineEnd) {
  for (;;) {
    const std::size_t n = s.find('\n');
    text += s.substr(0, n);
    if (n == s.npos) return;
    text += sLineEnd;
    s.remove_prefix(n + 1);
  }
}

void Render(const FormTree& tree, const FormNode& form, const FormLayout& layout, const std::string& sIndent,
            std::string& text) {
  const std::string_view whole = tree.TextOf(form);
  if (form.children.empty() || whole.find('\n') == whole.npos) return AppendLines(text, whole, layout.sLineEnd);
  const FormRange head = tree.HeadOf(form);
  text += '(';
  AppendLines(text, tree.Text().substr(head.nBegin, head.nEnd - head.nBegin), layout.sLineEnd);
  const std::string sInside = sIndent + std::string(layout.sStep);
  for (const FormNode& child : form.children) {
    text += layout.sLineEnd;
    text += sInside;
    Render(tree, child, layout, sInside, text);
  }
  text += layout.sLineEnd;
  text += sIndent;
  text += ')';
}

// ---- keywords, as the tables of the readers know them ----

template <class Rows>
void AddSingles(std::set<std::string_view>& keywords, const Rows& rows) {
  for (const auto& row : rows) {
    switch (row.conversion) {
      case Conversion::object:
      case Conversion::objects:
      case Conversion::custom:
      case Conversion::skip:
      case Conversion::pointSequence:
        break;
      default:
        keywords.insert(row.key);
    }
  }
}
template <class... Classes>
void AddSinglesOfShapes(std::set<std::string_view>& keywords) {
  const auto add = [&keywords](const auto& views) {
    for (const auto& view : views) AddSingles(keywords, view.rows);
  };
  (add(Grammar<Classes>()), ...);
  add(SymbolTextGrammar());
}

// The keywords of forms of which the last or the first one counts: one more of them replaces what it said before.
bool IsSingle(std::string_view sKeyword) {
  static const std::set<std::string_view> keywords = [] {
    std::set<std::string_view> s;
    AddSingles(s, NetRows());
    AddSingles(s, RefPinRows());
    AddSingles(s, SubBoardRows());
    AddSingles(s, CompGroupRows());
    AddSingles(s, ComponentRows());
    AddSingles(s, GateRows());
    AddSingles(s, PinRows());
    AddSingles(s, PinGateRows());
    AddSingles(s, LayerParameterRows());
    AddSingles(s, TextSizeRows());
    AddSingles(s, LibFootprintRows());
    AddSingles(s, LibPadstackRows());
    AddSingles(s, LibPadRows());
    AddSingles(s, CondLayerRows());
    AddSingles(s, PadstackRows());
    AddSingles(s, PadstackWholeRows());
    AddSingles(s, PadSetRows());
    AddSingles(s, FootprintRows());
    AddSingles(s, FootprintWholeRows());
    AddSingles(s, ToeprintPinRows());
    AddSinglesOfShapes<CBDcircle, CBDdonut, CBDdrawPad, CBDdrawPadstack, CBDdrawSubBoard, CBDfillet, CBDhole, CBDline,
                       CBDoblong, CBDopenShape, CBDoval, CBDovalHole, CBDpadstackRefLay, CBDrectangle, CBDroundThermal,
                       CBDsquareHole, CBDsquareThermal, CBDsurface, CBDsymbolText, CBDtext, CBDvertexArc, CBDvertexPt>(
        s);
    return s;
  }();
  return keywords.find(sKeyword) != keywords.end();
}

bool IsShape(std::string_view sKeyword) {
  static const std::set<std::string_view> keywords = [] {
    std::set<std::string_view> s;
    for (const auto& view : Grammar<MadeShape>()) {
      for (const auto& row : view.rows) {
        if (row.conversion == Conversion::object) s.insert(row.key);
      }
    }
    return s;
  }();
  return keywords.find(sKeyword) != keywords.end();
}

// The forms of a file that hold what is read apart from them.
bool IsTrunk(const CECadClsLvl& node) {
  const std::string_view s = node.m_sName.View();
  if (node.m_nLevel == 1) return s == "pcf" || s == "tcf" || s == "pnf" || s == "ftf";
  return node.m_nLevel == 2 && s == "boardContainer";
}

std::string_view FirstValue(const CECadClsLvl& node) {
  return node.m_arrValues.IsEmpty() ? std::string_view() : node.m_arrValues[0].View();
}

std::uint64_t NameHash(const CECadClsLvl& node) {
  constexpr std::hash<std::string_view> hash;
  return hash(node.m_sName.View()) * 31 + hash(FirstValue(node));
}

// Whether one form may have become another of its keyword: the most of what it holds is still there.
bool AreAkin(const CECadClsLvl& a, const CECadClsLvl& b) {
  if (a.m_sName != b.m_sName) return false;
  const INT_PTR na = a.m_pChildren->GetSize();
  const INT_PTR nb = b.m_pChildren->GetSize();
  if ((na == 0 && nb == 0) || IsSingle(a.m_sName.View())) return true;
  INT_PTR nSame = 0;
  for (INT_PTR i = 0; i < std::min(na, nb); ++i) {
    if (SameForm(*a.m_pChildren->GetData()[i], *b.m_pChildren->GetData()[i])) ++nSame;
  }
  return 2 * nSame >= std::max(na, nb);
}

// ---- layers ----

bool TellsOfAnother(const FormNode& layer) {
  return std::any_of(layer.children.begin(), layer.children.end(),
                     [](const FormNode& child) { return child.Name() == "infoOf" || child.Name() == "drawOf"; });
}

// The shapes in the layers of a layout; with `bWithTold` also those of layers that tell about another one.
bool CollectItems(const FormNode& layout, bool bWithTold, std::vector<LayerItem>& items) {
  items.clear();
  return std::all_of(layout.children.begin(), layout.children.end(), [&](const FormNode& layer) {
    return (!bWithTold && TellsOfAnother(layer)) || CollectLayerItems(layer, items);
  });
}

void CollectShape(const FormNode& layer, const FormNode& item, const FormNode& shape, std::vector<LayerItem>& items) {
  // The shapes of an assembly are read before it.
  if (shape.Name() == "boardAssembly") {
    for (const FormNode& child : shape.children) {
      if (child.Name() != "geometry") continue;
      for (const FormNode& inner : child.children) {
        if (IsShape(inner.Name())) CollectShape(layer, inner, inner, items);
      }
    }
  }
  items.push_back({&layer, &item, &shape});
}

bool SameLayerName(const FormNode& a, const FormNode& b) {
  const auto next = [](auto it, const FormNode& layer) {
    return std::find_if(it, layer.children.end(), [](const FormNode& child) { return NamesAnyLayer(child.Name()); });
  };
  auto ia = next(a.children.begin(), a);
  auto ib = next(b.children.begin(), b);
  for (; ia != a.children.end() && ib != b.children.end(); ia = next(ia + 1, a), ib = next(ib + 1, b)) {
    if (!SameForm(*ia->pNode, *ib->pNode)) return false;
  }
  return ia == a.children.end() && ib == b.children.end();
}

std::uint64_t HashItem(const LayerItem& item) {
  std::uint64_t n = HashForm(*item.pItem->pNode);
  for (const FormNode& child : item.pLayer->children) {
    if (NamesAnyLayer(child.Name())) n = n * 31 + HashForm(*child.pNode);
  }
  return n;
}

}  // namespace

std::string RenderForm(const FormTree& tree, const FormNode& form, const FormLayout& layout) {
  std::string text;
  Render(tree, form, layout, std::string(layout.sIndent), text);
  return text;
}

bool NamesAnyLayer(std::string_view sKeyword) {
  return sKeyword == "conductive" || sKeyword == "nonConductive" || sKeyword == "systemLayer" ||
         sKeyword == "footLayer" || sKeyword == kPadstackLayer;
}

bool CollectLayerItems(const FormNode& layer, std::vector<LayerItem>& items) {
  for (const FormNode& child : layer.children) {
    if (IsShape(child.Name())) {
      CollectShape(layer, child, child, items);
    } else if (child.Name() == "refer") {
      const auto isShape = [](const FormNode& form) { return IsShape(form.Name()); };
      const auto it = std::find_if(child.children.begin(), child.children.end(), isShape);
      if (std::count_if(child.children.begin(), child.children.end(), isShape) != 1) return false;
      CollectShape(layer, child, *it, items);
    }
  }
  return true;
}

bool EditLayers(SourceEdits& edits, const std::vector<AlignedStep>& steps, const LayerChange& change) {
  const auto isOfSource = [](const AlignedStep& step) { return step.kind != Kind::added; };
  if (std::none_of(steps.begin(), steps.end(), isOfSource)) return false;

  constexpr std::size_t kFormGone = static_cast<std::size_t>(-1);
  std::vector<PlacedItem> removed;
  std::unordered_map<const char*, std::size_t> nRemoved;  // by the layer form's place
  const auto layoutAt = [&edits](const PlacedItem& item, bool bOfLayer) {
    const std::string_view sLayer = edits.IndentAt(item.layerBegin);
    const std::string_view sItem = edits.IndentAt(item.itemBegin);
    const std::string_view sStep = sItem.size() > sLayer.size() ? sItem.substr(sLayer.size()) : std::string_view();
    return FormLayout{bOfLayer ? sLayer : sItem, sStep, edits.LineEnd()};
  };

  const AlignedStep* pAnchor = nullptr;  // the last shape that stays
  for (std::size_t n = 0; n < steps.size(); ++n) {
    const AlignedStep& step = steps[n];
    if (step.kind == Kind::removed) {
      removed.push_back(change.old(step.i));
      ++nRemoved[removed.back().layerBegin];
      continue;
    }
    if (step.kind != Kind::added) {
      if (step.kind == Kind::changed) change.change(step.i, step.j);
      pAnchor = &step;
      continue;
    }
    // A run of shapes that are new, and what stands behind it.
    std::size_t nEnd = n;
    while (nEnd != steps.size() && steps[nEnd].kind == Kind::added) ++nEnd;
    const auto next = std::find_if(steps.begin() + static_cast<std::ptrdiff_t>(nEnd), steps.end(), isOfSource);
    const auto nextKept = std::find_if(next, steps.end(), [](const AlignedStep& s) { return s.kind <= Kind::changed; });
    std::size_t j = step.j;
    std::size_t k = steps[nEnd - 1].j + 1;
    // Beside a neighbour of their layer.
    for (; pAnchor != nullptr && j != k && change.sameLayer(j, pAnchor->j); ++j) {
      const PlacedItem item = change.old(pAnchor->i);
      const FormLayout layout = layoutAt(item, false);
      edits.AddBehind(item.itemEnd, layout.sIndent, change.item(j, layout));
    }
    if (nextKept != steps.end()) {
      const PlacedItem item = change.old(nextKept->i);
      const FormLayout layout = layoutAt(item, false);
      std::size_t m = k;
      while (m != j && change.sameLayer(m - 1, nextKept->j)) --m;
      for (std::size_t t = m; t != k; ++t) edits.AddBefore(item.itemBegin, change.item(t, layout));
      k = m;
    }
    // In layer forms of their own.
    std::string text;
    const PlacedItem place =
        change.old(pAnchor != nullptr ? pAnchor->i : std::find_if(steps.begin(), steps.end(), isOfSource)->i);
    const FormLayout layout = layoutAt(place, true);
    while (j != k) {
      std::size_t m = j + 1;
      while (m != k && change.sameLayer(j, m)) ++m;
      if (!text.empty()) {
        text += layout.sLineEnd;
        text += layout.sIndent;
      }
      text += change.layer(j, m, layout);
      j = m;
    }
    if (!text.empty()) {
      if (pAnchor == nullptr) {
        edits.AddBefore(place.layerBegin, text);
      } else if (nextKept != steps.end() && change.old(nextKept->i).layerBegin == place.layerBegin) {
        // Between two shapes of one layer form: it is ended and begun again.
        std::string cut = ")";
        cut += layout.sLineEnd;
        cut += layout.sIndent;
        cut += text;
        cut += layout.sLineEnd;
        cut += layout.sIndent;
        cut += change.head(pAnchor->j);
        edits.AddBehind(place.itemEnd, layout.sIndent, cut);
      } else {
        edits.AddBehind(place.layerEnd, layout.sIndent, text);
      }
    }
    n = nEnd - 1;
  }
  for (const PlacedItem& item : removed) {
    std::size_t& n = nRemoved[item.layerBegin];
    if (n != item.nInLayer || !item.bNothingElse) {
      if (n != kFormGone) edits.Remove(item.itemBegin, item.itemEnd);
    } else {
      edits.Remove(item.layerBegin, item.layerEnd);
      n = kFormGone;
    }
  }
  return true;
}

FormPatch::FormPatch(SourceEdits& edits, const FormTree& source, std::function<const char*(std::size_t)> at,
                     FormTree& wanted)
    : m_edits(edits), m_source(source), m_at(std::move(at)), m_wanted(wanted) {}

bool FormPatch::Patch(const FormNode& source, const FormNode& written, FormNode& wanted) {
  if (SameForm(*written.pNode, *wanted.pNode)) return true;
  const std::size_t nMark = m_edits.Mark();
  if (wanted.bWhole || !PatchInside(source, written, wanted)) {
    m_edits.BackTo(nMark);
    WriteWhole(source, wanted);
  }
  return m_bPossible;
}

bool FormPatch::PatchInside(const FormNode& source, const FormNode& written, FormNode& wanted) {
  if (!SameHead(*written.pNode, *wanted.pNode) && !PatchHead(source, written, wanted)) return false;
  // The layout of a board holds forms of its own; those of other records hold layers.
  return wanted.Name() == "layout" ? PatchLayout(source, written, wanted) : PatchChildren(source, written, wanted);
}

bool FormPatch::PatchHead(const FormNode& source, const FormNode& written, const FormNode& wanted) {
  if (source.Name() != written.Name()) return false;
  const FormRange head = m_source.HeadOf(source);
  // Values may also stand behind a form.
  std::string sAlone = "(" + std::string(m_source.Text().substr(head.nBegin, head.nEnd - head.nBegin)) + "\n)";
  const std::size_t nSize = sAlone.size();
  sAlone.append(LineReader::kPadding, '\0');
  const FormTree alone(std::string_view(sAlone).substr(0, nSize));
  if (!alone.IsSound() || alone.Roots().size() != 1 || !SameHead(*alone.Roots().front().pNode, *source.pNode)) {
    return false;
  }
  const FormRange wantedHead = m_wanted.HeadOf(wanted);
  std::string text;
  AppendLines(text, m_wanted.Text().substr(wantedHead.nBegin, wantedHead.nEnd - wantedHead.nBegin), m_edits.LineEnd());
  m_edits.Replace(m_at(head.nBegin), m_at(head.nEnd - 1) + 1, std::move(text));
  return true;
}

std::vector<const FormNode*> FormPatch::ChildrenOf(const FormNode& source, const FormNode& written) {
  const auto isGeometry = [](const FormNode& form) { return form.Name() == "geometry"; };
  const bool bFlat = std::none_of(written.children.begin(), written.children.end(), isGeometry);
  std::vector<const FormNode*> children;
  for (const FormNode& child : source.children) {
    if (!bFlat || !isGeometry(child)) {
      children.push_back(&child);
      continue;
    }
    for (const FormNode& inner : child.children) {
      if (!IsShape(inner.Name())) {
        children.push_back(&inner);
      } else {
        for (const FormNode& field : inner.children) children.push_back(&field);
      }
    }
  }
  return children;
}

std::vector<const FormNode*> FormPatch::MapChildren(const std::vector<const FormNode*>& source,
                                                    const FormNode& written) {
  struct OfKeyword {
    std::vector<const FormNode*> forms;
    std::size_t nWritten = 0;
    std::size_t nNext = 0;
  };
  std::unordered_map<std::string_view, OfKeyword> keywords;
  for (const FormNode* pChild : source) keywords[pChild->Name()].forms.push_back(pChild);
  for (const FormNode& child : written.children) ++keywords[child.Name()].nWritten;
  std::vector<const FormNode*> map;
  for (const FormNode& child : written.children) {
    OfKeyword& of = keywords[child.Name()];
    const FormNode* pFound = nullptr;
    const auto fits = [&](const FormNode* p) { return FirstValue(*p->pNode) == FirstValue(*child.pNode); };
    if (of.nWritten == of.forms.size()) {
      pFound = of.forms[of.nNext++];
    } else if (of.nWritten == 1 && IsSingle(child.Name())) {
      if (!of.forms.empty()) pFound = of.forms.back();
    } else {
      // What reading passes over has other values.
      const auto it = std::find_if(of.forms.begin() + static_cast<std::ptrdiff_t>(of.nNext), of.forms.end(), fits);
      if (it != of.forms.end()) {
        pFound = *it;
        of.nNext = static_cast<std::size_t>(it - of.forms.begin()) + 1;
      }
    }
    map.push_back(pFound);
  }
  return map;
}

bool FormPatch::PatchChildren(const FormNode& source, const FormNode& written, FormNode& wanted) {
  const auto old = [&](std::size_t i) -> const CECadClsLvl& { return *written.children[i].pNode; };
  const auto fresh = [&](std::size_t j) -> const CECadClsLvl& { return *wanted.children[j].pNode; };
  Comparison comparison;
  comparison.nOld = written.children.size();
  comparison.nNew = wanted.children.size();
  comparison.same = [&](std::size_t i, std::size_t j) { return SameForm(old(i), fresh(j)); };
  comparison.oldHash = [&](std::size_t i) { return HashForm(old(i)); };
  comparison.newHash = [&](std::size_t j) { return HashForm(fresh(j)); };
  comparison.oldName = [&](std::size_t i) { return NameHash(old(i)); };
  comparison.newName = [&](std::size_t j) { return NameHash(fresh(j)); };
  comparison.akin = [&](std::size_t i, std::size_t j) { return AreAkin(old(i), fresh(j)); };

  const std::vector<const FormNode*> children = ChildrenOf(source, written);
  const std::vector<const FormNode*> map = MapChildren(children, written);
  std::set<const FormNode*> mapped(map.begin(), map.end());
  const FormNode* pAnchor = nullptr;
  for (const AlignedStep& step : Align(comparison)) {
    const FormNode* pSource = step.kind == Kind::added ? nullptr : map[step.i];
    // What the source says in other words has no form that could be changed.
    if (step.kind == Kind::added || (step.kind == Kind::changed && pSource == nullptr)) {
      FormNode& child = wanted.children[step.j];
      // What is the default now and was said all the same stands there unnoticed.
      const auto silent = std::find_if(children.rbegin(), children.rend(), [&](const FormNode* pForm) {
        return pForm->Name() == child.Name() && IsSingle(child.Name()) && mapped.count(pForm) == 0;
      });
      if (silent != children.rend()) {
        mapped.insert(*silent);
        WriteWhole(**silent, child);
        continue;
      }
      FormLayout layout = LayoutOf(source);
      const std::string sInside = std::string(layout.sIndent) + std::string(layout.sStep);
      layout.sIndent = sInside;
      if (pAnchor != nullptr) layout.sIndent = m_edits.IndentAt(BeginOf(*pAnchor));
      const FormRange head = m_source.HeadOf(source);
      const char* const place = pAnchor != nullptr ? EndOf(*pAnchor) : m_at(head.nEnd - 1) + 1;
      m_edits.AddBehind(place, layout.sIndent, RenderForm(m_wanted, child, layout));
      child.bWhole = true;
      continue;
    }
    if (pSource == nullptr) continue;
    if (step.kind == Kind::removed) {
      m_edits.Remove(BeginOf(*pSource), EndOf(*pSource));
    } else if (step.kind == Kind::changed) {
      Patch(*pSource, written.children[step.i], wanted.children[step.j]);
    }
    if (step.kind != Kind::removed) pAnchor = pSource;
  }
  return true;
}

bool FormPatch::PatchLayout(const FormNode& source, const FormNode& written, FormNode& wanted) {
  std::vector<LayerItem> sourceItems;
  std::vector<LayerItem> oldItems;
  std::vector<LayerItem> newItems;
  if (!CollectItems(written, true, oldItems) || !CollectItems(wanted, true, newItems)) return false;
  const auto fits = [&](bool bWithTold) {
    return CollectItems(source, bWithTold, sourceItems) && sourceItems.size() == oldItems.size();
  };
  if (!fits(false) && !fits(true)) return false;

  Comparison comparison;
  comparison.nOld = oldItems.size();
  comparison.nNew = newItems.size();
  comparison.same = [&](std::size_t i, std::size_t j) {
    return SameForm(*oldItems[i].pItem->pNode, *newItems[j].pItem->pNode) &&
           SameLayerName(*oldItems[i].pLayer, *newItems[j].pLayer);
  };
  comparison.oldHash = [&](std::size_t i) { return HashItem(oldItems[i]); };
  comparison.newHash = [&](std::size_t j) { return HashItem(newItems[j]); };
  comparison.akin = [&](std::size_t i, std::size_t j) {
    return oldItems[i].pItem->Name() == newItems[j].pItem->Name() &&
           oldItems[i].pShape->Name() == newItems[j].pShape->Name() &&
           SameLayerName(*oldItems[i].pLayer, *newItems[j].pLayer);
  };

  std::unordered_map<const FormNode*, std::size_t> nInLayer;
  for (const LayerItem& item : sourceItems) ++nInLayer[item.pLayer];
  const auto headOf = [&](std::size_t j) {
    const FormNode& layer = *newItems[j].pLayer;
    const FormRange head = m_wanted.HeadOf(layer);
    std::string text = "(" + std::string(m_wanted.Text().substr(head.nBegin, head.nEnd - head.nBegin));
    for (const FormNode& child : layer.children) {
      if (NamesAnyLayer(child.Name())) text += " " + std::string(m_wanted.TextOf(child));
    }
    return text;
  };
  LayerChange change;
  change.old = [&](std::size_t i) {
    const LayerItem& item = sourceItems[i];
    const std::size_t nShapes = nInLayer[item.pLayer];
    const auto nNames =
        static_cast<std::size_t>(std::count_if(item.pLayer->children.begin(), item.pLayer->children.end(),
                                               [](const FormNode& child) { return NamesAnyLayer(child.Name()); }));
    return PlacedItem{BeginOf(*item.pLayer),
                      EndOf(*item.pLayer),
                      BeginOf(*item.pItem),
                      EndOf(*item.pItem),
                      nShapes,
                      nShapes + nNames == item.pLayer->children.size()};
  };
  change.sameLayer = [&](std::size_t j, std::size_t k) {
    return SameLayerName(*newItems[j].pLayer, *newItems[k].pLayer);
  };
  change.change = [&](std::size_t i, std::size_t j) {
    Patch(*sourceItems[i].pItem, *oldItems[i].pItem, const_cast<FormNode&>(*newItems[j].pItem));
  };
  change.item = [&](std::size_t j, const FormLayout& layout) {
    return RenderForm(m_wanted, *newItems[j].pItem, layout);
  };
  change.head = headOf;
  change.layer = [&](std::size_t j, std::size_t k, const FormLayout& layout) {
    std::string text = headOf(j);
    FormLayout inside = layout;
    const std::string sInside = std::string(layout.sIndent) + std::string(layout.sStep);
    inside.sIndent = sInside;
    for (; j != k; ++j) {
      text += layout.sLineEnd;
      text += sInside;
      text += RenderForm(m_wanted, *newItems[j].pItem, inside);
    }
    text += layout.sLineEnd;
    text += layout.sIndent;
    return text + ")";
  };
  return EditLayers(m_edits, Align(comparison), change);
}

void FormPatch::WriteWhole(const FormNode& source, FormNode& wanted) {
  wanted.bWhole = true;
  if (IsTrunk(*source.pNode)) {
    m_bPossible = false;
    return;
  }
  m_edits.Replace(BeginOf(source), EndOf(source), RenderForm(m_wanted, wanted, LayoutOf(source)));
}

FormLayout FormPatch::LayoutOf(const FormNode& source) const {
  FormLayout layout{m_edits.IndentAt(BeginOf(source)), {}, m_edits.LineEnd()};
  for (const FormNode& child : source.children) {
    const std::string_view sInside = m_edits.IndentAt(BeginOf(child));
    if (sInside.size() <= layout.sIndent.size()) continue;
    layout.sStep = sInside.substr(layout.sIndent.size());
    break;
  }
  return layout;
}

bool MarkDifferences(const FormNode& got, FormNode& wanted) {
  if (SameForm(*got.pNode, *wanted.pNode)) return false;
  if (wanted.bWhole) return true;
  bool bWhole = got.children.size() != wanted.children.size() || !SameHead(*got.pNode, *wanted.pNode);
  for (std::size_t i = 0; !bWhole && i < wanted.children.size(); ++i) {
    bWhole = MarkDifferences(got.children[i], wanted.children[i]);
  }
  wanted.bWhole = bWhole;
  return false;
}

bool PatchUntilItReadsBack(SourceEdits& edits, const FormTree& source, const FormNode& sourceForm,
                           const std::function<const char*(std::size_t)>& at, std::string_view written,
                           std::string_view wanted, const std::function<std::optional<std::string>()>& readBack) {
  const HeldText writtenText{std::string(written)};
  const HeldText wantedText{std::string(wanted)};
  const FormTree writtenTree(writtenText.View());
  FormTree wantedTree(wantedText.View());
  if (writtenTree.Roots().size() != 1 || wantedTree.Roots().size() != 1) return false;
  FormNode& wantedForm = wantedTree.Roots().front();
  const std::size_t nMark = edits.Mark();
  FormPatch patch(edits, source, at, wantedTree);
  for (;;) {
    edits.BackTo(nMark);
    if (!patch.Patch(sourceForm, writtenTree.Roots().front(), wantedForm)) return false;
    const std::optional<std::string> got = readBack();
    if (got && *got == wanted) return true;
    if (!got) {
      if (wantedForm.bWhole) return false;
      wantedForm.bWhole = true;
      continue;
    }
    // Each round marks one form at least.
    const HeldText gotText{*got};
    const FormTree gotTree(gotText.View());
    if (gotTree.Roots().size() != 1 || MarkDifferences(gotTree.Roots().front(), wantedForm)) return false;
    if (SameForm(*gotTree.Roots().front().pNode, *wantedForm.pNode)) return false;
  }
}

}  // namespace laminate
