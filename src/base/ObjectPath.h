#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "base/Platform.h"

namespace laminate {

/// Where a walk of a database is: fields, and elements of arrays, from the root on. The names must outlive their steps.
class ObjectPath {
 public:
  ObjectPath() = default;
  ObjectPath(const ObjectPath&) = delete;
  ObjectPath& operator=(const ObjectPath&) = delete;

  /// Steps into a field, or an element of an array, for a scope.
  class Step {
   public:
    Step(ObjectPath& path, std::string_view sField) : Step(path, sField, {}, -1) {}
    /// An element that is called by its name, or by its place where it has none.
    Step(ObjectPath& path, std::string_view sField, std::string_view sName, INT_PTR nIndex) : m_path(path) {
      path.m_places.push_back({sField, sName, nIndex});
    }
    ~Step() { m_path.m_places.pop_back(); }
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;

   private:
    ObjectPath& m_path;
  };

  /// "m_pBoardContainer.m_pNetArray[GND].m_pRefPinArray[3]"
  std::string Text() const;

 private:
  struct Place {
    std::string_view sField;
    std::string_view sName;
    INT_PTR nIndex;
  };
  std::vector<Place> m_places;
};

}  // namespace laminate
