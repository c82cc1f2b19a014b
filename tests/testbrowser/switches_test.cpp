// What the real browser is not known to do: each answer of a switch, seen from another process.
#include <mshtml.h>
#include <gtest/gtest.h>

#include "com/owned.h"
#include "running_browser.h"

namespace testbrowser::test {
namespace {

using quillmate::com::ComPtr;
using quillmate::com::Query;
using quillmate::com::Variant;

constexpr wchar_t kBoxPage[] = L"<title>A</title><script>setTimeout(()=>alert('Q?'),300)</script>";

void Set(const RunningBrowser& browser, const wchar_t* setting) {
  const ATOM atom = GlobalAddAtomW(setting);
  SendMessageW(browser.Server(), RegisterWindowMessageW(L"testbrowser switch"), atom, 0);
  GlobalDeleteAtom(atom);
}

HRESULT BusyOf(IWebBrowser2* browser, bool& busy) {
  VARIANT_BOOL answer = VARIANT_FALSE;
  const HRESULT result = browser->get_Busy(&answer);
  busy = answer != VARIANT_FALSE;
  return result;
}

TEST(Switches, ChangeABoxAndWhatTheBrowserSaysMeanwhile) {
  const RunningBrowser running(L"--switch box-title=Other --switch box-owner=none " + PageOf(kBoxPage), L"");
  HWND box = nullptr;
  ASSERT_TRUE(Eventually([&] { return IsWindowVisible(box = running.Window(L"#32770", L"Other")) != 0; }));
  EXPECT_EQ(GetWindow(box, GW_OWNER), nullptr);
  const ComPtr<IWebBrowser2> browser = running.Object();
  ASSERT_NE(browser.Get(), nullptr);
  bool busy = true;
  EXPECT_EQ(BusyOf(browser.Get(), busy), S_OK);
  EXPECT_FALSE(busy);
  Set(running, L"busy-under-box=yes");
  EXPECT_EQ(BusyOf(browser.Get(), busy), S_OK);
  EXPECT_TRUE(busy);
  Set(running, L"box-calls=retry-later");
  EXPECT_EQ(BusyOf(browser.Get(), busy), RPC_E_SERVERCALL_RETRYLATER);
  SendMessageW(GetDlgItem(box, IDCANCEL), BM_CLICK, 0, 0);
  EXPECT_TRUE(Eventually([&] { return BusyOf(browser.Get(), busy) == S_OK; }));
}

TEST(Switches, ChangeWhatTheShellLists) {
  ComPtr<IShellWindows> windows;
  ASSERT_EQ(CoCreateInstance(CLSID_ShellWindows, nullptr, CLSCTX_ALL, __uuidof(IShellWindows),
                             reinterpret_cast<void**>(windows.GetAddressOf())),
            S_OK);
  const auto count = [&] {
    LONG answer = 0;
    windows->get_Count(&answer);
    return answer;
  };
  const LONG before = count();
  const RunningBrowser running(PageOf(L"<title>A</title>"), L"A");
  EXPECT_EQ(count(), before + 1);
  Set(running, L"shell-list=no");
  EXPECT_EQ(count(), before);
  Set(running, L"shell-nulls=1");
  Set(running, L"shell-folders=1");
  ASSERT_EQ(count(), before + 2);
  int folders = 0;
  int nothing = 0;
  for (LONG i = 0; i < before + 2; ++i) {
    ComPtr<IDispatch> item;
    if (windows->Item(Variant::Int(i).get(), &item) == S_FALSE && item == nullptr) ++nothing;
    const auto browser = Query<IWebBrowser2>(item);
    ComPtr<IDispatch> document;
    if (browser == nullptr || FAILED(browser->get_Document(&document)) || document == nullptr) continue;
    if (Query<IHTMLDocument2>(document) == nullptr) ++folders;
  }
  EXPECT_EQ(folders, 1);
  EXPECT_EQ(nothing, 1);
}

TEST(TabWindows, WaitForTheScriptsOfTheirPageTogether) {
  const RunningBrowser running(
      L"--switch hung-frame=answers " +
          PageOf(L"<title>A</title><script>setTimeout(()=>{for(;;);},3000)</script>"),
      L"A");
  HWND server = running.Server();
  HWND frame = running.Frame();
  DWORD_PTR none = 0;
  const auto answers = [&](HWND window) {
    return SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 500, &none) != 0;
  };
  ASSERT_TRUE(Eventually([&] { return !answers(server); }));
  EXPECT_FALSE(answers(GetParent(server)));
  EXPECT_FALSE(answers(GetParent(GetParent(server))));
  EXPECT_TRUE(answers(frame)) << "it is another process's";
}

TEST(ShellWindows, KeepATabThatHangsAndLetOnlyThoseWaitWhoAskIt) {
  const RunningBrowser running(
      PageOf(
          L"<title>A</title><script>setTimeout(()=>{for(var%20end=Date.now()+6000;Date.now()<end;);},1000)</script>"),
      L"A");
  ComPtr<IShellWindows> windows;
  ASSERT_EQ(CoCreateInstance(CLSID_ShellWindows, nullptr, CLSCTX_ALL, __uuidof(IShellWindows),
                             reinterpret_cast<void**>(windows.GetAddressOf())),
            S_OK);
  DWORD_PTR none = 0;
  const auto hangs = [&] {
    return SendMessageTimeoutW(running.Server(), WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 300, &none) == 0;
  };
  ASSERT_TRUE(Eventually(hangs));
  LONG count = 0;
  windows->get_Count(&count);
  ASSERT_GE(count, 1);
  ComPtr<IDispatch> item;
  const ULONGLONG start = GetTickCount64();
  EXPECT_EQ(windows->Item(Variant::Int(count - 1).get(), &item), S_OK);
  EXPECT_NE(item, nullptr);
  EXPECT_LT(GetTickCount64() - start, 2000U);
  EXPECT_TRUE(hangs()) << "the page was to compute longer";
  const auto browser = Query<IWebBrowser2>(item);
  EXPECT_FALSE(hangs());
  quillmate::com::Bstr name;
  ASSERT_NE(browser, nullptr);
  EXPECT_EQ(browser->get_LocationName(name.put()), S_OK);
  EXPECT_EQ(name.view(), L"A");
}

TEST(Switches, LetCallsFailInEveryWay) {
  enum : WPARAM { kReset = 0, kRejectNth = 2, kAnswer = 7 };
  const RunningBrowser running(PageOf(L"<title>A</title>"), L"A");
  const ComPtr<IWebBrowser2> browser = running.Object();
  ASSERT_NE(browser.Get(), nullptr);
  const UINT steer = RegisterWindowMessageW(L"testbrowser call filter");
  const HRESULT answers[] = {RPC_E_CALL_REJECTED, RPC_E_SERVERCALL_RETRYLATER, RPC_E_DISCONNECTED, S_FALSE};
  for (LPARAM kind = 0; kind < 4; ++kind) {
    SendMessageW(running.Server(), steer, kReset, 0);
    SendMessageW(running.Server(), steer, kAnswer, kind);
    SendMessageW(running.Server(), steer, kRejectNth, 2);
    ComPtr<IDispatch> document;
    EXPECT_EQ(browser->get_Document(&document), S_OK);
    EXPECT_EQ(browser->get_Document(&document), answers[kind]) << kind;
    EXPECT_EQ(browser->get_Document(&document), S_OK);
    // The same for an object of the page, early bound and late.
    const auto page = Query<IHTMLDocument2>(document);
    const bool is_null = answers[kind] == S_FALSE;
    SendMessageW(running.Server(), steer, kRejectNth, 1);
    ComPtr<IHTMLElement> body;
    EXPECT_EQ(page->get_body(&body), is_null ? S_OK : answers[kind]) << kind;
    EXPECT_EQ(body, nullptr);
    SendMessageW(running.Server(), steer, kRejectNth, 1);
    LPOLESTR name = const_cast<wchar_t*>(L"title");
    DISPID id = 0;
    EXPECT_EQ(document->GetIDsOfNames(IID_NULL, &name, 1, 0, &id), is_null ? S_OK : answers[kind]) << kind;
    // A text that was asked for is no object: its call is answered.
    SendMessageW(running.Server(), steer, kRejectNth, 1);
    quillmate::com::Bstr title;
    EXPECT_EQ(page->get_title(title.put()), is_null ? S_OK : answers[kind]) << kind;
    EXPECT_EQ(title.view(), is_null ? L"A" : L"");
  }
}

TEST(Switches, MoveTheCallersPointerToTheNewTab) {
  const RunningBrowser running(L"--switch new-tab-pointer=new " + PageOf(L"<title>A</title>"), L"");
  ASSERT_TRUE(Eventually([&] { return TextOf(running.Frame()).starts_with(L"A"); }));
  const ComPtr<IWebBrowser2> browser = running.Object();
  VARIANT none{};
  Variant target = Variant::Text(PageOf(L"<title>B</title>"));
  Variant flags = Variant::Int(0x800);
  browser->Navigate2(const_cast<VARIANT*>(&target.get()), const_cast<VARIANT*>(&flags.get()), &none, &none,
                     &none);
  EXPECT_TRUE(Eventually([&] {
    quillmate::com::Bstr name;
    return browser->get_LocationName(name.put()) == S_OK && name.view() == L"B";
  }));
}

TEST(Frame, ShowsAllOfItselfWhenItIsMaximised) {
  const RunningBrowser running(PageOf(L"<title>A</title>"), L"A");
  ShowWindow(running.Frame(), SW_SHOWMAXIMIZED);
  RECT place{};
  GetWindowRect(running.Frame(), &place);
  EXPECT_EQ(place.left, 0);
  EXPECT_EQ(place.top, 0);
  EXPECT_EQ(place.right, GetSystemMetrics(SM_CXSCREEN));
}

}  // namespace
}  // namespace testbrowser::test
