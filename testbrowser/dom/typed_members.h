// The members that the type library gives an interface, by number.
#pragma once

#include <windows.h>
#include <oaidl.h>
#include <map>

#include "dom/facet_type.h"

namespace testbrowser::dom {

struct TypedMember {
  /// Describes the member; the interface itself or one that it derives from.
  ITypeInfo* info = nullptr;
  /// INVOKE_FUNC, INVOKE_PROPERTYGET … together.
  int kinds = 0;
};

/// All members of a facet's interface and those it derives from.
const std::map<DISPID, TypedMember>& TypedMembers(const FacetType& type);

/// The number of a member by its name, in upper or lower case: the library keeps one spelling for all names
/// that differ in case alone ("URL" is "url" there).
/// @return DISPID_UNKNOWN when there is none.
DISPID FindTypedMember(const FacetType& type, BSTR name);

}  // namespace testbrowser::dom
