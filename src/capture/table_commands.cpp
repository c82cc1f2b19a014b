// The command that reads a table, page by page where the page has a control for the next one.
#include <new>
#include <string>

#include "api/messages.h"
#include "capture/table_source.h"
#include "com/bstr.h"
#include "commands.h"
#include "dom/worker_calls.h"
#include "locate/element_search.h"

namespace quillmate {
namespace {

/// @return the table around the located element; null when there is none.
com::JsonPtr ReadTableAt(Session& session, const std::string& locator) {
  const auto element = FindElement(session, locator);
  const auto table = element ? FindTable(*element) : std::nullopt;
  return table ? ReadTable(*table) : nullptr;
}

/// @return the control that leads to the next page; null when there is none or it is marked as disabled.
com::ComPtr<IHTMLElement> FindNextPage(Session& session, const std::string& locator) {
  if (locator.empty()) return {};
  const auto control = FindElement(session, locator);
  com::Bstr class_name;
  if (!control || FAILED((*control)->get_className(class_name.put()))) return {};
  return class_name.view().find(L"disable") == std::wstring_view::npos ? *control : nullptr;
}

/// @return whether the click came back in time. One that did not is held up by a message box.
bool ClickThrough(Session& session, const com::ComPtr<IHTMLElement>& control) {
  const auto outcome = ClickElementOnWorker(session, control);
  return outcome && *outcome == ClickOutcome::kReturned;
}

/// Moves the rows of another page behind those of the first; its header item is dropped.
void AppendRows(cJSON* table, cJSON* page) {
  while (cJSON* row = cJSON_DetachItemFromArray(page, 1)) cJSON_AddItemToArray(table, row);
}

Result PrintedAsText(const cJSON* tree) {
  const com::JsonText printed(cJSON_Print(tree));
  if (printed == nullptr) throw std::bad_alloc();
  return Text(printed.get());
}

}  // namespace

Result GetTable(Session& session, const CommandParams& params) {
  const auto by = OptionalLocator(params, "by");
  if (!by) return by.error();
  const auto next_page = OptionalLocator(params, "target");
  if (!next_page) return next_page.error();
  const com::JsonPtr table = ReadTableAt(session, *by);
  if (table == nullptr) return Fail(messages::kTableNotFound);
  while (const auto control = FindNextPage(session, *next_page)) {
    // Deliberate: read at once after the click. A page that loads its rows later shows the old ones again. A
    // click held up by a message box ends the paging, for nobody could answer the box meanwhile.
    if (!ClickThrough(session, control)) break;
    const com::JsonPtr page = ReadTableAt(session, *by);
    if (page == nullptr) break;
    AppendRows(table.get(), page.get());
  }
  return PrintedAsText(table.get());
}

}  // namespace quillmate
