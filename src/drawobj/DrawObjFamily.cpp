#include "drawobj/DrawObjFamily.h"

#include <cmath>

#include "base/TextOut.h"
#include "drawobj/CBDareaz.h"
#include "drawobj/CBDcircle.h"
#include "drawobj/CBDdelete.h"
#include "drawobj/CBDdonut.h"
#include "drawobj/CBDdrawPad.h"
#include "drawobj/CBDdrawPadstack.h"
#include "drawobj/CBDdrawSubBoard.h"
#include "drawobj/CBDhole.h"
#include "drawobj/CBDline.h"
#include "drawobj/CBDoblong.h"
#include "drawobj/CBDoval.h"
#include "drawobj/CBDovalHole.h"
#include "drawobj/CBDrectangle.h"
#include "drawobj/CBDroundThermal.h"
#include "drawobj/CBDsquareHole.h"
#include "drawobj/CBDsquareThermal.h"
#include "drawobj/CBDsurface.h"
#include "drawobj/CBDsymbolText.h"
#include "drawobj/CBDtext.h"
#include "drawobj/ShapeTools.h"
#include "reader/Grammar.h"

namespace laminate {
namespace {

using CopyCell = decltype(FamilyRow::copy);
using PrintCell = decltype(FamilyRow::print);
using HeaderCell = decltype(FamilyRow::header);
using MoveCell = decltype(FamilyRow::move);
using ScaleCell = decltype(FamilyRow::scale);
using RemoveCell = decltype(FamilyRow::remove);

// ---- cells of operations that look into the object: a tag that does not fit its class has no effect ----

template <class T>
constexpr CopyCell Copy(int nPlace) {
  return {nPlace, [](const CBDdrawObj& shape) {
            const T* p = As<const T>(shape);
            return std::unique_ptr<CBDdrawObj>(p != nullptr ? p->pCopy() : nullptr);
          }};
}

template <class T>
constexpr PrintCell Print(int nPlace) {
  return {nPlace, [](CBDdrawObj& shape, TextOut& out, int nMode) {
            T* p = As<T>(shape);
            if (p == nullptr) return;
            if constexpr (requires { p->Write(out); }) {
              p->Write(out);
            } else {
              p->Write(out, nMode);
            }
          }};
}

template <class T>
constexpr MoveCell Move(int nPlace) {
  return {nPlace, [](CBDdrawObj& shape, double dX, double dY, double dAngle, const CString& sSide) {
            T* p = As<T>(shape);
            if (p != nullptr) p->vMoveRotate(dX, dY, dAngle, sSide);
            return p != nullptr;
          }};
}

template <class T>
constexpr ScaleCell Scaling(int nPlace) {
  return {nPlace, [](CBDdrawObj& shape, double dScale) {
            T* p = As<T>(shape);
            if (p != nullptr) p->vSetScale(dScale);
            return p != nullptr;
          }};
}

// An outline without width is an area.
constexpr HeaderCell SurfaceHeader(int nPlace) {
  return {nPlace, [](const CBDdrawObj& shape, TextOut& out) {
            constexpr double kNoWidth = 0.001;  // mm
            const auto* p = As<const CBDsurface>(shape);
            if (p == nullptr) return;
            if (std::fabs(p->m_dOutlineWidth) < kNoWidth) {
              out.Print<
                  "(area\n"
                  "(upperHeight 100000)\n"
                  "(lowerHeight 0)\n">();
            } else {
              out.Print<"(surface\n">();
            }
          }};
}

// ---- cells of operations that need nothing of the object: the tag alone decides ----

template <class T>
constexpr PrintCell PrintAnyAs(int nPlace) {
  return {nPlace, [](CBDdrawObj&, TextOut& out, int nMode) { T::Write(out, nMode); }};
}

template <PrintFormat kText>
constexpr HeaderCell Header(int nPlace) {
  return {nPlace, [](const CBDdrawObj&, TextOut& out) { out.Print<kText>(); }};
}

// Whatever the tag is set on, the copy is an area; it has vertices if the object is one.
constexpr CopyCell CopyArea(int nPlace) {
  return {nPlace, [](const CBDdrawObj& shape) {
            const auto* p = As<const CBDareaz>(shape);
            return std::unique_ptr<CBDdrawObj>(p != nullptr ? p->pCopy() : new CBDareaz);
          }};
}

constexpr CopyCell CopyDelete(int nPlace) {
  return {nPlace, [](const CBDdrawObj&) { return std::unique_ptr<CBDdrawObj>(new CBDdelete); }};
}

// A round thermal has no copy of its own, and there is nothing that could stand for it.
constexpr CopyCell CannotCopy(int nPlace) {
  return {nPlace, [](const CBDdrawObj&) -> std::unique_ptr<CBDdrawObj> {
            throw CInvalidArgException("a round thermal cannot be copied");
          }};
}

constexpr MoveCell MoveArea(int nPlace) {
  return {nPlace, [](CBDdrawObj& shape, double dX, double dY, double dAngle, const CString& sSide) {
            if (auto* p = As<CBDareaz>(shape)) p->vMoveRotate(dX, dY, dAngle, sSide);
            return true;
          }};
}

constexpr ScaleCell ScaleArea(int nPlace) {
  return {nPlace, [](CBDdrawObj& shape, double dScale) {
            if (auto* p = As<CBDareaz>(shape)) p->vSetScale(dScale);
            return true;
          }};
}

constexpr MoveCell StaysInPlace(int nPlace) {
  return {nPlace, [](CBDdrawObj&, double, double, double, const CString&) { return true; }};
}

constexpr ScaleCell KeepsItsScale(int nPlace) {
  return {nPlace, [](CBDdrawObj&, double) { return true; }};
}

constexpr RemoveCell Delete(int nPlace) {
  return {nPlace, [](CBDdrawObj* p) { delete p; }};
}

// clang-format off
constexpr FamilyRow kFamily[] = {
    // tag             copy                           print                                       header                            move                        scale                        delete
    {"CIRCLE",         Copy<CBDcircle>(1),            Print<CBDcircle>(1),                        Header<"(circle\n">(1),           Move<CBDcircle>(1),         Scaling<CBDcircle>(1),       Delete(1)},
    {"AREA",           CopyArea(2),                   PrintAnyAs<CBDareaz>(2),                    Header<"(area\n">(9),             MoveArea(2),                ScaleArea(2),                Delete(9)},
    {"SURFACE",        Copy<CBDsurface>(3),           Print<CBDsurface>(3),                       SurfaceHeader(2),                 Move<CBDsurface>(3),        Scaling<CBDsurface>(3),      Delete(2)},
    {"RECTANGLE",      Copy<CBDrectangle>(4),         Print<CBDrectangle>(4),                     Header<"(rectangle\n">(3),        Move<CBDrectangle>(4),      Scaling<CBDrectangle>(4),    Delete(3)},
    {"ROUNDTHERMAL",   CannotCopy(5),                 Print<CBDroundThermal>(5),                  Header<"(roundThermal\n">(4),     Move<CBDroundThermal>(5),   Scaling<CBDroundThermal>(5), Delete(4)},
    {"SQUAREHOLE",     Copy<CBDsquareHole>(6),        Print<CBDsquareHole>(6),                    Header<"(squareHole\n">(5),       Move<CBDsquareHole>(6),     Scaling<CBDsquareHole>(6),   Delete(5)},
    {"OVAL",           Copy<CBDoval>(7),              Print<CBDoval>(7),                          Header<"(oval\n">(6),             Move<CBDoval>(7),           Scaling<CBDoval>(7),         Delete(6)},
    {"LINE",           Copy<CBDline>(8),              Print<CBDline>(8),                          Header<"(line\n">(7),             Move<CBDline>(8),           Scaling<CBDline>(8),         Delete(7)},
    {"TEXT",           Copy<CBDtext>(9),              Print<CBDtext>(9),                          Header<"(text\n">(8),             Move<CBDtext>(9),           Scaling<CBDtext>(9),         Delete(8)},
    {"DRAWPAD",        Copy<CBDdrawPad>(10),          Print<CBDdrawPad>(10),                      Header<"(pad\n">(10),             Move<CBDdrawPad>(10),       Scaling<CBDdrawPad>(10),     Delete(10)},
    {"DRAWPADSTACK",   Copy<CBDdrawPadstack>(11),     Print<CBDdrawPadstack>(11),                 Header<"(padstack\n">(11),        Move<CBDdrawPadstack>(11),  Scaling<CBDdrawPadstack>(11), Delete(11)},
    {"DONUT",          Copy<CBDdonut>(12),            Print<CBDdonut>(12),                        Header<"(donut\n">(12),           Move<CBDdonut>(12),         Scaling<CBDdonut>(12),       Delete(12)},
    {"SQUARETHERMAL",  Copy<CBDsquareThermal>(13),    PrintAnyAs<CBDsquareThermal>(13),           Header<"(squareThermal\n">(13),   Move<CBDsquareThermal>(13), Scaling<CBDsquareThermal>(13), Delete(13)},
    {"SYMBOLTEXT",     Copy<CBDsymbolText>(14),       Print<CBDsymbolText>(14),                   Header<"(symbolText\n">(14),      Move<CBDsymbolText>(14),    Scaling<CBDsymbolText>(14),  Delete(14)},
    {"HOLE",           Copy<CBDhole>(15),             Print<CBDhole>(15),                         Header<"(hole\n">(15),            Move<CBDhole>(15),          Scaling<CBDhole>(15),        Delete(15)},
    {"OVALHOLE",       Copy<CBDovalHole>(16),         Print<CBDovalHole>(16),                     Header<"(ovalHole\n">(16),        Move<CBDovalHole>(16),      Scaling<CBDovalHole>(16),    Delete(16)},
    // The header of a sub-board lacks its bracket; hosts know it so.
    {"DRAWSUBBOARD",   Copy<CBDdrawSubBoard>(17),     PrintAnyAs<CBDdrawSubBoard>(18),            Header<"subBoard\n">(17),         StaysInPlace(17),           KeepsItsScale(17),           Delete(17)},
    {"DELETE",         CopyDelete(18),                PrintAnyAs<CBDdelete>(19),                  Header<"(delete\n">(18),          StaysInPlace(18),           KeepsItsScale(18),           Delete(18)},
    {"OBLONG",         Copy<CBDoblong>(19),           Print<CBDoblong>(17),                       {},                               {},                         {},                          {}},
    {"OPENSHAPE",      {},                            {},                                         {},                               {},                         {},                          {}},
    {"NONE",           {},                            {},                                         {},                               {},                         {},                          {}},
};
// clang-format on

constexpr auto kTags = KeywordIndex<std::size(kFamily)>([](std::size_t i) { return kFamily[i].tag; });

}  // namespace

std::span<const FamilyRow> DrawObjFamily() { return kFamily; }

const FamilyRow* FindFamilyRow(std::string_view tag) {
  const int i = kTags.Find(tag, [](std::size_t n) { return kFamily[n].tag; });
  return i < 0 ? nullptr : &kFamily[i];
}

}  // namespace laminate
