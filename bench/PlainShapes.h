#pragma once
// Shapes read and written plainly, for figures to stand beside: a chain of comparisons, a copied text per token and
// `new` per object; one fprintf per line.
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/CBDline.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/CBDvertexArc.h"
#include "drawobj/CBDvertexPt.h"
#include "reader/CECadClsLvl.h"
#include "reader/PlainReader.h"

namespace plain {

struct Fillet {
  std::string type;
  double width = 0, length = 0, filletWidth = 0;
  std::string dir;
  virtual ~Fillet() = default;
};
struct Vertex {
  double width = 0;
  std::string type = "PT";
  double tarc = 0;
  Fillet* fillet = new Fillet;
  double x = 0, y = 0;
  virtual ~Vertex() { delete fillet; }
};
struct Entry {
  std::string status, layerName;
  int layerNumber = 0, visible = 1;
  virtual ~Entry() = default;
};
struct Shape {
  std::string layerName, layerType, kind, net, penShape, section;
  int layerNumber = 0, refer = 0;
  virtual ~Shape() = default;
};
struct Line : Shape {
  std::string thermalData, lineType;
  std::vector<Vertex*> vertices;
  ~Line() override {
    for (Vertex* p : vertices) delete p;
  }
};
struct Surface : Shape {
  int area = 0, mesh = 0, alreadySpread = 0, flagXCount = 0, submesh = 0;
  double outlineWidth = 0, fillWidth = 0, fillAngle = 0, lowerHeight = 0, upperHeight = 0;
  double pitch = 0, diameter = 0, figureAngle = 0, windowClearance = 0, figureClearance = 0, angle = 0, clearance = 0;
  std::string meshShape = "CIRCLE", meshArrangeType = "5POINTS";
  double base[4] = {};
  std::vector<int> flags, paramFlags;
  double param[12] = {};
  std::string paramShape = "CIRCLE", paramArrangeType = "5POINTS";
  std::vector<Vertex*> openShapes;
  std::vector<Vertex*> vertices;
  ~Surface() override {
    for (Vertex* p : vertices) delete p;
  }
};
struct Padstack : Shape {
  std::string name, side, flip;
  int from = 0, to = 0;
  double x = 0, y = 0, angle = 0;
  std::vector<Entry*> entries;
  ~Padstack() override {
    for (Entry* p : entries) delete p;
  }
};

// What is asked of a tree, be it the library's or the plain reader's.
inline std::string Name(const CECadClsLvl& node) { return std::string(node.m_sName.View()); }
inline std::string Token(const CECadClsLvl& node, int n) { return std::string(node.m_arrValues.GetAt(n).View()); }
inline const CECadClsLvlArray& Children(const CECadClsLvl& node) { return *node.m_pChildren; }
inline std::string Name(const Node& node) { return node.name; }
inline std::string Token(const Node& node, int n) {
  return static_cast<std::size_t>(n) < node.values.size() ? node.values[static_cast<std::size_t>(n)] : std::string();
}
inline const Nodes& Children(const plain::Node& node) { return node.children; }

inline double Length(std::string s) {
  return s.find(".") != std::string::npos ? std::atof(s.c_str()) : std::atof(s.c_str()) / 100000.0;
}

template <class Node>
void ReadVertices(const Node& node, std::vector<Vertex*>& vertices) {
  for (const auto& child : Children(node)) {
    if (Name(*child) != "pt") continue;
    auto* vertex = new Vertex;
    vertex->x = Length(Token(*child, 0));
    vertex->y = Length(Token(*child, 1));
    for (const auto& inner : Children(*child)) {
      if (Name(*inner) == "width") {
        vertex->width = Length(Token(*inner, 0));
      } else if (Name(*inner) == "tarc") {
        vertex->tarc = Length(Token(*Children(*inner)[0], 0));
      }
    }
    vertices.push_back(vertex);
  }
}

template <class Node>
const Node* Find(const Node& node, std::string name) {
  for (const auto& child : Children(node)) {
    if (Name(*child) == name) return &*child;
  }
  return nullptr;
}

template <class Node>
Shape* ReadLine(const Node& node) {
  auto* line = new Line;
  for (const auto& child : Children(node)) {
    const std::string key = Name(*child);
    if (key == "net") {
      line->net = Token(*child, 0);
    } else if (key == "penShape") {
      line->penShape = Token(*child, 0);
    } else if (key == "thermalData") {
      line->thermalData = Token(*child, 0);
    } else if (key == "vertex") {
      ReadVertices(*child, line->vertices);
    } else if (key == "geometry") {
      const Node& inner = *Children(*child)[0];
      if (const Node* p = Find(inner, "penShape")) line->penShape = Token(*p, 0);
      if (const Node* p = Find(inner, "vertex")) ReadVertices(*p, line->vertices);
      if (const Node* p = Find(inner, "type")) line->lineType = Token(*p, 0);
      if (Find(inner, "dashLine") != nullptr) line->lineType = "DASH";
    }
  }
  return line;
}

template <class Node>
Shape* ReadPadstack(const Node& node) {
  auto* padstack = new Padstack;
  padstack->name = Token(node, 0);
  for (const auto& child : Children(node)) {
    const std::string key = Name(*child);
    if (key == "net") {
      padstack->net = Token(*child, 0);
    } else if (key == "pt") {
      padstack->x = Length(Token(*child, 0));
      padstack->y = Length(Token(*child, 1));
    } else if (key == "angle") {
      padstack->angle = std::atof(Token(*child, 0).c_str());
    } else if (key == "fromTo") {
      padstack->from = std::atoi(Token(*child, 0).c_str());
      padstack->to = std::atoi(Token(*child, 1).c_str());
    } else if (key == "side") {
      padstack->side = Token(*child, 0);
    } else if (key == "flip") {
      padstack->flip = Token(*child, 0);
    } else if (key == "conductive" || key == "nonConductive") {
      for (const auto& inner : Children(*child)) {
        auto* entry = new Entry;
        if (Name(*inner) == "layerNumber") entry->layerNumber = std::atoi(Token(*inner, 0).c_str());
        if (Name(*inner) == "layer") entry->layerName = Token(*inner, 0);
        if (const Node* p = Find(*inner, "status")) entry->status = Token(*p, 0);
        if (Find(*inner, "geometry") != nullptr) entry->visible = 2;
        padstack->entries.push_back(entry);
      }
    }
  }
  return padstack;
}

template <class Node>
Shape* ReadSurface(const Node& node) {
  auto* surface = new Surface;
  for (const auto& child : Children(node)) {
    const std::string key = Name(*child);
    if (key == "lowerHeight") {
      surface->lowerHeight = Length(Token(*child, 0));
    } else if (key == "upperHeight") {
      surface->upperHeight = Length(Token(*child, 0));
    } else if (key == "net") {
      surface->net = Token(*child, 0);
    } else if (key == "vertex") {
      ReadVertices(*child, surface->vertices);
    } else if (key == "geometry") {
      for (const auto& inner : Children(*Children(*child)[0])) {
        const std::string innerKey = Name(*inner);
        if (innerKey == "outlineWidth") {
          surface->outlineWidth = Length(Token(*inner, 0));
        } else if (innerKey == "fillWidth") {
          surface->fillWidth = Length(Token(*inner, 0));
        } else if (innerKey == "fillAngle") {
          surface->fillAngle = std::atof(Token(*inner, 0).c_str());
        } else if (innerKey == "alreadySpread") {
          surface->alreadySpread = 1;
        } else if (innerKey == "vertex") {
          ReadVertices(*inner, surface->vertices);
        }
      }
    }
  }
  return surface;
}

template <class Node>
Shape* Read(const Node& node, std::string layerName, std::string layerType, int layerNumber) {
  const std::string keyword = Name(node);
  const auto isOneOf = [&keyword](std::initializer_list<const char*> words) {
    for (const char* sz : words) {
      if (keyword == sz) return true;
    }
    return false;
  };
  Shape* shape = nullptr;
  if (isOneOf({"basePoint", "boardAssembly", "circle", "delete", "dimension", "dimLeader", "donut", "hole"})) {
    return nullptr;
  } else if (isOneOf({"line", "shieldLine"})) {
    shape = ReadLine(node);
  } else if (isOneOf({"oblong", "oval", "ovalHole", "pad", "fPad"})) {
    return nullptr;
  } else if (isOneOf({"padstack", "fpadstack"})) {
    shape = ReadPadstack(node);
  } else if (isOneOf({"rectangle", "roundThermal", "squareHole", "squareThermal"})) {
    return nullptr;
  } else if (isOneOf({"area", "surface", "meshplane"})) {
    shape = ReadSurface(node);
  }
  if (shape == nullptr) return nullptr;
  shape->kind = keyword;
  shape->layerName = layerName;
  shape->layerType = layerType;
  shape->layerNumber = layerNumber;
  return shape;
}

// The shapes of all layers under some forms, also of those in components and their pins; of a "refer" what it holds.
template <class Node>
void ReadLayer(const Node& layer, std::vector<std::unique_ptr<Shape>>& shapes) {
  std::string name, type;
  int number = 0;
  const auto add = [&](const Node& node) {
    if (Shape* shape = Read(node, name, type, number)) shapes.emplace_back(shape);
  };
  for (const auto& child : Children(layer)) {
    const std::string key = Name(*child);
    if (key == "conductive") {
      type = key;
      name = Token(*child, 0);
      number = std::atoi(name.c_str());
    } else if (key == "nonConductive") {
      type = key;
      name = Token(*child, 0);
    } else if (key == "systemLayer") {
      type = key;
      if (const Node* p = Find(*child, "type")) name = Token(*p, 0);
    } else if (key == "refer") {
      for (const auto& inner : Children(*child)) add(*inner);
    } else {
      add(*child);
    }
  }
}
template <class Nodes>
void ReadLayers(const Nodes& forms, std::vector<std::unique_ptr<Shape>>& shapes) {
  for (const auto& form : forms) {
    if (Name(*form) == "layer") {
      ReadLayer(*form, shapes);
    } else {
      ReadLayers(Children(*form), shapes);
    }
  }
}

// One fprintf per line, of the library's own objects.
inline void WriteVertices(std::FILE* fp, const CBDvertexArray& vertices, bool bWidths) {
  std::fprintf(fp, "(vertex\n");
  for (const CBDvertex* p : vertices) {
    const auto* pt = static_cast<const CBDvertexPt*>(p);
    std::fprintf(fp, "(pt %.5f %.5f", pt->m_pt.x, pt->m_pt.y);
    if (bWidths && pt->m_dWidth > 0.001) {
      std::fprintf(fp, "\n(width %.5f)", pt->m_dWidth);
      std::fprintf(fp, "\n)\n");
    } else {
      std::fprintf(fp, ")\n");
    }
  }
  std::fprintf(fp, ")\n");
}

inline void Write(std::FILE* fp, const CBDdrawObj& shape) {
  if (shape.m_sKind == "LINE") {
    const auto& line = static_cast<const CBDline&>(shape);
    std::fprintf(fp, "(line\n");
    std::fprintf(fp, "(net \"%s\")\n", line.m_sNet.GetString());
    std::fprintf(fp, "(geometry\n");
    std::fprintf(fp, "(line\n");
    WriteVertices(fp, *line.m_pVertices, true);
    for (int i = 0; i < 3; ++i) std::fprintf(fp, ")\n");
  } else if (shape.m_sKind == "DRAWPADSTACK") {
    const auto& padstack = static_cast<const CBDdrawPadstack&>(shape);
    std::fprintf(fp, "(padstack %s\n", padstack.m_sPadstackName.GetString());
    std::fprintf(fp, "(net \"%s\")\n", padstack.m_sNet.GetString());
    std::fprintf(fp, "(pt %.5f %.5f)\n", padstack.m_pt.x, padstack.m_pt.y);
    std::fprintf(fp, "(fromTo %d %d)\n", padstack.m_nFrom, padstack.m_nTo);
    std::fprintf(fp, "(conductive\n");
    for (const CBDpadstackRefLay* p : *padstack.m_pRefLays) {
      std::fprintf(fp, "(layerNumber %d (status %s))\n", p->m_nLayerNumber, p->m_sStatus.GetString());
    }
    for (int i = 0; i < 2; ++i) std::fprintf(fp, ")\n");
  } else if (shape.m_sKind == "SURFACE") {
    const auto& surface = static_cast<const CBDsurface&>(shape);
    std::fprintf(fp, "(surface\n");
    std::fprintf(fp, "(net \"%s\")\n", surface.m_sNet.GetString());
    std::fprintf(fp, "(geometry\n");
    std::fprintf(fp, "(surface\n");
    std::fprintf(fp, "(outlineWidth %.5f)\n", surface.m_dOutlineWidth);
    std::fprintf(fp, "(fillWidth %.5f)\n", surface.m_dFillWidth);
    std::fprintf(fp, "(fillAngle %f)\n", surface.m_dFillAngle);
    WriteVertices(fp, *surface.m_pVertices, false);
    for (int i = 0; i < 3; ++i) std::fprintf(fp, ")\n");
  }
}

}  // namespace plain
