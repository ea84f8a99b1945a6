// The order of the messages, and what the user's input becomes.
#include <gtest/gtest.h>

#include "tests/platform/test_window.h"

namespace {

using namespace platform_testing;
using Messages = std::vector<UINT>;

TEST(Queue, PostedMessagesComeBeforeInputAndInputBeforePaint) {
  TestWindow window;
  InvalidateRect(window.Handle(), nullptr, FALSE);
  PressKey(window.Handle(), VK_DOWN, 0);
  PostMessageA(window.Handle(), WM_USER + 1, 0, 0);
  PostMessageA(window.Handle(), WM_USER + 2, 5, -6);
  ASSERT_TRUE(window.Pump());
  EXPECT_EQ(window.Messages(), (Messages{WM_USER + 1, WM_USER + 2, WM_KEYDOWN, WM_PAINT}));
  EXPECT_EQ(window.log[1], (Received{WM_USER + 2, 5, -6}));
}

TEST(Queue, APaintIsOfferedOnceForAllThatIsInvalid) {
  TestWindow window;
  const RECT left{0, 0, 10, 10};
  const RECT right{50, 20, 60, 40};
  RECT painted{};
  window.paint = [&](HDC, const PAINTSTRUCT& record) { painted = record.rcPaint; };
  InvalidateRect(window.Handle(), &left, FALSE);
  InvalidateRect(window.Handle(), &right, FALSE);
  window.Pump();
  UpdateWindow(window.Handle());  // nothing is pending
  EXPECT_EQ(window.Count(WM_PAINT), 1);
  EXPECT_EQ((std::vector<int>{painted.left, painted.top, painted.right, painted.bottom}),
            (std::vector<int>{0, 0, 60, 40}));
  InvalidateRect(window.Handle(), nullptr, FALSE);
  UpdateWindow(window.Handle());  // at once
  EXPECT_EQ(window.Count(WM_PAINT), 2);
  EXPECT_FALSE(GetUpdateRect(window.Handle(), nullptr, FALSE));
}

TEST(Queue, QuitComesBehindPostedMessagesAndBeforeInput) {
  TestWindow window;
  PostQuitMessage(3);
  PressKey(window.Handle(), VK_DOWN, 0);
  PostMessageA(window.Handle(), WM_USER, 0, 0);
  Messages messages;
  MSG message{};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(GetMessageA(&message, nullptr, 0, 0) != FALSE, i != 1);
    messages.push_back(message.message);
    if (i == 1) EXPECT_EQ(message.wParam, 3U);
  }
  EXPECT_EQ(messages, (Messages{WM_USER, WM_QUIT, WM_KEYDOWN}));
}

TEST(Queue, ADestroyedWindowTakesItsMessagesAndTimersAlong) {
  TestWindow window;
  window.handle = [&](UINT message, WPARAM, LPARAM) {
    if (message != WM_USER) return false;
    DestroyWindow(window.Handle());
    // The record still stands while its procedure runs.
    EXPECT_FALSE(IsIconic(window.Handle()));
    return true;
  };
  SetTimer(window.Handle(), 4, 10, nullptr);
  PostMessageA(window.Handle(), WM_USER, 0, 0);
  PostMessageA(window.Handle(), WM_USER + 1, 0, 0);
  window.Pump();
  EXPECT_EQ(window.Messages(), (Messages{WM_USER, WM_DESTROY}));
  EXPECT_FALSE(TimerIsSet(window.Handle(), 4));
  EXPECT_FALSE(PostMessageA(window.Handle(), WM_USER, 0, 0));
  EXPECT_EQ(SendMessageA(window.Handle(), WM_USER, 0, 0), 0);
}

