#include "locate/collections.h"

#include <array>
#include <optional>
#include <string>

#include "com/bstr.h"
#include "com/encoding.h"
#include "com/variant.h"
#include "locate/attribute_text.h"

namespace quillmate {
namespace {

std::optional<std::string> ReadSource(IHTMLElement* element, const Predicate& predicate) {
  com::Bstr text;
  HRESULT result = E_FAIL;
  switch (predicate.source) {
    case Predicate::Source::kId:
      result = element->get_id(text.put());
      break;
    case Predicate::Source::kClassName:
      result = element->get_className(text.put());
      break;
    case Predicate::Source::kText:
      result = element->get_innerText(text.put());
      break;
    case Predicate::Source::kAttribute:
      return ReadAttribute(element, predicate.attribute);
  }
  if (FAILED(result)) return std::nullopt;
  return com::ToAnsi(text.view());
}

constexpr ULONG kBatch = 64;

/// Takes the object out of a fetched value; any other kind of value is let go.
com::ComPtr<IDispatch> TakeObject(VARIANT& value) {
  com::ComPtr<IDispatch> object;
  if (value.vt == VT_DISPATCH) object = value.pdispVal;
  VariantClear(&value);
  return object;
}

}  // namespace

bool MatchPredicate(IHTMLElement* element, const Predicate& predicate) {
  if (predicate.test == Predicate::Test::kNever) return false;
  const auto actual = ReadSource(element, predicate);
  return actual && predicate.Holds(*actual);
}

com::ComPtr<IHTMLElement> CollectionMatches::Next() {
  if (collection_ == nullptr) return {};
  if (const auto* position = std::get_if<Position>(&selector_)) {
    return next_++ == 0 && position->number > 0 ? ItemAt(position->number - 1) : com::ComPtr<IHTMLElement>();
  }
  const auto* predicate = std::get_if<Predicate>(&selector_);
  while (auto element = ItemAt(next_)) {
    ++next_;
    if (predicate == nullptr || MatchPredicate(element.Get(), *predicate)) return element;
  }
  return {};
}

com::ComPtr<IHTMLElement> CollectionMatches::ItemAt(LONG index) {
  // Past its end a collection answers null, so its length need not be asked.
  com::ComPtr<IDispatch> item;
  cut_short_ = FAILED(collection_->item(com::Variant::Int(index).get(), com::Variant::Int(0).get(), &item));
  if (item == nullptr) return {};
  auto element = com::Query<IHTMLElement>(item);
  cut_short_ = element == nullptr;
  return element;
}

CollectionItems::CollectionItems(IHTMLElementCollection* collection) {
  com::ComPtr<IUnknown> items;
  if (collection != nullptr && SUCCEEDED(collection->get__newEnum(&items)))
    source_ = com::Query<IEnumVARIANT>(items);
}

com::ComPtr<IDispatch> CollectionItems::Next() {
  if (next_ == fetched_.size()) FetchMore();
  return next_ < fetched_.size() ? std::move(fetched_[next_++]) : nullptr;
}

void CollectionItems::FetchMore() {
  fetched_.clear();
  next_ = 0;
  if (source_ == nullptr) return;
  std::array<VARIANT, kBatch> values{};
  ULONG count = 0;
  if (FAILED(source_->Next(kBatch, values.data(), &count))) count = 0;
  for (ULONG i = 0; i < count; ++i) fetched_.push_back(TakeObject(values[i]));
  // A short batch was the last one, so the end need not be asked for.
  if (count < kBatch) source_.Reset();
}

}  // namespace quillmate
