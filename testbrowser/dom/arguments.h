// The arguments and the result of one COM call on their way to the in-page agent and back.
#pragma once

#include <windows.h>
#include <oaidl.h>
#include <string_view>
#include <variant>
#include <vector>

#include "com/owned.h"
#include "engine/json.h"

namespace testbrowser::dom {

/// One argument, not owned.
using Argument = std::variant<std::wstring_view, double, bool, const VARIANT*, IUnknown*>;

inline std::wstring_view TextOf(BSTR text) { return {text != nullptr ? text : L"", SysStringLen(text)}; }

/// The arguments as JSON for the agent: what has no value is {"$":"missing"}, an object of a page
/// {"$":"object","t":TOKEN,"o":NUMBER}.
/// @return null when one of them cannot be handed to a page (an object of another program).
engine::JsonPtr EncodeArguments(const std::vector<Argument>& arguments);

/// Makes COM objects of the agent's references.
class ObjectSource {
 public:
  virtual ~ObjectSource() = default;
  /// @return null when the reference names nothing that is there.
  virtual quillmate::com::ComPtr<IUnknown> ObjectOf(const cJSON* reference) = 0;
};

/// Where a caller wants the result: the last, outgoing parameter of a method.
class ResultPlace {
 public:
  /// A method without a result.
  ResultPlace() = default;
  explicit ResultPlace(BSTR* place) : kind_(Kind::kText), place_(place) {}
  explicit ResultPlace(LONG* place) : kind_(Kind::kLong), place_(place) {}
  explicit ResultPlace(short* place) : kind_(Kind::kShort), place_(place) {}
  explicit ResultPlace(float* place) : kind_(Kind::kFloat), place_(place) {}
  explicit ResultPlace(double* place) : kind_(Kind::kDouble), place_(place) {}
  explicit ResultPlace(VARIANT* place) : kind_(Kind::kVariant), place_(place) {}
  template <class Interface>
  explicit ResultPlace(Interface** place) : kind_(Kind::kObject), place_(place), iid_(&__uuidof(Interface)) {}
  static ResultPlace Bool(VARIANT_BOOL* place) {
    ResultPlace result(place);
    result.kind_ = Kind::kBool;
    return result;
  }

  /// Whether the caller wants an object.
  bool IsObject() const { return kind_ == Kind::kObject; }
  /// Empties the place, as every call does before it can fail.
  /// @return E_POINTER when the caller gave none.
  HRESULT Clear() const;
  /// Writes the agent's answer (null for none) in the form the caller wants.
  HRESULT Put(const cJSON* value, ObjectSource& objects) const;
  /// Writes an object in the form the caller wants (null too).
  HRESULT PutObject(const quillmate::com::ComPtr<IUnknown>& object) const;

 private:
  enum class Kind { kNone, kText, kLong, kShort, kBool, kFloat, kDouble, kVariant, kObject };
  HRESULT PutText(const cJSON* value) const;

  Kind kind_ = Kind::kNone;
  void* place_ = nullptr;
  const IID* iid_ = nullptr;
};

/// Writes the agent's value as a VARIANT: a whole number VT_I4, another number VT_R8, null VT_NULL, no value
/// VT_EMPTY, an object VT_DISPATCH.
HRESULT PutVariant(const cJSON* value, ObjectSource& objects, VARIANT* place);

}  // namespace testbrowser::dom
