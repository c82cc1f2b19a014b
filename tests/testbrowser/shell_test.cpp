// The test browser from outside: its windows, its browser object and its life, asked from another process.
#include "running_browser.h"

#include <oleacc.h>
#include <gtest/gtest.h>

#include "com/encoding.h"
#include "com/owned.h"

namespace testbrowser::test {
namespace {

using quillmate::com::Bstr;
using quillmate::com::ComPtr;
using quillmate::com::Query;
using quillmate::com::Variant;

constexpr LONG kInNewTab = 0x800;

HRESULT Navigate(IWebBrowser2* browser, const std::wstring& address, LONG flags) {
  Variant target = Variant::Text(address);
  Variant chosen = Variant::Int(flags);
  VARIANT none{};
  return browser->Navigate2(const_cast<VARIANT*>(&target.get()), const_cast<VARIANT*>(&chosen.get()), &none,
                            &none, &none);
}

bool IsGone(HRESULT result) {
  return result == RPC_E_DISCONNECTED || result == HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE) ||
         result == HRESULT_FROM_WIN32(RPC_S_CALL_FAILED);
}

struct Chain {
  const wchar_t* arguments;
  std::vector<std::wstring> classes;
};
class TabChain : public testing::TestWithParam<Chain> {};

TEST_P(TabChain, LeadsFromTheFrameToThePage) {
  const RunningBrowser browser(GetParam().arguments + PageOf(L"<title>A</title>"), L"A");
  std::vector<std::wstring> classes;
  for (HWND window = browser.Frame(); window != nullptr; window = GetWindow(window, GW_CHILD)) {
    classes.push_back(ClassOf(window));
  }
  EXPECT_EQ(classes, GetParam().classes);
}

INSTANTIATE_TEST_SUITE_P(Shells, TabChain,
                         testing::Values(Chain{L"",
                                               {L"IEFrame", L"Frame Tab", L"TabWindowClass",
                                                L"Shell DocObject View", L"Internet Explorer_Server"}},
                                         Chain{L"--shell hosted ",
                                               {L"Chrome_WidgetWin_1", L"AtlAxWin100", L"Shell Embedding",
                                                L"Shell DocObject View", L"Internet Explorer_Server"}}));

ComPtr<IAccessible> ChildOf(IAccessible* parent, LONG number) {
  ComPtr<IDispatch> child;
  parent->get_accChild(Variant::Int(number).get(), &child);
  return Query<IAccessible>(child);
}

std::wstring NameOf(IAccessible* node) {
  Bstr name;
  node->get_accName(Variant::Int(CHILDID_SELF).get(), name.put());
  return std::wstring(name.view());
}

TEST(TabStrip, NamesTheTabsAndSwitchesToOne) {
  const RunningBrowser browser(PageOf(L"<title>A</title>"), L"");
  ASSERT_TRUE(Eventually([&] { return TextOf(browser.Frame()).starts_with(L"A"); }));
  ASSERT_EQ(Navigate(browser.Object().Get(), PageOf(L"<title>B</title>"), kInNewTab), S_OK);
  ASSERT_TRUE(Eventually([&] { return TextOf(browser.Frame()).starts_with(L"B"); }));

  HWND strip = browser.Frame();
  for (const wchar_t* name : {L"WorkerW", L"ReBarWindow32", L"TabBandClass", L"DirectUIHWND"}) {
    strip = Child(strip, name);
  }
  ComPtr<IAccessible> root;
  ASSERT_EQ(AccessibleObjectFromWindow(strip, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                       reinterpret_cast<void**>(root.GetAddressOf())),
            S_OK);
  const ComPtr<IAccessible> row = ChildOf(root.Get(), 1);
  std::vector<std::wstring> names{NameOf(row.Get())};
  for (LONG i = 1; i <= 3; ++i) names.push_back(NameOf(ChildOf(row.Get(), i).Get()));
  EXPECT_EQ(names, (std::vector<std::wstring>{L"Tab Row", L"A", L"B", L"New Tab"}));
  EXPECT_EQ(ChildOf(row.Get(), 1)->accDoDefaultAction(Variant::Int(CHILDID_SELF).get()), S_OK);
  EXPECT_EQ(TextOf(browser.Frame()), L"A - Internet Explorer");
}

TEST(BrowserObject, AnswersBeforeAndAfterItsDocument) {
  ComPtr<IWebBrowser2> browser;
  ASSERT_EQ(CoCreateInstance(CLSID_InternetExplorer, nullptr, CLSCTX_LOCAL_SERVER, __uuidof(IWebBrowser2),
                             reinterpret_cast<void**>(browser.GetAddressOf())),
            S_OK);
  READYSTATE state = READYSTATE_COMPLETE;
  ComPtr<IDispatch> document;
  Bstr address;
  EXPECT_EQ(browser->get_ReadyState(&state), S_OK);
  EXPECT_EQ(state, READYSTATE_UNINITIALIZED);
  EXPECT_EQ(browser->get_Document(&document), S_FALSE);
  EXPECT_EQ(document.Get(), nullptr);
  EXPECT_EQ(browser->get_LocationURL(address.put()), S_FALSE);
  EXPECT_NE(address.get(), nullptr);

  const std::wstring page = PageOf(L"<title>A</title>");
  ASSERT_EQ(Navigate(browser.Get(), page, 0), S_OK);
  EXPECT_TRUE(
      Eventually([&] { return browser->get_ReadyState(&state) == S_OK && state == READYSTATE_COMPLETE; }));
  EXPECT_EQ(browser->get_Document(&document), S_OK);
  EXPECT_EQ(browser->get_LocationURL(address.put()), S_OK);
  EXPECT_EQ(address.view(), page);
  EXPECT_EQ(browser->GoBack(), E_FAIL);

  EXPECT_EQ(browser->Quit(), S_OK);
  EXPECT_TRUE(Eventually([&] { return IsGone(browser->get_ReadyState(&state)); }));
}

TEST(ShellWindows, ListTheTabsOfEveryBrowserAndForgetTheDead) {
  ComPtr<IShellWindows> windows;
  ASSERT_EQ(CoCreateInstance(CLSID_ShellWindows, nullptr, CLSCTX_ALL, __uuidof(IShellWindows),
                             reinterpret_cast<void**>(windows.GetAddressOf())),
            S_OK);
  LONG before = 0;
  LONG with_two = 0;
  LONG after = 0;
  windows->get_Count(&before);
  {
    const RunningBrowser a(PageOf(L"<title>A</title>"), L"A");
    const RunningBrowser b(L"--shell hosted " + PageOf(L"<title>B</title>"), L"B");
    windows->get_Count(&with_two);
    EXPECT_EQ(with_two, before + 2);
    ComPtr<IDispatch> item;
    EXPECT_EQ(windows->Item(Variant::Int(with_two - 1).get(), &item), S_OK);
    EXPECT_NE(Query<IWebBrowser2>(item).Get(), nullptr);
    EXPECT_EQ(windows->Item(Variant::Int(with_two).get(), &item), S_FALSE);
    EXPECT_EQ(item.Get(), nullptr);
  }
  EXPECT_TRUE(Eventually([&] { return windows->get_Count(&after) == S_OK && after == before; }));
}

TEST(NativeBox, BlocksItsFrameUntilItIsAnswered) {
  const RunningBrowser browser(
      PageOf(L"<title>A</title><script>setTimeout(()=>{document.title='P'+prompt('Q?')})</script>"), L"");
  HWND box = nullptr;
  ASSERT_TRUE(Eventually([&] { return IsWindowVisible(box = browser.Window(L"#32770", L"")) != 0; }));
  HWND frame = browser.Window(L"IEFrame", L"");
  EXPECT_EQ(GetWindow(box, GW_OWNER), frame);
  EXPECT_FALSE(IsWindowEnabled(frame));
  EXPECT_FALSE(TextOf(GetDlgItem(box, IDOK)).empty());
  HWND label = Child(box, L"Static");
  EXPECT_EQ(TextOf(FindWindowExW(box, label, L"Static", nullptr)), L"Q?");

  SendMessageW(Child(box, L"Edit"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"x"));
  SendMessageW(GetDlgItem(box, IDOK), WM_LBUTTONDOWN, 0, 0);
  SendMessageW(GetDlgItem(box, IDOK), WM_LBUTTONUP, 0, 0);
  EXPECT_TRUE(Eventually([&] { return TextOf(frame).starts_with(L"Px"); }));
  EXPECT_TRUE(IsWindowEnabled(frame));
}

TEST(CallFilter, CountsCallsAndRefusesTheOneAskedFor) {
  enum : WPARAM { kReset = 0, kTotal = 1, kRejectNth = 2, kRejected = 6 };
  const RunningBrowser running(PageOf(L"<title>A</title>"), L"A");
  const ComPtr<IWebBrowser2> browser = running.Object();
  ASSERT_NE(browser.Get(), nullptr);
  HWND server = running.Server();
  const UINT steer = RegisterWindowMessageW(L"testbrowser call filter");
  VARIANT_BOOL busy = VARIANT_FALSE;

  SendMessageW(server, steer, kReset, 0);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(browser->get_Busy(&busy), S_OK);
  EXPECT_EQ(SendMessageW(server, steer, kTotal, 0), 3);
  SendMessageW(server, steer, kRejectNth, 2);
  EXPECT_EQ(browser->get_Busy(&busy), S_OK);
  EXPECT_EQ(browser->get_Busy(&busy), RPC_E_CALL_REJECTED);
  EXPECT_EQ(browser->get_Busy(&busy), S_OK);
  EXPECT_EQ(SendMessageW(server, steer, kRejected, 0), 1);
}

/// A list that is sorted by dragging asks of each move what it is over.
TEST(Pointer, LosesNoMoveOfADragWhileTheBrowserComputes) {
  const RunningBrowser browser(
      L"\"" +
          PageOf(L"<title>A</title><script>places=' ';onmousemove=e=>{const x=e.clientX+' ';if(e.buttons"
                 L"&&!places.includes(' '+x))places+=x};onmouseup=()=>document.title='P'+places;"
                 L"onmousedown=()=>setTimeout(()=>{document.title='B';setTimeout(()=>{for(const end="
                 L"Date.now()+1500;Date.now()<end;);},100)})</script>") +
          L"\"",
      L"");
  ASSERT_TRUE(Eventually([&] { return TextOf(browser.Window(L"IEFrame", L"A")).starts_with(L"A"); }));
  HWND frame = browser.Window(L"IEFrame", L"A");
  HWND server = browser.Server();
  POINT place{40, 50};
  ClientToScreen(server, &place);
  const auto move_to = [&](int x) {
    SetCursorPos(place.x + x - 40, place.y);
    Sleep(5);
  };
  move_to(40);
  mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
  ASSERT_TRUE(Eventually([&] { return TextOf(frame).starts_with(L"B"); }));
  Sleep(300);  // into the script
  SendNotifyMessageW(server, WM_NULL, 0, 0);
  for (int x = 50; x <= 120; x += 10) move_to(x);
  mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
  EXPECT_TRUE(Eventually([&] { return TextOf(frame).starts_with(L"P"); }));
  EXPECT_TRUE(TextOf(frame).contains(L" 50 60 70 80 90 100 110 120 "))
      << quillmate::com::ToUtf8(TextOf(frame));
}

TEST(Frame, EndsItsProcessWhenItIsClosed) {
  const RunningBrowser browser(PageOf(L"<title>A</title>"), L"A");
  SendMessageW(browser.Frame(), WM_CLOSE, 0, 0);
  EXPECT_TRUE(Eventually([&] { return browser.HasEnded(); }));
}

}  // namespace
}  // namespace testbrowser::test

int main(int count, char** arguments) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
