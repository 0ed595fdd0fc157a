#include <typeindex>
#include <typeinfo>
#include <unordered_map>

#include "JsonObjects.h"
#include "save/FieldsDrawObj.h"

namespace laminate::cli {

namespace {

template <class Base>
using Writer = void (*)(JsonWriter&, const Base&);

template <class Base, class... Classes>
std::unordered_map<std::type_index, Writer<Base>> MakeWriters(ClassList<Classes...>) {
  return {{std::type_index(typeid(Classes)),
           [](JsonWriter& json, const Base& object) { WriteValue(json, static_cast<const Classes&>(object)); }}...};
}

// An object of a class that the library does not know, which only a host can make, shows what it has of the base.
template <class Base>
void WriteAs(JsonWriter& json, const std::unordered_map<std::type_index, Writer<Base>>& writers, const Base* p) {
  if (p == nullptr) {
    json.Null();
    return;
  }
  const auto it = writers.find(std::type_index(typeid(*p)));
  if (it == writers.end()) {
    WriteValue(json, *p);
  } else {
    it->second(json, *p);
  }
}

}  // namespace

void WriteValue(JsonWriter& json, CBDdrawObj* const& p) {
  static const auto writers = MakeWriters<CBDdrawObj>(ShapeClasses());
  WriteAs<CBDdrawObj>(json, writers, p);
}

void WriteValue(JsonWriter& json, CBDvertex* const& p) {
  static const auto writers = MakeWriters<CBDvertex>(VertexClasses());
  WriteAs<CBDvertex>(json, writers, p);
}

}  // namespace laminate::cli
