// Escapes of characters beyond ASCII, which the parser alone would read as UTF-8.
#include "api/command_params.h"

#include <gtest/gtest.h>

namespace {

using quillmate::DecodeUnicodeEscapes;

/// A code page in which a full-width quotation mark becomes a plain one.
char LookAlike(char32_t character) { return character == 0xFF02 ? '"' : '\0'; }

TEST(UnicodeEscapes, BeyondAsciiBecomeTheirCharacterAndAllElseStays) {
  const struct {
    const char* json;
    const char* decoded;
  } rows[] = {
      {"\\u20ac\\u00FC", "\xe2\x82\xac\xc3\xbc"},
      {"\\u0080\\u07ff\\u0800\\uffff", "\xc2\x80\xdf\xbf\xe0\xa0\x80\xef\xbf\xbf"},
      {"a\\ud83d\\ude00b",
       "a\xf0\x9f\x98\x80"
       "b"},
      {"\\u0041\\u0000\\u007f\\n\\\"", "\\u0041\\u0000\\u007f\\n\\\""},
      {"\\\\u20ac", "\\\\u20ac"},
      {"\\\\\\u20ac", "\\\\\xe2\x82\xac"},
      {"\\ud83d", "\\ud83d"},
      {"\\ud83d\\u20ac", "\\ud83d\xe2\x82\xac"},
      {"\\ude00\\ud83d\\ude00", "\\ude00\xf0\x9f\x98\x80"},
      {"\\u20a", "\\u20a"},
      {"\\u20ag", "\\u20ag"},
      {"\\u-123\\u+123", "\\u-123\\u+123"},
      {"\\uff02", "\\u0022"},
      {"\\", "\\"},
      {"\\U20ac", "\\U20ac"},
      {"", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(DecodeUnicodeEscapes(row.json, LookAlike), row.decoded) << row.json;
}

}  // namespace
