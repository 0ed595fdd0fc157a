#pragma once
#include <cstdio>

#include "base/CString.h"
#include "base/Pool.h"

class CBDcompGroupArray;
class CBDcomponentArray;
class CBDdrawObjArray;
class CBDnetArray;
class CBDsubBoardArray;

namespace laminate {
class TextOut;
}

/// What is on the board: components, groups, nets, sub-boards and the loose shapes of the layout. There is no layer
/// object: a layer is a run of shapes that bear its name, type and number. Written as
///   (boardContainer (components ...) (compGroups ...)? (nets ...) (boardLayout (layout (layer HEADER SHAPE ...) ...)))
/// For a shape with a layer number HEADER is "(conductive NUMBER)"; else it goes by the layer type: "(nonConductive
/// NAME)" or "(systemLayer (type NAME))", with the name between quotes if it holds a bracket. A shape whose number, or
/// else whose name, is the one met last opens no layer: it stands in the one that is open, whichever that is. A shape
/// of any other type opens none either, but a bracket closes it, and the form is out of balance.
class CBDboardContainer : public laminate::Pooled {
 public:
  /// Creates the five arrays, empty.
  CBDboardContainer();
  /// Copies the strings and shares the five arrays: only one of the containers that share them may be destroyed; the
  /// host sets the pointers of the others to null.
  CBDboardContainer(const CBDboardContainer&) = default;
  /// As the copy constructor. The arrays that this container held are not deleted: they are the host's to delete.
  CBDboardContainer& operator=(const CBDboardContainer&) = default;
  /// Deletes the five arrays with their elements, each if not null.
  virtual ~CBDboardContainer();

  /// Gathers the layout by layer and writes the "boardContainer" form. The layout stays gathered; components, nets and
  /// shapes change as their own writers tell. Sub-boards are not written. Always 0; a null stream raises
  /// `CInvalidArgException`, and failing memory `CMemoryException`. A failing write is left in the stream's error flag.
  int nPrint2File(FILE* fp);
  /// The same into any output of text.
  void Write(laminate::TextOut& out);

  /// Gathers the shapes of the layout by layer, in place: layers keep the order in which they first appear, and shapes
  /// that of their layer. A first pass gathers by layer number, a second one by the names of the layers of number 0. In
  /// both, the shape that follows a gathered run is passed over as a possible start of the next run, and so gathering
  /// again may change the order once more. Failing memory raises `CMemoryException`; the layout is then as before.
  void vSortDrawObjForLayerOrder();

  CString m_sReserved1;                  ///< empty; not used
  CBDcomponentArray* m_pComponentArray;  ///< in file order; owned
  CBDcompGroupArray* m_pCompGroupArray;  ///< in file order; owned
  /// In file order; owned. Null once `CPC_BD_Cls_Get::pGetNetArrayFromPcf` has taken it, until the next load of a board
  /// file makes a new one.
  CBDnetArray* m_pNetArray;
  /// Shapes of all layers of the layout, and those inside board assemblies, also of components and groups; owned.
  CBDdrawObjArray* m_pDrawObjArray;
  CString m_sReserved2;                ///< empty; not used
  CBDsubBoardArray* m_pSubBoardArray;  ///< in file order; read and never written; owned
};
