// Shapes read from trees and written as text, per second of the processor, each beside a plain version of the same work
// in the same run: reading with a chain of comparisons, a copied text per token and `new` per object; writing with one
// fprintf per line.
//
//   bench_shapes [<shapes> [<rounds>]]
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "base/TextOut.h"
#include "bench/PlainShapes.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/CBDline.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/CBDvertexArc.h"
#include "drawobj/CBDvertexPt.h"
#include "drawobj/DrawObjReader.h"
#include "reader/CECadClsLvl.h"

namespace {

// Of the processor, so that what else runs on the machine counts less.
double Seconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

// ---- what is read: mostly lines of a few points, every eighth shape an outline of forty, and vias ----

using Node = std::unique_ptr<CECadClsLvl>;

Node Form(const char* szName, std::initializer_list<std::string> tokens = {}) {
  auto node = std::make_unique<CECadClsLvl>();
  node->m_sName = szName;
  for (const std::string& s : tokens) node->m_arrValues.Add(CString(std::string_view(s)));
  return node;
}
CECadClsLvl& Put(CECadClsLvl& parent, Node child) {
  parent.m_pChildren->Add(child.get());
  return *child.release();
}

std::uint32_t g_state = 1;
std::uint32_t Random() { return g_state = g_state * 1664525u + 1013904223u, g_state >> 8; }
std::string Number() {
  const std::uint32_t n = Random() % 30000000;
  if (Random() % 2 == 0) return std::to_string(n);
  std::string s = std::to_string(n / 100000) + "." + std::to_string(100000 + n % 100000).substr(1);
  return s;
}

void Points(CECadClsLvl& form, int n, bool bWidths) {
  CECadClsLvl& vertex = Put(form, Form("vertex"));
  for (int i = 0; i < n; ++i) {
    CECadClsLvl& pt = Put(vertex, Form("pt", {Number(), Number()}));
    if (bWidths) Put(pt, Form("width", {"0.15000"}));
  }
}

Node MakeShape(int i) {
  if (i % 8 == 0) {
    Node node = Form("surface");
    Put(*node, Form("net", {"GND"}));
    CECadClsLvl& inner = Put(Put(*node, Form("geometry")), Form("surface"));
    Put(inner, Form("outlineWidth", {"0.10000"}));
    Put(inner, Form("fillWidth", {"0.10000"}));
    Put(inner, Form("fillAngle", {"45.000000"}));
    Points(inner, 40, false);
    return node;
  }
  if (i % 4 == 1) {
    Node node = Form("padstack", {"VIA06"});
    Put(*node, Form("net", {"NET" + std::to_string(i % 400)}));
    Put(*node, Form("pt", {Number(), Number()}));
    Put(*node, Form("fromTo", {"1", "4"}));
    CECadClsLvl& section = Put(*node, Form("conductive"));
    for (int n = 1; n <= 4; ++n) {
      Put(Put(section, Form("layerNumber", {std::to_string(n)})), Form("status", {"THROUGH"}));
    }
    return node;
  }
  Node node = Form("line");
  Put(*node, Form("net", {"NET" + std::to_string(i % 400)}));
  Points(Put(Put(*node, Form("geometry")), Form("line")), 2 + i % 5, true);
  return node;
}

std::string ReadAll(std::FILE* fp) {
  std::string s;
  char buffer[65536];
  std::rewind(fp);
  while (const std::size_t n = std::fread(buffer, 1, sizeof buffer, fp)) s.append(buffer, n);
  return s;
}

}  // namespace

int main(int argc, char** argv) {
  const int nShapes = argc > 1 ? std::atoi(argv[1]) : 3000;
  const int nRounds = argc > 2 ? std::atoi(argv[2]) : 100;
  std::vector<Node> nodes;
  for (int i = 0; i < nShapes; ++i) nodes.push_back(MakeShape(i));

  laminate::ShapeContext context;
  context.nLayerNumber = 3;
  context.sLayerName = "3";
  context.sLayerType = "conductive";

  // In turn, since the machine may be shared; the best round of each counts.
  double dRead = 1e9, dPlainRead = 1e9, dWrite = 1e9, dPlainWrite = 1e9;
  std::size_t nBytes = 0;
  for (int nRound = 0; nRound < nRounds; ++nRound) {
    // The first of two passes warms the caches.
    for (int nPass = 0; nPass < 2; ++nPass) {
      const double dStart = Seconds();
      std::vector<plain::Shape*> shapes;
      for (const Node& node : nodes) {
        if (auto* p = plain::Read(*node, "3", "conductive", 3)) shapes.push_back(p);
      }
      for (plain::Shape* p : shapes) delete p;
      dPlainRead = std::min(dPlainRead, Seconds() - dStart);
    }
    for (int nPass = 0; nPass < 2; ++nPass) {
      const double dStart = Seconds();
      auto pShapes = std::make_unique<CBDdrawObjArray>();
      for (const Node& node : nodes) {
        if (auto p = laminate::ReadDrawObj(*node, context)) laminate::AppendOwned(*pShapes, std::move(p));
      }
      pShapes.reset();
      dRead = std::min(dRead, Seconds() - dStart);
    }
    CBDdrawObjArray shapes;
    for (const Node& node : nodes) laminate::AppendOwned(shapes, laminate::ReadDrawObj(*node, context));
    std::FILE* fpPlain = std::tmpfile();
    std::FILE* fp = std::tmpfile();
    if (fpPlain == nullptr || fp == nullptr) return 1;
    {
      const double dStart = Seconds();
      for (const CBDdrawObj* p : shapes) plain::Write(fpPlain, *p);
      std::fflush(fpPlain);
      dPlainWrite = std::min(dPlainWrite, Seconds() - dStart);
    }
    {
      const double dStart = Seconds();
      {
        laminate::TextOut out(fp);
        for (CBDdrawObj* p : shapes) p->Write(out, 1);
      }
      std::fflush(fp);
      dWrite = std::min(dWrite, Seconds() - dStart);
    }
    const std::string sText = ReadAll(fp);
    nBytes = sText.size();
    if (sText != ReadAll(fpPlain)) {
      std::fprintf(stderr, "the two texts differ\n");
      return 1;
    }
    std::fclose(fp);
    std::fclose(fpPlain);
  }
  std::printf("%-28s %12s %12s %8s\n", "", "plain", "laminate", "ratio");
  std::printf("%-28s %12.0f %12.0f %8.2f\n", "shapes read and freed / s", nShapes / dPlainRead, nShapes / dRead,
              dPlainRead / dRead);
  std::printf("%-28s %12.0f %12.0f %8.2f\n", "shapes written / s", nShapes / dPlainWrite, nShapes / dWrite,
              dPlainWrite / dWrite);
  std::printf("%-28s %12.1f %12.1f\n", "MB written / s", nBytes / dPlainWrite / 1e6, nBytes / dWrite / 1e6);
  return 0;
}
