#pragma once

#include <windows.h>
#include <mshtml.h>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "com/owned.h"

namespace quillmate {

/// Reads the texts of one table's cells, each by one late-bound call: a cell comes as IDispatch, and a proxy
/// of a wide interface for each would cost more than its text. In newer document modes a member's number may
/// differ between kinds of element, so it is asked of a heading cell and of a data cell. Where both give one
/// number it serves all cells; else the heading cells are told apart by their identity, which costs no call.
/// A cell that does not know its kind's number is asked for its own.
class CellTexts {
 public:
  explicit CellTexts(IHTMLTable* table);

  /// @return the text in UTF-8; empty when it cannot be read.
  std::string Read(IDispatch* cell) const;

 private:
  std::optional<DISPID> NumberFor(IDispatch* cell) const;

  std::optional<DISPID> heading_number_;
  std::optional<DISPID> data_number_;
  /// The heading cells, held so that their identities stay; empty when nothing depends on them.
  std::vector<com::ComPtr<IUnknown>> headings_;
  std::set<IUnknown*> heading_identities_;
  /// The kinds could not be asked: each cell is asked for its own number.
  bool ask_each_ = false;
};

}  // namespace quillmate
