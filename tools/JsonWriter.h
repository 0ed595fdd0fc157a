#pragma once
#include <concepts>
#include <string>
#include <string_view>

#include "OutputFile.h"

namespace laminate::cli {

/// Writes one JSON document as it goes: nothing of it is held. Every object inside an array starts a line of its own.
/// In an object keys and values alternate; commas come by themselves.
class JsonWriter {
 public:
  explicit JsonWriter(OutputFile& out) : m_out(out) {}
  JsonWriter(const JsonWriter&) = delete;
  JsonWriter& operator=(const JsonWriter&) = delete;

  void BeginObject() { Begin('{'); }
  void EndObject() { End('}'); }
  void BeginArray() { Begin('['); }
  void EndArray() { End(']'); }
  /// `sKey` is plain ASCII without anything to escape.
  void Key(std::string_view sKey);
  /// A key of the library's bytes.
  void TextKey(std::string_view sKey);

  /// The library's bytes.
  void Text(std::string_view s);
  /// A name of the system, such as a path: UTF-8 as it stands, anything else as `Text`.
  void Name(std::string_view s);
  void Number(std::integral auto n) { Literal(std::to_string(n)); }
  /// The shortest text that reads back to the same value, always marked as a real number; `null` if not finite.
  void Number(double d);
  void Boolean(bool b) { Literal(b ? "true" : "false"); }
  void Null() { Literal("null"); }
  /// Ends the document with a line feed.
  void Finish();

 private:
  static constexpr std::size_t kPiece = 32 * 1024;
  void Separate();
  void Begin(char c);
  void End(char c);
  void Literal(std::string_view s) {
    Separate();
    m_text += s;
  }
  void HandOver();

  OutputFile& m_out;
  std::string m_text;
  std::string m_open;  // the brackets around the place of writing
  bool m_bFirst = true;
};

/// An object that is being written; its scope's end closes it.
class JsonObject {
 public:
  explicit JsonObject(JsonWriter& json) : m_json(json) { m_json.BeginObject(); }
  ~JsonObject() { m_json.EndObject(); }
  JsonObject(const JsonObject&) = delete;
  JsonObject& operator=(const JsonObject&) = delete;

 private:
  JsonWriter& m_json;
};

/// The same for an array.
class JsonArray {
 public:
  explicit JsonArray(JsonWriter& json) : m_json(json) { m_json.BeginArray(); }
  ~JsonArray() { m_json.EndArray(); }
  JsonArray(const JsonArray&) = delete;
  JsonArray& operator=(const JsonArray&) = delete;

 private:
  JsonWriter& m_json;
};

}  // namespace laminate::cli
