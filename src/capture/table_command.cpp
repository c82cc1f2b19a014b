// The command that reads a table, page by page where the page has a control for the next one.
#include <string>

#include "api/messages.h"
#include "api/validation.h"
#include "capture/commands.h"
#include "capture/table_source.h"
#include "com/bstr.h"
#include "com/encoding.h"
#include "dom/worker_call.h"
#include "locate/element_search.h"

namespace quillmate::capture {
namespace {

using api::CommandParams;
using api::JsonPtr;
using api::Result;
using com::ComPtr;
namespace messages = api::messages;

bool IsAbsentOrElement(const std::string& locator) {
  return locator.empty() || api::IsElementLocator(locator);
}

/// @return the table around the located element; null when there is none.
JsonPtr ReadTableAt(const std::string& locator) {
  const auto element = locate::FindElement(locator);
  const auto table = element ? FindTable(*element) : std::nullopt;
  return table ? ReadTable(*table) : nullptr;
}

/// @return the control that leads to the next page; null when there is none or it is marked as disabled.
ComPtr<IHTMLElement> FindNextPage(const std::string& locator) {
  if (locator.empty()) return {};
  const auto control = locate::FindElement(locator);
  com::Bstr class_name;
  if (!control || FAILED((*control)->get_className(class_name.put()))) return {};
  return class_name.view().find(L"disable") == std::wstring_view::npos ? *control : nullptr;
}

/// @return whether the click came back in time. One that did not is held up by a message box.
bool ClickThrough(const ComPtr<IHTMLElement>& control) {
  const Result answer = dom::RunElementClickOnWorker(control);
  return answer.success && std::holds_alternative<std::string>(answer.value);
}

/// Moves the rows of another page behind those of the first; its header item is dropped.
void AppendRows(cJSON* table, cJSON* page) {
  while (cJSON* row = cJSON_DetachItemFromArray(page, 1)) cJSON_AddItemToArray(table, row);
}

struct TextFreer {
  void operator()(char* text) const { cJSON_free(text); }
};

Result PrintedAsText(const cJSON* tree) {
  const std::unique_ptr<char, TextFreer> printed(cJSON_Print(tree));
  if (printed == nullptr) throw std::bad_alloc();
  return api::Text(printed.get());
}

}  // namespace

Result GetTable(const CommandParams& params) {
  const std::string by = params.Get("by");
  const std::string next_page = params.Get("target");
  if (!IsAbsentOrElement(by) || !IsAbsentOrElement(next_page))
    return api::Fail(messages::kInvalidElementLocator);
  const JsonPtr table = ReadTableAt(by);
  if (table == nullptr) return api::Fail(messages::kTableNotFound);
  while (const auto control = FindNextPage(next_page)) {
    // Read at once after the click, on purpose: a page that loads its rows later shows the old ones again. A
    // click held up by a message box ends the paging, for nobody could answer the box meanwhile.
    if (!ClickThrough(control)) break;
    const JsonPtr page = ReadTableAt(by);
    if (page == nullptr) break;
    AppendRows(table.get(), page.get());
  }
  return PrintedAsText(table.get());
}

}  // namespace quillmate::capture
