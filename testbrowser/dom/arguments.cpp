#include "dom/arguments.h"

#include <cmath>
#include <limits>
#include <string>

#include "com/encoding.h"
#include "com/owned.h"
#include "dom/object.h"

namespace testbrowser::dom {
namespace {

using engine::JsonArray;
using engine::JsonPtr;
using quillmate::com::ComPtr;

JsonPtr Missing() { return engine::JsonObject().Add("$", "missing").Take(); }

JsonPtr EncodeObject(IUnknown* object) {
  if (object == nullptr) return engine::JsonNull();
  const auto own = quillmate::com::Query<Object>(object);
  return own != nullptr ? own->Reference() : nullptr;
}

// The conversions of the platform take their source as not const, but leave it alone.
VARIANT* Source(const VARIANT& value) { return const_cast<VARIANT*>(&value); }

JsonPtr EncodeVariant(const VARIANT& value);

JsonPtr EncodeByReference(const VARIANT& value) {
  quillmate::com::Variant plain;
  return SUCCEEDED(VariantCopyInd(plain.put(), Source(value))) ? EncodeVariant(plain.get()) : nullptr;
}

JsonPtr EncodeNumber(const VARIANT& value) {
  quillmate::com::Variant number;
  const HRESULT changed = VariantChangeType(number.put(), Source(value), 0, VT_R8);
  return SUCCEEDED(changed) ? engine::JsonNumber(V_R8(&number.get())) : nullptr;
}

JsonPtr EncodeVariant(const VARIANT& value) {
  if ((V_VT(&value) & VT_BYREF) != 0) return EncodeByReference(value);
  switch (V_VT(&value)) {
    case VT_EMPTY:
    case VT_ERROR:
      return Missing();
    case VT_NULL:
      return engine::JsonNull();
    case VT_BOOL:
      return engine::JsonBool(V_BOOL(&value) != VARIANT_FALSE);
    case VT_BSTR:
      return engine::JsonText(quillmate::com::ToUtf8(TextOf(V_BSTR(&value))));
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return EncodeObject(V_UNKNOWN(&value));
    default:
      return EncodeNumber(value);
  }
}

struct Encoder {
  JsonPtr operator()(std::wstring_view text) const { return engine::JsonText(quillmate::com::ToUtf8(text)); }
  JsonPtr operator()(double number) const { return engine::JsonNumber(number); }
  JsonPtr operator()(bool value) const { return engine::JsonBool(value); }
  JsonPtr operator()(const VARIANT* value) const {
    return value != nullptr ? EncodeVariant(*value) : Missing();
  }
  JsonPtr operator()(IUnknown* object) const { return EncodeObject(object); }
};

BSTR NewText(std::string_view utf8) {
  const std::wstring text = quillmate::com::FromUtf8(utf8);
  return SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}

double NumberOf(const cJSON* value) {
  if (cJSON_IsBool(value)) return cJSON_IsTrue(value) ? 1 : 0;
  return cJSON_IsNumber(value) ? value->valuedouble : 0;
}

bool IsLong(double number) {
  return number == std::trunc(number) && number >= std::numeric_limits<LONG>::min() &&
         number <= std::numeric_limits<LONG>::max() && !(number == 0 && std::signbit(number));
}

void PutNumber(double number, VARIANT* place) {
  if (IsLong(number)) {
    V_VT(place) = VT_I4;
    V_I4(place) = static_cast<LONG>(number);
  } else {
    V_VT(place) = VT_R8;
    V_R8(place) = number;
  }
}

// What JSON has no own form for.
HRESULT PutSpecial(const cJSON* value, ObjectSource& objects, VARIANT* place) {
  const std::string kind = engine::MemberText(value, "$");
  if (kind == "r4") {
    V_VT(place) = VT_R4;
    V_R4(place) = static_cast<float>(engine::MemberNumber(value, "v"));
  } else if (kind == "number") {  // NaN and the infinities
    V_VT(place) = VT_R8;
    V_R8(place) = std::strtod(engine::MemberText(value, "v").c_str(), nullptr);
  } else if (kind == "no text") {
    V_VT(place) = VT_BSTR;
    V_BSTR(place) = nullptr;
  } else {
    return ResultPlace(place).PutObject(objects.ObjectOf(value));
  }
  return S_OK;
}

}  // namespace

JsonPtr EncodeArguments(const std::vector<Argument>& arguments) {
  JsonPtr list = JsonArray();
  for (const Argument& argument : arguments) {
    JsonPtr encoded = std::visit(Encoder{}, argument);
    if (encoded == nullptr) return nullptr;
    cJSON_AddItemToArray(list.get(), encoded.release());
  }
  return list;
}

HRESULT PutVariant(const cJSON* value, ObjectSource& objects, VARIANT* place) {
  VariantInit(place);
  if (value == nullptr) return S_OK;
  if (cJSON_IsNull(value)) {
    V_VT(place) = VT_NULL;
  } else if (cJSON_IsBool(value)) {
    V_VT(place) = VT_BOOL;
    V_BOOL(place) = cJSON_IsTrue(value) ? VARIANT_TRUE : VARIANT_FALSE;
  } else if (cJSON_IsNumber(value)) {
    PutNumber(value->valuedouble, place);
  } else if (cJSON_IsString(value)) {
    V_VT(place) = VT_BSTR;
    V_BSTR(place) = NewText(cJSON_GetStringValue(value));
  } else {
    return PutSpecial(value, objects, place);
  }
  return S_OK;
}

HRESULT ResultPlace::Clear() const {
  if (kind_ == Kind::kNone) return S_OK;
  if (place_ == nullptr) return E_POINTER;
  switch (kind_) {
    case Kind::kText:
      *static_cast<BSTR*>(place_) = nullptr;
      break;
    case Kind::kLong:
      *static_cast<LONG*>(place_) = 0;
      break;
    case Kind::kShort:
    case Kind::kBool:
      *static_cast<short*>(place_) = 0;
      break;
    case Kind::kFloat:
      *static_cast<float*>(place_) = 0;
      break;
    case Kind::kDouble:
      *static_cast<double*>(place_) = 0;
      break;
    case Kind::kVariant:
      VariantInit(static_cast<VARIANT*>(place_));
      break;
    default:
      *static_cast<void**>(place_) = nullptr;
      break;
  }
  return S_OK;
}

HRESULT ResultPlace::PutText(const cJSON* value) const {
  auto& text = *static_cast<BSTR*>(place_);
  if (cJSON_IsString(value)) text = NewText(cJSON_GetStringValue(value));
  return S_OK;
}

HRESULT ResultPlace::Put(const cJSON* value, ObjectSource& objects) const {
  const double number = NumberOf(value);
  switch (kind_) {
    case Kind::kNone:
      return S_OK;
    case Kind::kText:
      return PutText(value);
    case Kind::kLong:
      *static_cast<LONG*>(place_) = static_cast<LONG>(number);
      return S_OK;
    case Kind::kShort:
      *static_cast<short*>(place_) = static_cast<short>(number);
      return S_OK;
    case Kind::kBool:
      *static_cast<VARIANT_BOOL*>(place_) = number != 0 ? VARIANT_TRUE : VARIANT_FALSE;
      return S_OK;
    case Kind::kFloat:
      *static_cast<float*>(place_) = static_cast<float>(number);
      return S_OK;
    case Kind::kDouble:
      *static_cast<double*>(place_) = number;
      return S_OK;
    case Kind::kVariant:
      return PutVariant(value, objects, static_cast<VARIANT*>(place_));
    case Kind::kObject:
      return cJSON_IsObject(value) ? PutObject(objects.ObjectOf(value)) : S_OK;
  }
  return E_UNEXPECTED;
}

HRESULT ResultPlace::PutObject(const ComPtr<IUnknown>& object) const {
  if (kind_ == Kind::kVariant) {
    auto* variant = static_cast<VARIANT*>(place_);
    V_VT(variant) = VT_DISPATCH;
    V_DISPATCH(variant) = quillmate::com::Query<IDispatch>(object).Detach();
    return S_OK;
  }
  if (kind_ != Kind::kObject || object == nullptr) return S_OK;
  return object->QueryInterface(*iid_, static_cast<void**>(place_));
}

}  // namespace testbrowser::dom
