// One table of a page, read into rows of texts.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <optional>
#include <stdexcept>

#include "com/json.h"
#include "com/owned.h"

namespace quillmate {

/// The page refused a call without which the table is not known.
class TableUnreadable : public std::runtime_error {
 public:
  TableUnreadable() : std::runtime_error("the table cannot be read") {}
};

/// A table, or a grid that is drawn as two: its headings in one table, its rows in another.
struct TableSource {
  com::ComPtr<IHTMLTable> body;
  /// Null for a plain table.
  com::ComPtr<IHTMLTable> header;
};

/// Climbs from an element, itself included, to the nearest table or split grid around it.
/// @return nothing when there is none. @throws TableUnreadable
std::optional<TableSource> FindTable(com::ComPtr<IHTMLElement> element);

/// Reads a table into an array of rows, each an array of cell texts in UTF-8. The first item stands for the
/// header: the header table's first row, or without one the column numbers 0, 1, ...; after it come the
/// body's rows, a plain table's own heading row among them. A cell that cannot be read is empty; a row that
/// cannot be read, or has more than 50,000 cells, is left out.
/// @throws TableUnreadable
com::JsonPtr ReadTable(const TableSource& table);

}  // namespace quillmate
