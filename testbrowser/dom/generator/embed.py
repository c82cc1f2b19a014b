"""usage: embed.py OUTPUT FILE...

Writes a C++ source that holds the in-page agent: the files in their order, as one script in a scope of its own."""
import sys

HEADER = '''// Made by embed.py at build time.
#include "dom/document.h"

namespace testbrowser::dom {{

std::vector<std::string> AgentScripts() {{
  static constexpr const char* kParts[] = {{
{parts}  }};
  std::string script = "(() => {{\\n'use strict';\\n";
  for (const char* part : kParts) script += part;
  return {{script + "}})();\\n"}};
}}

}}  // namespace testbrowser::dom
'''


def main():
    output, *paths = sys.argv[1:]
    parts = ''
    for path in paths:
        with open(path, encoding='utf-8') as file:
            parts += f'R"agent({file.read()})agent",\n'
    with open(output, 'w', encoding='utf-8') as file:
        file.write(HEADER.format(parts=parts))


if __name__ == '__main__':
    main()
