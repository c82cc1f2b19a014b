#include "locate/current_page.h"

#include <string>
#include <utility>

#include "api/messages.h"
#include "api/validation.h"
#include "locate/document_search.h"
#include "locate/locator_syntax.h"

namespace quillmate {
namespace {

/// A browser that is there but gave no document was not asked, or did not answer.
PageMissing WhyMissing(const WindowHolder& holder) {
  return !holder.WasSilent() && holder.GetWindowHandle() == nullptr ? PageMissing::kGone
                                                                    : PageMissing::kSilent;
}

com::ComPtr<IHTMLElement> FindRemembered(Session& session, std::string_view locator) {
  if (auto element = session.elements().Recall(locator)) return element;
  if (!Matches(Pattern::kAnchor, locator)) return {};
  return session.elements().Recall(ValueOf(locator));
}

ElementOrFailure FindOnPage(const PageOrMissing& page, std::string_view locator) {
  if (page) return FindFirst(page->back().document.Get(), locator);
  return std::unexpected(SearchFailure{{messages::kElementNotFound}, page.error() != PageMissing::kSilent});
}

}  // namespace

PageOrMissing WalkFrames(Session& session) {
  const WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr) return std::unexpected(PageMissing::kGone);
  FramePath path{{holder->GetDocument(), nullptr}};
  if (path.front().document == nullptr) return std::unexpected(WhyMissing(*holder));
  for (const std::string& locator : session.Current()->frame_path) {
    const HRESULT result = EnterFrame(path, locator);
    if (result != S_OK) return std::unexpected(FAILED(result) ? PageMissing::kSilent : PageMissing::kGone);
  }
  return path;
}

com::ComPtr<IHTMLDocument2> GetFrameDocument(Session& session) {
  auto path = WalkFrames(session);
  return path ? std::move(path->back().document) : nullptr;
}

bool IsTargetUsable(Session& session) {
  const WindowHolder* holder = session.ValidHolder();
  return holder != nullptr && holder->GetDocument() != nullptr;
}

Response AskTarget(Session& session, std::chrono::milliseconds limit) {
  const WindowHolder* holder = session.ValidHolder();
  return holder != nullptr ? holder->Ask(limit) : Response::kGone;
}

bool WasTargetSilent(Session& session) {
  const WindowHolder* holder = session.ValidHolder();
  return holder != nullptr && holder->WasSilent();
}

OrFailure<FramePath> BringPageToTop(Session& session, IHTMLElement* element) {
  auto path = WalkFrames(session);
  if (element == nullptr || !path) return Failed(messages::kElementNotFound);
  WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr || !holder->BringToTop()) return Failed(messages::kSwitchTabFailed);
  return std::move(*path);
}

ElementOrFailure FindElement(Session& session, std::string_view locator) {
  if (auto remembered = FindRemembered(session, locator)) return remembered;
  return FindOnPage(WalkFrames(session), locator);
}

ElementOrFailure FindElement(Session& session, const PageOrMissing& page, std::string_view locator) {
  if (auto remembered = FindRemembered(session, locator)) return remembered;
  return FindOnPage(page, locator);
}

ElementOrFailure ResolveTargetElement(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return std::unexpected(SearchFailure{target.error()});
  return FindElement(session, *target);
}

}  // namespace quillmate
