#pragma once
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "render/Painter.h"

class CBDcorrespondence;
class CBDmap;
class CBDtechnologyContainer;

namespace laminate::cli {

/// Where a layer of the board lies, as seen from side A.
enum class LayerPlace {
  sideA,   ///< what belongs to side A: its copper, legend, resist
  sideB,   ///< the same of side B
  inside,  ///< copper between the two
  common   ///< everything else, such as the outline of the board
};

/// A layer of the board. The name of a conductive one is its number.
struct BoardLayer {
  std::string name;  ///< the library's bytes
  bool conductive = false;
  int number = 0;    ///< of a conductive layer
  std::string type;  ///< of the first footprint layer that lands here, such as "SYMBOL"
  LayerPlace place = LayerPlace::common;
};

using Correspondences = std::unordered_map<std::string_view, const CBDcorrespondence*>;

/// The layers of a board and where those of footprints land on them. Layers are told apart by their names.
class BoardLayers {
 public:
  explicit BoardLayers(const CBDtechnologyContainer& technology);

  std::span<const BoardLayer> All() const { return m_layers; }
  const BoardLayer& operator[](std::size_t i) const { return m_layers[i]; }
  /// The layer's index, or -1.
  int Find(std::string_view sName) const;
  /// The layer's index; one that the technology does not name is added.
  std::size_t FindOrAdd(std::string_view sName, bool bConductive);
  /// Indices of all board layers on which a footprint layer lands on a side, "A" or "B": by the map of that side or,
  /// where that says nothing, of what goes through the board on that side.
  const std::vector<std::size_t>& LandsOn(std::string_view sFootLayer, std::string_view sSide);
  /// The layer of drilled holes.
  std::size_t HoleLayer() const { return m_nHoleLayer; }

 private:
  void TellTypes(const CBDtechnologyContainer& technology);
  void TellPlaces(const CBDtechnologyContainer& technology);
  std::size_t FindHoleLayer();

  std::vector<BoardLayer> m_layers;
  std::unordered_map<std::string, std::size_t> m_index;
  // The map of a side and that of what goes through the board on it.
  struct SideMaps {
    Correspondences own;
    Correspondences through;
  };

  std::vector<const CBDmap*> m_maps;
  SideMaps m_front;
  SideMaps m_back;
  std::unordered_map<std::string, std::vector<std::size_t>> m_landings;
  std::size_t m_nHoleLayer = 0;
};

}  // namespace laminate::cli
