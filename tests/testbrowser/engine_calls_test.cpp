// Calls into pages that are being left, that have input before them, or whose answer gets lost.
#include <thread>

#include "engine/page_parts.h"
#include "engine_fixture.h"
#include "support/page_server.h"

namespace testbrowser::engine {
namespace {

using quillmate::test::PageServer;

TEST_F(EngineTest, APageThatIsLeftAnswersForAsLongAsTheServerTakes) {
  PageServer server;
  page_->Navigate(server.Page("/old", "<title>old</title><iframe srcdoc='<p>inner</p>'></iframe>"));
  ASSERT_TRUE(Await([&] { return recorder_.title == "old" && !recorder_.events.empty(); }));
  ASSERT_TRUE(Await([&] { return recorder_.events.back() == "finished"; }));
  const FrameId frame = page_->ChildFrames(page_->MainFrame()).at(0);
  const std::string leave = "void (location.href = '" + server.EndlessPage() + "')";
  const auto ask = [&] {
    const ULONGLONG start = GetTickCount64();
    EXPECT_EQ(Read("document.title"), "\"old\"");
    EXPECT_EQ(Read(frame, "document.body.innerText"), "\"inner\"");
    EXPECT_EQ(Read("no.such.thing").substr(0, 16), "!ReferenceError:");
    page_->AwaitScripts();
    EXPECT_LT(GetTickCount64() - start, 2000U);
  };
  EXPECT_EQ(Read(leave), "null");
  ask();  // some of these are out before it is known that the page is left
  ASSERT_TRUE(Await([&] { return recorder_.events.back() == "started"; }));
  ask();
  page_->Navigate(server.EndlessPage());  // left a second time before the first was answered
  ask();
  page_->Stop();
  ASSERT_TRUE(Await([&] { return recorder_.events.back() == "finished"; }));
  ask();
  page_->Reload();
  page_->Navigate(server.Page("/new", "<title>new</title>"));
  ASSERT_TRUE(Await([&] { return recorder_.title == "new"; }));
  EXPECT_EQ(Read("document.title"), "\"new\"");
}

TEST_F(EngineTest, ACallRunsOnceThoughItsPageIsLeftMeanwhile) {
  PageServer server;
  Show("<script>var runs = 0</script>");
  for (int round = 0; round < 5; ++round) {
    Read("void (location.href = '" + server.EndlessPage() + "')");
    EXPECT_EQ(Read("++runs"), std::to_string(2 * round + 1));
    page_->Stop();
    EXPECT_EQ(Read("++runs"), std::to_string(2 * round + 2));
  }
}

TEST_F(EngineTest, CallsComeAfterTheInputBeforeThem) {
  page_->SetViewport(800, 600, 0, 0);
  Show(
      "<script>var log = ''; const busy = (name) => (event) => {"
      "  const end = performance.now() + 150; while (performance.now() < end);"
      "  log += name + event.clientX + ' '; };"
      "for (const type of ['mousedown', 'mouseup', 'click']) addEventListener(type, busy(type));"
      "var last = 0; addEventListener('mousemove', (event) => last = event.clientX)</script>");
  using Type = MouseInput::Type;
  page_->Mouse({Type::kPress, 50, 50, MouseButton::kLeft, kLeftHeld, 1, 0});
  for (int x = 51; x <= 60; ++x) page_->Mouse({Type::kMove, x, 50, MouseButton::kNone, kLeftHeld, 0, 0});
  page_->Mouse({Type::kRelease, 60, 50, MouseButton::kLeft, 0, 1, 0});
  EXPECT_EQ(Read("log"), "\"mousedown50 mouseup60 click60 \"");
  for (int x = 100; x <= 120; ++x) page_->Mouse({Type::kMove, x, 50, MouseButton::kNone, 0, 0, 0});
  EXPECT_EQ(Read("last"), "120");
}

TEST_F(EngineTest, CallsAreAnsweredWhileInputWaitsInABox) {
  page_->SetViewport(800, 600, 0, 0);
  Show("<title>under</title><script>addEventListener('mousedown', () => alert('down'))</script>");
  page_->Mouse({MouseInput::Type::kPress, 50, 50, MouseButton::kLeft, kLeftHeld, 1, 0});
  EXPECT_EQ(Read("document.title"), "\"under\"");
  ASSERT_EQ(recorder_.boxes.size(), 1U);
  recorder_.answer_box({true, ""});
}

/// The other end of a connection: answers everything but calls, until it is hung up on.
void BeForgetful(UniqueSocket socket) {
  std::string unread;
  char chunk[4096];
  for (int size; (size = recv(socket.get(), chunk, sizeof chunk, 0)) > 0;) {
    unread.append(chunk, static_cast<std::size_t>(size));
    for (auto end = unread.find('\0'); end != std::string::npos; end = unread.find('\0')) {
      const JsonPtr request = ParseJson(unread.substr(0, end));
      unread.erase(0, end + 1);
      if (MemberText(request.get(), "method") == "Runtime.callFunctionOn") continue;
      JsonObject reply;
      reply.Add("id", MemberNumber(request.get(), "id")).Add("result", JsonObject().Take());
      const std::string text = PrintJson(reply.Take().get());
      send(socket.get(), text.c_str(), static_cast<int>(text.size() + 1), 0);
    }
  }
}

TEST(LostReply, EndsItsCallAndLeavesATrace) {
  auto sockets = ConnectedSocketPair();
  ASSERT_TRUE(sockets);
  std::jthread chromium(BeForgetful, std::move(sockets->theirs));
  const auto connection = std::make_shared<Connection>(std::move(sockets->ours));
  struct : PageHost {
    std::shared_ptr<Page> OpenDialog(PageParts&, const cJSON*, std::function<void(JsonPtr)>) override {
      return nullptr;
    }
  } host;
  auto parts = std::make_unique<PageParts>(Session{connection, "s"}, "main", host);
  parts->HandleEvent(
      "Runtime.executionContextCreated",
      ParseJson(R"({"context":{"id":1,"uniqueId":"1","auxData":{"isDefault":true,"frameId":"main"}}})")
          .get());
  Page page(std::move(parts));
  const ULONGLONG start = GetTickCount64();
  const auto answer = page.Call("main", "add");
  ASSERT_FALSE(answer);
  EXPECT_EQ(answer.error().kind, CallError::Kind::kFrameGone);
  EXPECT_LT(GetTickCount64() - start, 6000U);
}

}  // namespace
}  // namespace testbrowser::engine
