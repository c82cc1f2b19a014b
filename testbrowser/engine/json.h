// JSON as an owned value, and the few readers and builders that protocol code is full of.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "com/json.h"

namespace testbrowser::engine {

using quillmate::com::JsonPtr;

/// Parses one message of the protocol. Page text may hold lone surrogates, which no parser of JSON takes:
/// their escapes become U+FFFD first.
/// @return null when the text is not JSON.
JsonPtr ParseJson(std::string text);
std::string PrintJson(const cJSON* value);

JsonPtr JsonText(std::string_view text);
JsonPtr JsonNumber(double number);
JsonPtr JsonBool(bool value);
JsonPtr JsonNull();
/// An array of the values given, in order: `JsonArray(JsonNumber(3), JsonText("x"))`.
template <class... Values>
JsonPtr JsonArray(Values... values) {
  JsonPtr array(cJSON_CreateArray());
  (cJSON_AddItemToArray(array.get(), values.release()), ...);
  return array;
}

/// An object under construction: `JsonObject().Add("x", 1.0).Add("name", "y").Take()`.
class JsonObject {
 public:
  JsonObject() : object_(cJSON_CreateObject()) {}
  JsonObject& Add(const char* name, JsonPtr value);
  JsonObject& Add(const char* name, std::string_view text) { return Add(name, JsonText(text)); }
  JsonObject& Add(const char* name, const char* text) { return Add(name, JsonText(text)); }
  JsonObject& Add(const char* name, double number) { return Add(name, JsonNumber(number)); }
  JsonObject& Add(const char* name, int number) { return Add(name, JsonNumber(number)); }
  JsonObject& Add(const char* name, bool value) { return Add(name, JsonBool(value)); }
  JsonPtr Take() { return std::move(object_); }

 private:
  JsonPtr object_;
};

/// The member of that name, spelled exactly so; null when there is none or the value is no object.
const cJSON* Member(const cJSON* object, const char* name);
/// A member's text; empty when it is absent or no text.
std::string MemberText(const cJSON* object, const char* name);
/// A member's number; the fallback when it is absent or no number.
double MemberNumber(const cJSON* object, const char* name, double fallback = 0);
bool MemberBool(const cJSON* object, const char* name);

}  // namespace testbrowser::engine
