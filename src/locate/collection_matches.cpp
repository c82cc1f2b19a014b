// Items by position or by predicate.
#include "locate/collection_matches.h"

#include "com/bstr.h"
#include "com/encoding.h"
#include "com/variant.h"
#include "locate/attribute_text.h"

namespace quillmate::locate {
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

}  // namespace quillmate::locate
