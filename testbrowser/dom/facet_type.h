// One interface of a page's object, made when it is first asked for. All facets of an object share its life.
#pragma once

#include <windows.h>
#include <memory>
#include <string_view>
#include <vector>

namespace testbrowser::dom {

class Object;

class FacetBase {
 public:
  explicit FacetBase(Object& owner) : owner_(owner) {}
  FacetBase(const FacetBase&) = delete;
  FacetBase& operator=(const FacetBase&) = delete;
  virtual ~FacetBase() = default;
  /// The interface itself, for QueryInterface.
  virtual void* Interface() = 0;

 protected:
  Object& owner() const { return owner_; }

 private:
  Object& owner_;
};

struct FacetType {
  std::string_view name;
  /// The interface and those it derives from.
  std::vector<const IID*> ids;
  std::unique_ptr<FacetBase> (*make)(Object& owner);
};

/// Every generated facet.
const std::vector<FacetType>& FacetTypes();

}  // namespace testbrowser::dom
