// The command that reads a table, page by page where the page has a control for the next one.
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "api/messages.h"
#include "capture/table_source.h"
#include "com/owned.h"
#include "commands.h"
#include "dom/worker_calls.h"
#include "locate/current_page.h"

namespace quillmate {
namespace {

/// @return the table around the located element; null when there is none or it cannot be read.
com::JsonPtr ReadTableAt(Session& session, const std::string& locator) try {
  const auto element = FindElement(session, locator);
  const auto table = element ? FindTable(*element) : std::nullopt;
  return table ? ReadTable(*table) : nullptr;
} catch (const TableUnreadable&) {
  return nullptr;
}

/// Looks twice, so that one refused call does not cost the pages that follow.
com::JsonPtr ReadNextTableAt(Session& session, const std::string& locator) {
  auto table = ReadTableAt(session, locator);
  return table != nullptr ? std::move(table) : ReadTableAt(session, locator);
}

/// @return the control that leads to the next page, null when it is marked as disabled; nothing when it is
/// not there or cannot be asked.
std::optional<com::ComPtr<IHTMLElement>> LookForNextPage(Session& session, const std::string& locator) {
  auto control = FindElement(session, locator);
  com::Bstr class_name;
  if (!control || FAILED((*control)->get_className(class_name.put()))) return std::nullopt;
  const bool is_disabled = class_name.view().contains(L"disable");
  return is_disabled ? nullptr : std::move(*control);
}

com::ComPtr<IHTMLElement> FindNextPage(Session& session, const std::string& locator) {
  if (locator.empty()) return {};
  auto control = LookForNextPage(session, locator);
  if (!control) control = LookForNextPage(session, locator);
  return control.value_or(nullptr);
}

/// Clicks the control and waits until the page has turned. A page that works on when the wait is over is read
/// all the same: the calls that read it wait for it too.
/// @return false when the click failed, or a dialog holds it up.
bool TurnPage(Session& session, com::ComPtr<IHTMLElement> control) {
  const ClickOutcome outcome = ClickElementAndWait(session, std::move(control));
  return outcome == ClickOutcome::kReturned || outcome == ClickOutcome::kStillRunning;
}

/// Moves the rows of another page behind those of the first. Deliberate: its first item is dropped as the
/// header, also when the page has none because its first row could not be read.
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
  while (auto control = FindNextPage(session, *next_page)) {
    if (!TurnPage(session, std::move(control))) break;
    // Deliberate: read at once after the click. A page that loads its rows later shows the old ones again.
    const com::JsonPtr page = ReadNextTableAt(session, *by);
    if (page == nullptr) break;
    AppendRows(table.get(), page.get());
  }
  // A page that does not respond may have more rows.
  if (WasTargetSilent(session)) return Fail(messages::kTableNotFound);
  return PrintedAsText(table.get());
}

}  // namespace quillmate
