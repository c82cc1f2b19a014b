#pragma once

#include <windows.h>
#include <mshtml.h>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "com/agile.h"
#include "com/com_ptr.h"

namespace quillmate {

/// Elements that getelement remembered under a name.
class ElementRegistry {
 public:
  /// Remembers an element; a name used before names the new element from now on.
  void Remember(std::string name, com::ComPtr<IHTMLElement> element);
  /// @return the element remembered under a name; null when there is none.
  com::ComPtr<IHTMLElement> Recall(std::string_view name) const;

 private:
  std::map<std::string, com::Agile<IHTMLElement>, std::less<>> elements_;
};

}  // namespace quillmate
