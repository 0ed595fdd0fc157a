#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "base/CString.h"
#include "base/LoadStatus.h"

namespace laminate {

/// A place in a text, from 1.
struct TextPlace {
  int line = 0;
  int column = 1;
};

/// What design-data files call each other by.
enum class NameKind { package, pinAssign, function, part };

/// The names that design-data files define and those that they refer to, so that a name that stands nowhere can be
/// told. Kept only where a host asked for diagnostics.
class NameReferences {
 public:
  struct Place {
    CString file;
    TextPlace text;
  };

  /// Tells that a file was read that can define names of that kind. Only then can one of them be missing.
  void CanDefine(NameKind kind) { m_names[Index(kind)].bKnown = true; }
  void Define(NameKind kind, std::string_view sName, const Place& place);
  /// An empty name refers to nothing: files are written so where there is nothing to refer to.
  void Refer(NameKind kind, std::string_view sName, const Place& place);
  /// A remark for each reference to a name that is not defined, for each definition of a name that was defined before,
  /// and for each pin assign that nothing refers to.
  void Report(Diagnostics& diagnostics) const;

 private:
  struct Mention {
    std::string name;
    Place place;
  };
  struct Names {
    bool bKnown = false;
    std::vector<Mention> defined;
    std::vector<Mention> referred;
  };
  static std::size_t Index(NameKind kind) { return static_cast<std::size_t>(kind); }

  Names m_names[4];
};

}  // namespace laminate