TEST(Keys, ArriveAsVirtualKeysWithTheModifiersOfTheirMessage) {
  TestWindow window;
  std::vector<std::string> keys;
  window.handle = [&](UINT message, WPARAM key, LPARAM) {
    if (message != WM_KEYDOWN) return false;
    keys.push_back(std::to_string(key) + (GetKeyState(VK_SHIFT) < 0 ? "S" : "") +
                   (GetKeyState(VK_CONTROL) < 0 ? "C" : "") + (GetKeyState(VK_MENU) < 0 ? "A" : ""));
    return true;
  };
  PressKey(window.Handle(), VK_HOME, 0);
  PressKey(window.Handle(), VK_F1, MK_SHIFT | MK_CONTROL);
  TypeCharacter(window.Handle(), 'z', MK_CONTROL | kAlt);
  TypeCharacter(window.Handle(), '7', 0);
  TypeCharacter(window.Handle(), 'q', kAlt);  // Alt alone belongs to the menu
  window.Pump();
  EXPECT_EQ(keys, (std::vector<std::string>{"36", "112SC", "90CA", "55"}));
}

TEST(Accelerators, MatchCharactersAndExactModifierSets) {
  ACCEL entries[] = {{0, 0x14, 311},
                     {0, 0x08, 312},
                     {FVIRTKEY | FSHIFT | FCONTROL, 'Z', 317},
                     {FVIRTKEY | FCONTROL, 'Z', 318},
                     {FVIRTKEY | FCONTROL | FALT | FNOINVERT, 'Z', 319},
                     {FVIRTKEY, VK_F2, 132}};
  struct Case {
    int key, keys;
    UINT command;  // 0: none
  };
  const Case cases[] = {{'T', MK_CONTROL, 311},
                        {'H', MK_CONTROL, 312},
                        {VK_BACK, 0, 312},
                        {'T', 0, 0},
                        {'Z', MK_CONTROL, 318},
                        {'Z', MK_CONTROL | MK_SHIFT, 317},
                        {'Z', MK_CONTROL | kAlt, 319},
                        {'Z', MK_CONTROL | MK_SHIFT | kAlt, 0},
                        {VK_F2, 0, 132},
                        {VK_F2, MK_CONTROL, 0}};
  TestWindow window;
  window.accelerators = CreateAcceleratorTableA(entries, 6);
  for (const Case& test : cases) {
    window.log = {{0, 0, 0}};
    PressKey(window.Handle(), test.key, test.keys);
    window.Pump();
    EXPECT_EQ(window.Count(WM_COMMAND), test.command != 0 ? 1 : 0) << test.key << ' ' << test.keys;
    if (test.command != 0) EXPECT_EQ(window.log.back().wParam, MAKEWPARAM(test.command, 1));
  }
}

TEST(MouseInput, CarriesSignedPositionsAndKeysAndMovesThatFollowEachOtherBecomeTheLast) {
  TestWindow window(200, 100);
  Mouse(window.Handle(), WM_LBUTTONDOWN, 10, 20, MK_SHIFT);
  Mouse(window.Handle(), WM_MOUSEMOVE, 3, 4, 0);
  Mouse(window.Handle(), WM_MOUSEMOVE, -7, -300, 0);
  Mouse(window.Handle(), WM_LBUTTONUP, 5000, 20, MK_CONTROL);
  Mouse(window.Handle(), WM_LBUTTONDBLCLK, 1, 2, 0);
  Mouse(window.Handle(), WM_LBUTTONUP, 1, 2, 0);
  Mouse(window.Handle(), WM_RBUTTONDOWN, 199, 99, 0);
  window.Pump();
  constexpr WPARAM kLeft = 1;
  constexpr WPARAM kRight = 2;
  EXPECT_EQ(window.log, (std::vector<Received>{
                            {WM_LBUTTONDOWN, kLeft | MK_SHIFT, MAKELPARAM(10, 20)},
                            {WM_MOUSEMOVE, kLeft, MAKELPARAM(static_cast<WORD>(-7), static_cast<WORD>(-300))},
                            {WM_LBUTTONUP, MK_CONTROL, MAKELPARAM(5000, 20)},
                            {WM_LBUTTONDBLCLK, kLeft, MAKELPARAM(1, 2)},
                            {WM_LBUTTONUP, 0, MAKELPARAM(1, 2)},
                            {WM_RBUTTONDOWN, kRight, MAKELPARAM(199, 99)},
                        }));
}

}  // namespace
