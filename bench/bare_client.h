// The same jobs as textbook loops of COM calls: what a careful programmer writes without the library.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <mshtml.h>
#include <string>
#include <vector>

#include "com/owned.h"

namespace quillmate::bench {

/// A client of one page, in the calling thread's apartment. Every function throws std::runtime_error when a
/// call fails: a wrong answer must not pass for a fast one.
class BareClient {
 public:
  /// @param page an "Internet Explorer_Server" window.
  explicit BareClient(HWND page);

  /// @return the texts of a table's cells, row by row.
  std::vector<std::vector<std::wstring>> ReadTable(const wchar_t* id) const;

  /// Walks the elements of a tag for the first one with an attribute's value.
  com::ComPtr<IHTMLElement> FindByAttribute(const wchar_t* tag, const wchar_t* name,
                                            const wchar_t* value) const;

  com::ComPtr<IHTMLElement> FindById(const wchar_t* id) const;
  com::ComPtr<IHTMLElement> FindByName(const wchar_t* name) const;
  com::ComPtr<IHTMLElement> FindByClass(const wchar_t* class_name) const;

  /// @return an element's text in a frame reached by taking the first frame of each document in turn.
  std::wstring TextInFirstFrames(int depth, const wchar_t* id) const;

 private:
  com::ComPtr<IHTMLDocument2> Document() const;

  com::Apartment apartment_;
  com::ComPtr<ITypeLib> types_;
  com::ComPtr<IWebBrowser2> browser_;
};

}  // namespace quillmate::bench
