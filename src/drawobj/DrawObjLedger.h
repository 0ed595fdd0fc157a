#pragma once
// What an export loses of the shapes: for every field, what is left of its value when the written text is read again.
#include <span>
#include <string_view>

namespace laminate {

enum class Fate {
  kept,        ///< the same value
  normalised,  ///< the same value up to the rule of its row
  constant,    ///< the text says the same whatever the value
  dropped      ///< nothing: a value that is read again is the default
};

struct LedgerRow {
  std::string_view className;
  std::string_view field;  ///< or, of a constant, the place in the text
  /// Of a shape that stands by itself, in a layer, a component, a pin or a group (mode 1). Of a vertex or fillet: on a
  /// line.
  Fate byItself = Fate::dropped;
  /// Of a shape in the geometry of a pad, a padstack or a footprint pin (mode 2). Of a vertex or fillet: on an outline.
  Fate inGeometry = Fate::dropped;
  std::string_view rule;  ///< for a person
};

/// What reading makes of the text that a shape wrote.
enum class ReadsBack {
  same,            ///< a shape of the same class, which writes the same text again
  defaults,        ///< a shape of the same class without its values
  other,           ///< a shape of another class
  unknownKeyword,  ///< nothing: the box of an unknown keyword
  raises,          ///< the reading ends for want of a value
  within           ///< only read within another form
};

struct LedgerClass {
  std::string_view className;
  ReadsBack byItself = ReadsBack::same;
  ReadsBack inGeometry = ReadsBack::same;
  std::string_view what;  ///< what the class is, for a person
};

std::span<const LedgerRow> DrawObjLedger();
std::span<const LedgerClass> DrawObjLedgerClasses();

/// The row of a field, or null.
const LedgerRow* FindLedgerRow(std::string_view className, std::string_view field);

}  // namespace laminate
