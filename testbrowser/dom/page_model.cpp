#include "dom/page_model.h"

#include <algorithm>

#include "dom/document_object.h"
#include "dom/frame_browser.h"
#include "dom/object.h"
#include "dom/unknown_answers.h"
#include "dom/window.h"

namespace testbrowser::dom {
namespace {

using engine::FrameId;
using engine::JsonPtr;
using quillmate::com::ComPtr;

std::map<const engine::Page*, std::shared_ptr<PageModel>>& Models() {
  static std::map<const engine::Page*, std::shared_ptr<PageModel>> models;
  return models;
}

HRESULT ResultOf(const engine::CallError& error) {
  switch (error.kind) {
    case engine::CallError::Kind::kFrameGone:
      return E_ACCESSDENIED;
    case engine::CallError::Kind::kEngineGone:
      return RPC_E_DISCONNECTED;
    case engine::CallError::Kind::kScript:
      break;
  }
  OutputDebugStringA(("testbrowser agent: " + error.text + "\n").c_str());
  return E_FAIL;
}

// A question to whatever document there is can be put to the next one when the document goes away meanwhile.
bool OutlivesDocument(const Target& target, std::string_view member) {
  return target.token.empty() && (member.contains(".get") || member == "Agent.hello");
}

}  // namespace

std::shared_ptr<PageModel> PageModel::Of(const std::shared_ptr<engine::Page>& page, BrowserSite* site) {
  auto& model = Models()[page.get()];
  if (model == nullptr) model = std::make_shared<PageModel>(page);
  model->site_ = site;
  return model;
}

void PageModel::Forget(const engine::Page& page) {
  const auto found = Models().find(&page);
  if (found == Models().end()) return;
  found->second->site_ = nullptr;
  // The model may end here and take the page with it, so it leaves the map first.
  const auto model = std::move(found->second);
  Models().erase(found);
}

Reply PageModel::Call(const Target& target, std::string_view member, JsonPtr arguments) {
  const auto alive = shared_from_this();
  JsonPtr again(OutlivesDocument(target, member) ? cJSON_Duplicate(arguments.get(), 1) : nullptr);
  Reply reply = CallOnce(target, member, std::move(arguments));
  const bool document_went = reply.answer == nullptr && reply.result == E_ACCESSDENIED;
  if (document_went && again != nullptr && page_->HasFrame(target.frame)) {
    reply = CallOnce(target, member, std::move(again));
  }
  return reply;
}

Reply PageModel::CallOnce(const Target& target, std::string_view member, JsonPtr arguments) {
  JsonPtr call = engine::JsonArray(engine::JsonText(target.token), engine::JsonNumber(target.number),
                                   engine::JsonText(member), std::move(arguments), TakeDropped(target.frame),
                                   ChosenAnswers());
  auto answer = page_->Call(target.frame, "call", std::move(call));
  Reply reply;
  if (!answer) {
    reply.result = ResultOf(answer.error());
    return reply;
  }
  reply.answer = std::move(*answer);
  reply.result = static_cast<HRESULT>(static_cast<unsigned>(engine::MemberNumber(reply.answer.get(), "hr")));
  Learn(target.frame, reply);
  return reply;
}

void PageModel::Learn(const FrameId& frame, const Reply& reply) {
  const std::string token = reply.token();
  if (token.empty()) return;
  if (const auto before = tokens_.find(frame); before != tokens_.end() && before->second != token) {
    documents_.erase(before->second);
  }
  tokens_[frame] = token;
  DocumentFacts& facts = documents_[token];
  facts.frame = frame;
  facts.mode = static_cast<int>(engine::MemberNumber(reply.answer.get(), "m", facts.mode));
  facts.origin = engine::MemberText(reply.answer.get(), "s");
}

// The numbers of ended objects, {"t": TOKEN, "o": [NUMBER...]}.
JsonPtr PageModel::TakeDropped(const FrameId& frame) {
  const auto token = tokens_.find(frame);
  if (token == tokens_.end()) return engine::JsonNull();
  JsonPtr numbers = engine::JsonArray();
  for (const int number : std::exchange(documents_[token->second].dropped, {})) {
    cJSON_AddItemToArray(numbers.get(), cJSON_CreateNumber(number));
  }
  return engine::JsonObject().Add("t", token->second).Add("o", std::move(numbers)).Take();
}

void PageModel::Ended(const Target& target) {
  objects_.erase(target);
  if (target.number <= Target::kWindow) return;
  if (const auto document = documents_.find(target.token); document != documents_.end()) {
    document->second.dropped.push_back(target.number);
  }
}

int PageModel::ModeOf(const Target& target) const {
  const auto current = tokens_.find(target.frame);
  const auto document =
      documents_.find(current != tokens_.end() && target.token.empty() ? current->second : target.token);
  return document != documents_.end() ? document->second.mode : 11;
}

std::string PageModel::OriginOf(const FrameId& frame) const {
  const auto token = tokens_.find(frame);
  return token != tokens_.end() ? documents_.at(token->second).origin : std::string();
}

// A document of another frame can come out of a frame's scripts before its own agent was ever asked anything.
std::optional<FrameId> PageModel::FrameOfToken(const std::string& token) {
  if (const auto known = documents_.find(token); known != documents_.end()) return known->second.frame;
  std::vector<FrameId> frames = {page_->MainFrame()};
  for (std::size_t i = 0; i < frames.size(); ++i) {
    if (Call({frames[i], {}, Target::kDocument, {}}, "Agent.hello", engine::JsonArray()).token() == token)
      return frames[i];
    std::ranges::copy(page_->ChildFrames(frames[i]), std::back_inserter(frames));
  }
  return std::nullopt;
}

std::optional<FrameId> PageModel::FrameOfElement(const Target& element) {
  const std::string key = element.token + "#" + std::to_string(element.number);
  if (const auto known = element_frames_.find(key);
      known != element_frames_.end() && page_->HasFrame(known->second)) {
    return known->second;
  }
  auto frame = page_->FrameOfElement(element.frame, element.number);
  if (frame) element_frames_[key] = *frame;
  return frame;
}

ComPtr<Object> PageModel::CachedOrNew(const Target& target, std::string_view kind) {
  if (const auto known = objects_.find(target); known != objects_.end()) return known->second;
  // Its number may wait to be dropped: an earlier object of the same number has just ended.
  if (const auto document = documents_.find(target.token); document != documents_.end()) {
    std::erase(document->second.dropped, target.number);
  }
  ComPtr<Object> made;
  if (target.number == Target::kWindow) {
    made = new Window(shared_from_this(), target);
  } else if (target.number == Target::kDocument) {
    made = new Document(shared_from_this(), target);
  } else {
    made = new Object(shared_from_this(), target, KindNamed(kind));
  }
  objects_[target] = made.Get();
  return made;
}

ComPtr<Object> PageModel::ObjectOf(const cJSON* reference, const FrameId& from) {
  const std::string kind = engine::MemberText(reference, "$");
  const std::string token = engine::MemberText(reference, "t");
  const auto frame = FrameOfToken(token);
  if (!frame) return nullptr;
  const Target target{*frame, token, static_cast<int>(engine::MemberNumber(reference, "o")), {}};
  if (kind == "object") return CachedOrNew(target, engine::MemberText(reference, "k"));
  if (kind == "window") return WindowOf(*frame, from);
  if (kind == "document") return CachedOrNew({*frame, token, Target::kDocument, {}}, "document");
  const auto content = FrameOfElement(target);
  if (!objects_.contains(target)) Ended(target);
  if (!content) return nullptr;
  return kind == "frame" ? WindowOf(*content, from) : DocumentOf(*content, from).value_or(nullptr);
}

ComPtr<Object> PageModel::WindowOf(const FrameId& frame, const FrameId& viewer) {
  return CachedOrNew({frame, {}, Target::kWindow, viewer}, "window");
}

std::expected<ComPtr<Object>, HRESULT> PageModel::DocumentOf(const FrameId& frame, const FrameId& viewer) {
  const Reply hello = Call({frame, {}, Target::kDocument, {}}, "Agent.hello", engine::JsonArray());
  if (FAILED(hello.result)) return std::unexpected(hello.result);
  const bool own = viewer.empty() || viewer == frame;
  // An opaque origin is equal to no other, not even to one spelled the same.
  const std::string origin = OriginOf(frame);
  if (!own && (origin == "null" || origin != OriginOf(viewer))) return std::unexpected(E_ACCESSDENIED);
  return CachedOrNew({frame, hello.token(), Target::kDocument, {}}, "document");
}

ComPtr<Object> PageModel::ContainerOf(const FrameId& frame) {
  return CachedOrNew({frame, {}, Target::kDocument, {}}, "container");
}

ComPtr<IWebBrowser2> PageModel::BrowserOf(const FrameId& frame) {
  if (frame != page_->MainFrame()) return MakeObject<FrameBrowser>(shared_from_this(), frame);
  return site_ != nullptr ? site_->Browser() : nullptr;
}

ComPtr<IHTMLDocument2> ContainerDocument(std::shared_ptr<engine::Page> page, BrowserSite* site) {
  const auto model = PageModel::Of(page, site);
  return quillmate::com::Query<IHTMLDocument2>(model->ContainerOf(page->MainFrame()));
}

void ForgetSite(const engine::Page& page) { PageModel::Forget(page); }

}  // namespace testbrowser::dom
