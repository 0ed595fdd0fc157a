#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/CString.h"
#include "render/BoardLayers.h"
#include "render/Brush.h"
#include "render/Painter.h"

class CBDcomponent;
class CBDdrawObj;
class CBDdrawObjArray;
class CBDdrawPad;
class CBDdrawPadstack;
class CBDesigner;
class CBDpad;
class CBDpadSet;
class CBDpadstack;
class CBDpadstackRefLay;

namespace laminate::cli {

/// From where the board is seen. From side B left and right are exchanged, and the layers of that side lie on top.
enum class View { sideA, sideB };

/// What of a board is drawn.
struct Selection {
  std::vector<std::string> layers;  ///< names, the library's bytes; none: all layers of the side
  std::optional<View> side;  ///< the side that is seen, with its layers and the common ones; none: all, from side A
};

using Step = std::function<void()>;

/// A board as a drawing: the shapes of its layout and its components by layer, placed pads and padstacks through their
/// definitions in the library. It refers to the objects of the board, which must stay as they are while it lives. Time
/// and memory are linear in the number of shapes.
class Scene {
 public:
  /// The root must have its containers.
  Scene(const CBDesigner& root, const Selection& selection);
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  /// Takes up the layout, the component groups and all components.
  void AddBoard();
  void AddComponent(const CBDcomponent& component);

  /// The layers of the board, with those that only shapes name once these were taken up.
  const BoardLayers& Layers() const { return m_layers; }
  View Seen() const { return m_selection.side.value_or(View::sideA); }
  /// How many placed pads and padstacks of the selection have no definition in the library, not even of one of their
  /// pads. A small ring is drawn for each.
  std::size_t CountUndefined() const { return m_undefined.size(); }

  /// Draws all that was taken up, layer by layer from the back to the front. `place` maps the board to the painter's
  /// sheet; no line is thinner than `dHairline`, in mm. `step` is called before each shape, and what it raises ends the
  /// drawing.
  void Draw(
      Painter& painter, const Motion& place, double dHairline, const Step& step = [] {}) const;

 private:
  struct Item {
    const CBDdrawObj* shape;
    const CBDdrawObj* netOwner;     // what has the net's name: the shape itself, or the pad that it belongs to
    const CBDcomponent* component;  // null: none
    std::uint32_t motion;           // index into m_motions
    Look look;
  };
  // What is taken up for one layer, in the order in which it is drawn.
  struct Content {
    std::vector<Item> planes;
    std::vector<Item> shapes;
    std::vector<Item> pads;
    std::vector<Item> holes;
    bool IsEmpty() const { return planes.empty() && shapes.empty() && pads.empty() && holes.empty(); }
  };
  // What a shape stands in.
  enum class Home { layout, group, component, pin };
  struct Around {
    Home home;
    const CBDcomponent* component = nullptr;
  };
  struct PadOnLayer {
    std::size_t layer;
    const CBDpadSet* pads;
  };
  // A padstack of the library as it lands on the layers of the board.
  struct Landing {
    const CBDpadstack* padstack = nullptr;
    std::vector<PadOnLayer> pads;
    const CBDdrawObj* hole = nullptr;
  };

  void Add(const CBDdrawObjArray* pShapes, const Around& around);
  void AddOn(std::size_t nLayer, const CBDdrawObj& shape, const Around& around);
  void AddPad(std::size_t nLayer, const CBDdrawPad& pad, const Around& around);
  void AddPadstack(std::size_t nLayer, const CBDdrawPadstack& padstack, const Around& around);
  void AddOwnShapes(const CBDdrawPadstack& padstack, const Around& around);
  bool AddPadShapes(std::size_t nLayer, const CString& sPad, Item item);
  void AddRing(std::size_t nLayer, Item item);
  void Put(std::size_t nLayer, const Item& item);
  std::uint32_t AddMotion(const Motion& motion);
  const Landing& LandingOf(std::string_view sPadstack, std::string_view sSide);
  bool IsSelected(std::size_t nLayer) const;
  std::vector<std::size_t> DrawingOrder() const;
  Colour ColourOf(std::size_t nLayer) const;

  const CBDesigner& m_root;
  Selection m_selection;
  std::unordered_set<std::string_view> m_selectedLayers;
  BoardLayers m_layers;
  std::vector<Content> m_contents;  // by the index of the layer
  std::vector<Motion> m_motions{Motion()};
  std::unordered_map<std::string_view, const CBDpad*> m_pads;
  std::unordered_map<std::string_view, const CBDpadstack*> m_padstacks;
  std::unordered_map<std::string, Landing> m_landings;
  std::unordered_set<const CBDdrawObj*> m_undefined;
};

/// What the scene covers, in the coordinates of the board and without the widths of lines.
Box BoundsOf(const Scene& scene);

}  // namespace laminate::cli
