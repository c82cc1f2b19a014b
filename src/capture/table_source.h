// One table of a page, read into rows of texts.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <optional>

#include "com/com_ptr.h"
#include "com/json.h"

namespace quillmate {

/// A table, or a grid that is drawn as two: its headings in one table, its rows in another.
struct TableSource {
  com::ComPtr<IHTMLTable> body;
  /// Null for a plain table.
  com::ComPtr<IHTMLTable> header;
};

/// Climbs from an element, itself included, to the nearest table or split grid around it.
std::optional<TableSource> FindTable(com::ComPtr<IHTMLElement> element);

/// Reads a table into an array of rows, each an array of cell texts in UTF-8. The first item stands for the
/// header: the header table's first row, or without one the column numbers 0, 1, ...; after it come the
/// body's rows, a plain table's own heading row among them. Cells that cannot be read are empty; rows that
/// cannot be read, or have more than 50,000 cells, are left out.
com::JsonPtr ReadTable(const TableSource& table);

}  // namespace quillmate
