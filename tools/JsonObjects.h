#pragma once
// How the values of the library's fields look in JSON. Whatever has a list of fields is an object that begins with its
// class; pointer arrays are arrays; a null pointer is null.
#include <concepts>
#include <type_traits>

#include "JsonWriter.h"
#include "base/CArrayN.h"
#include "base/CExPtrArray.h"
#include "base/CGProperty.h"
#include "base/CLProperty.h"
#include "base/CPointD.h"
#include "base/CRectD.h"
#include "base/CString.h"
#include "base/CStringArray.h"
#include "save/Fields.h"

class CBDdrawObj;
class CBDvertex;

namespace laminate::cli {

inline void WriteValue(JsonWriter& json, const CString& s) { json.Text(s.View()); }
inline void WriteValue(JsonWriter& json, std::integral auto n) { json.Number(n); }
inline void WriteValue(JsonWriter& json, double d) { json.Number(d); }
inline void WriteValue(JsonWriter& json, const CPointD& pt) {
  JsonArray array(json);
  json.Number(pt.x);
  json.Number(pt.y);
}

inline void WriteValue(JsonWriter& json, const CRectD& rc) {
  JsonArray array(json);
  for (double d : {rc.x, rc.y, rc.width, rc.height}) json.Number(d);
}
inline void WriteValue(JsonWriter& json, const CGProperty& property) {
  JsonObject object(json);
  json.Key("class");
  json.Text("CGProperty");
  json.Key("item");
  json.Text(property.GetItem().View());
  json.Key("comment");
  json.Text(property.GetComment().View());
}
inline void WriteValue(JsonWriter& json, const CLProperty& property) {
  JsonObject object(json);
  json.Key("class");
  json.Text("CLProperty");
  json.Key("item");
  json.Text(property.GetItem().View());
  json.Key("comment");
  json.Text(property.GetComment().View());
  json.Key("kind");
  json.Text(property.m_sKind.View());
}
/// Shapes and vertices are held by their base class: these go by what the object is.
void WriteValue(JsonWriter& json, CBDdrawObj* const& p);
void WriteValue(JsonWriter& json, CBDvertex* const& p);

template <HasFields T>
void WriteValue(JsonWriter& json, const T& object);
template <class X>
void WriteValue(JsonWriter& json, X* const& p);

/// Arrays of values and of pointers.
template <class TYPE, class ARG_TYPE>
void WriteValue(JsonWriter& json, const CArray<TYPE, ARG_TYPE>& array) {
  JsonArray scope(json);
  for (const TYPE& element : array) WriteValue(json, element);
}

/// Writes the class and the fields of an object into the JSON object that is open.
template <HasFields T>
void WriteFields(JsonWriter& json, const T& object) {
  json.Key("class");
  json.Text(ClassName<T>());
  ForEachField<T>([&](std::string_view sName, auto pMember) {
    json.Key(sName);
    WriteValue(json, object.*pMember);
  });
}

template <HasFields T>
void WriteValue(JsonWriter& json, const T& object) {
  JsonObject scope(json);
  WriteFields(json, object);
}

template <class X>
void WriteValue(JsonWriter& json, X* const& p) {
  if (p == nullptr) {
    json.Null();
  } else {
    WriteValue(json, *p);
  }
}

}  // namespace laminate::cli
