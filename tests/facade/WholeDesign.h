#pragma once
#include <string>

#include "board/CBDboardContainer.h"
#include "board/CBDcompGroup.h"
#include "board/CBDcomponent.h"
#include "board/CBDlayerParameter.h"
#include "board/CBDlibraryEntities.h"
#include "board/CBDnet.h"
#include "board/CBDparameter.h"
#include "board/CBDsubBoard.h"
#include "board/CBDtextSize.h"
#include "drawobj/CBDdrawObj.h"
#include "facade/CBDesigner.h"
#include "technology/CBDfootprint.h"
#include "technology/CBDfootprintContainer.h"
#include "technology/CBDfootprintLayer.h"
#include "technology/CBDpad.h"
#include "technology/CBDpadstack.h"
#include "technology/CBDtechnologyContainer.h"

// A small design by hand with every kind of record in it. Many names are too long to be held without memory of their
// own. "@" is a number by which designs differ.
inline const char kWholeBoard[] = R"((pcf
(header
(version 2.1)
(unit MM)
)
(technologyContainer
(technology BOARD@
(numberOfConductorLayer 2)
(footprintLayer
(layer Pad (type CONDUCTIVE))
)
(nonConductiveLayer
(layer "Legend of the upper side" (propertyI sortKey 1))
)
(conductiveLayer
(layerNumber 1 (type POSI) (soldering REFLOW) (refer "Legend of the upper side" (type SYMBOL) (userDefType 0)))
(layerNumber 2 (type POSI))
)
(subLayer
(systemLayer (type HOLE)) (drawLayerOf (conductive 1))
)
(layerMapping
(map A (correspondence (footLayer Pad) (boardLayer (conductive 1))))
)
)
)
(boardContainer
(components
(component (reference "R1 of a long name @")
(part "a part of a long name")
(footprint F1)
(location (pt 100000 200000))
(minRect (box (pt 0 0) (pt 5 5)))
(layout
(layer (nonConductive "Legend of the upper side")
(refer (line (geometry (line (vertex (pt 0 0 (width 1000)) (pt 5 5 (width 1000)))))))
(symbolText (symbolTextType REFERENCE) (geometry (text (string "R1 and more text of it") (pt 5 5))))
(boardAssembly (subBoard 3) (geometry (circle 5)))
)
)
(gate 1 (pin "1" (lockMode UNFIXED)))
(pin 1
(pt 5 5)
(gate 1 (name "1"))
(layout
(layer (systemLayer (type PADSTACK))
(padstack S1 (net "100% VCC") (pt 5 5) (fromTo 1 2) (conductive (layerNumber 1 (status CONNECT))))
)
)
)
(propertyS value "a value that is longer than sixteen")
)
(component (reference C2@)
)
)
(subBoards
(subBoard 3 (relativePath "../another board/of the same.pcf"))
)
(compGroups
(compGroup "A group of components"
(list "R1 of a long name" C2)
(layout
(layer (nonConductive "Legend of the upper side")
(rectangle (pt 5 5) (width 10) (height 20))
)
)
)
)
(nets
(net "100% VCC" (type POWER) (pen 1) (comp "R1 of a long name" (pin 1)) (comp C2))
(net NET@)
)
(boardLayout
(layout
(layer (conductive 1)
(line (geometry (line (vertex (pt 0 0 (width 1)) (pt 5 5 (width 1)) (pt 9 9 (width 1))))))
(area (geometry (surface (vertex (pt 0 0) (pt 5 0) (pt 5 5)) (openShape (vertex (pt 1 1) (pt 2 1) (pt 2 2))))))
(pad P1 (pt 5 5))
)
(layer (conductive 2)
(circle 5)
)
(layer (nonConductive "Legend of the upper side")
(text (geometry (text (string "A text in the layout") (pt 1 1))))
)
)
)
)
(parameter
(visibleLayerSet (name "a set of layers"))
(textSizeParameters (textSize 1 (width 5)))
)
(libraryEntities
(part "a part of a long name")
(footprint F1)
)
)
)";

inline const char kWholeLibrary[] = R"((ftf
(technologyContainer
(technology LIBRARY@
(footprintLayer
(layer Pad (type CONDUCTIVE))
(layer "Legend of a footprint" (type SYMBOL))
)
)
)
(footprintContainer
(pads
(pad P1 (uver 1) (photo FLASH) (geometry (rectangle (pt 0.0 0.0) (width 0.8) (height 0.9))))
)
(padstacks
(padstack S1
(type SURFACE)
(padSet (footLayer Pad) (connect (pad P1)))
(hole (geometry (circle 0.5)))
)
)
(footprints
(footprint F1
(heelprint
(layout
(layer (footLayer "Legend of a footprint")
(line (geometry (line (vertex (pt 0.5 0.5 (width 0.1)) (pt 1.5 0.5 (width 0.1))))))
)
)
)
(toeprint
(pin 1 (pt 0.0 0.0) (layout (layer (footLayer FPADSTACK) (padstack S1 (pt 0.0 0.0)))))
)
(propertyS "a property of it" "and its value, which is long")
)
(footprint F2@
)
)
)
)
)";

/// A text of the design with its number.
inline std::string Numbered(std::string sText, int n) {
  for (std::size_t at = 0; (at = sText.find('@', at)) != std::string::npos;) sText.replace(at, 1, std::to_string(n));
  return sText;
}

/// What a root holds of each kind, in a form that can be compared; an array that is gone is a "-".
inline std::string Counted(const CBDesigner& root) {
  const CBDboardContainer& board = *root.m_pBoardContainer;
  const CBDfootprintContainer& library = *root.m_pFootprintContainer;
  std::string s =
      std::string(root.m_pTechnology->m_sName.View()) + " " + std::string(root.m_pFtfTechnology->m_sName.View());
  const auto add = [&s](const char* szWhat, const auto* pArray) {
    s += std::string(" ") + szWhat + " " + (pArray == nullptr ? "-" : std::to_string(pArray->GetSize()));
  };
  add("components", board.m_pComponentArray);
  add("boards", board.m_pSubBoardArray);
  add("groups", board.m_pCompGroupArray);
  add("nets", board.m_pNetArray);
  add("shapes", board.m_pDrawObjArray);
  add("sizes", root.m_pParameter->m_pTextSizeArray);
  add("parts", &root.m_pLibraryEntities->m_aParts);
  add("pads", library.m_pPadArray);
  add("padstacks", library.m_pPadstackArray);
  add("footprints", library.m_pFootprintArray);
  return s;
}

/// `Counted` of one load of the whole design.
inline std::string CountedWhole(int n) {
  const std::string sN = std::to_string(n);
  return "BOARD" + sN + " LIBRARY" + sN +
         " components 2 boards 1 groups 1 nets 2 shapes 6 sizes 1 parts 1 pads 1 padstacks 1 footprints 2";
}
