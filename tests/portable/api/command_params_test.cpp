// Reading members out of parameter text, as hosts really send it.
#include "api/command_params.h"

#include <gtest/gtest.h>

using quillmate::CommandParams;

TEST(CommandParams, ReadsStringMembersOnly) {
  struct Case {
    const char* text;
    const char* target;
  };
  constexpr Case kCases[] = {
      {R"({"target": "id=a"})", "id=a"},
      {R"({"Target": "id=a"})", "id=a"},
      {R"({"TARGET": "first", "target": "second"})", "first"},
      {R"({"value": "id=a"})", ""},
      {R"({"target": 5})", ""},
      {R"({"target": true})", ""},
      {R"({"target": null})", ""},
      {R"({"target": ["id=a"]})", ""},
      {R"({"target": {"target": "id=a"}})", ""},
      {R"({"target": 5, "target": "id=a"})", ""},
      {R"(["target", "id=a"])", ""},
      {R"("target")", ""},
      {"", ""},
      {R"({"target": "id=a")", ""},
      {R"({"target": "id=a"} and more)", "id=a"},
      {R"({"target": "line\nbreak \"quoted\""})", "line\nbreak \"quoted\""},
      {R"({"target": "cut\u0000off"})", "cut"},
      {"{\"target\": \"\xc8\xb7\xb6\xa8\"}", "\xc8\xb7\xb6\xa8"},
  };
  for (const Case& c : kCases) EXPECT_EQ(CommandParams(c.text).Get("target"), c.target) << c.text;
}
