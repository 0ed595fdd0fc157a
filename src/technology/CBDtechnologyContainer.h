#pragma once
#include <cstdio>

#include "base/CString.h"
#include "base/Pool.h"

class CBDcondLayerArray;
class CBDfootprintLayerArray;
class CBDmap;
class CBDmapArray;
class CBDnonConductiveLayerArray;
class CBDsubLayerArray;
class CECadClsLvl;

namespace laminate {
class TextOut;

/// The two forms in which the technology section is written.
enum class TechnologySection {
  board,     ///< all of it: `.pcf` and `.tcf` files
  footprint  ///< the name and the footprint layers: `.ftf` files
};
}  // namespace laminate

/// The layer structure of a design: the layers that footprints may draw on, the copper and other layers of the board,
/// and the maps from the former to the latter.
class CBDtechnologyContainer : public laminate::Pooled {
 public:
  CBDtechnologyContainer();
  /// Copies member by member: the arrays are shared. Only one of the containers that share them may be destroyed; the
  /// host sets the pointers of the others to null.
  CBDtechnologyContainer(const CBDtechnologyContainer&) = default;
  /// As the copy constructor. The arrays that this container held are not deleted: they are the host's to delete.
  CBDtechnologyContainer& operator=(const CBDtechnologyContainer&) = default;
  virtual ~CBDtechnologyContainer();

  /// Writes the "technologyContainer" form: all of it when `sKind` is "PCF", otherwise the technology's name and the
  /// footprint layers. Always 0; a null stream raises `CInvalidArgException`.
  int nPrint2File(FILE* fp, CString sKind);
  /// The same into the text of a file that is being written.
  void Write(laminate::TextOut& out, laminate::TechnologySection section) const;
  /// The first map of that name, or null. It stays this container's.
  CBDmap* pGetMap(CString sName);
  /// The name of the first footprint layer of that type, or empty. The spelling of the name is that of the interface.
  CString sGetFootprintLayNameFromTypeInFoorprintLayerArray(CString sType);
  /// The kind of the first sub-layer of that name, "systemLayer" also where the kind is the word "type"; empty when
  /// there is none.
  CString sGetLayerTypeFromSubLayer(const CString& sName) const;

  CString m_sName;
  int m_nConductorLayers = 0;  ///< "numberOfConductorLayer" as read, which need not be the size of `m_pCondLayerArray`
  CString m_sReserved1;        ///< not used
  CBDfootprintLayerArray* m_pFootprintLayerArray;          ///< owned
  CBDnonConductiveLayerArray* m_pNonConductiveLayerArray;  ///< owned
  CBDcondLayerArray* m_pCondLayerArray;                    ///< owned
  CBDsubLayerArray* m_pSubLayerArray;                      ///< owned
  CBDmapArray* m_pMapArray;                                ///< owned
};

namespace laminate {

/// Reads the "technologyContainer" form of a board file and adds to the container. Of several "technology" forms the
/// one counts whose number of conductor layers is the greatest among those with a "layerMapping" (the first of equals),
/// or the first of all when none has one. A required form or value that is absent raises `CInvalidArgException`; a
/// candidate without "numberOfConductorLayer" raises before anything is stored, anything else when its turn comes.
void ReadTechnology(const CECadClsLvl& node, CBDtechnologyContainer& technology);

/// Reads the "technologyContainer" form of a footprint file: the name and the footprint layers of its first
/// "technology", if there is one. A layer may lack its type here.
void ReadFootprintTechnology(const CECadClsLvl& node, CBDtechnologyContainer& technology);

}  // namespace laminate
