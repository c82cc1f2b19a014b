#include "dom/typed_members.h"

#include "dom/type_libraries.h"

namespace testbrowser::dom {
namespace {

void AddMembers(ITypeInfo& info, std::map<DISPID, TypedMember>& members) {
  FUNCDESC* function = nullptr;
  for (UINT i = 0; SUCCEEDED(info.GetFuncDesc(i, &function)); ++i) {
    TypedMember& member = members[function->memid];
    if (member.info == nullptr) member.info = &info;
    member.kinds |= function->invkind;
    info.ReleaseFuncDesc(function);
  }
}

}  // namespace

const std::map<DISPID, TypedMember>& TypedMembers(const FacetType& type) {
  static std::map<const FacetType*, std::map<DISPID, TypedMember>> known;
  auto& members = known[&type];
  if (!members.empty()) return members;
  for (const IID* id : type.ids) {
    if (ITypeInfo* info = TypeInfoOf(*id)) AddMembers(*info, members);
  }
  return members;
}

DISPID FindTypedMember(const FacetType& type, BSTR name) {
  DISPID member = DISPID_UNKNOWN;
  for (const IID* id : type.ids) {
    ITypeInfo* info = TypeInfoOf(*id);
    if (info != nullptr && SUCCEEDED(info->GetIDsOfNames(&name, 1, &member))) return member;
  }
  return DISPID_UNKNOWN;
}

}  // namespace testbrowser::dom
