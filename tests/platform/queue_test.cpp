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
  EXPECT_EQ(window.Count(WM_PAINT), 1);
  EXPECT_EQ((std::vector<int>{painted.left, painted.top, painted.right, painted.bottom}),
            (std::vector<int>{0, 0, 60, 40}));
  // At once, and only what is pending.
  UpdateWindow(window.Handle());
  EXPECT_EQ(window.Count(WM_PAINT), 1);
  InvalidateRect(window.Handle(), nullptr, FALSE);
  UpdateWindow(window.Handle());
  EXPECT_EQ(window.Count(WM_PAINT), 2);
  EXPECT_FALSE(GetUpdateRect(window.Handle(), nullptr, FALSE));
}

TEST(Queue, QuitComesBehindPostedMessagesAndBeforeInput) {
  TestWindow window;
  PostQuitMessage(3);
  PressKey(window.Handle(), VK_DOWN, 0);
  PostMessageA(window.Handle(), WM_USER, 0, 0);
  MSG message{};
  ASSERT_TRUE(GetMessageA(&message, nullptr, 0, 0));
  EXPECT_EQ(message.message, WM_USER);
  EXPECT_FALSE(GetMessageA(&message, nullptr, 0, 0));
  EXPECT_EQ(message.message, WM_QUIT);
  EXPECT_EQ(message.wParam, 3U);
  ASSERT_TRUE(GetMessageA(&message, nullptr, 0, 0));
  EXPECT_EQ(message.message, WM_KEYDOWN);
}

TEST(Queue, MouseMovesThatFollowEachOtherBecomeTheLast) {
  TestWindow window;
  Mouse(window.Handle(), WM_LBUTTONDOWN, 1, 1, 0);
  Mouse(window.Handle(), WM_MOUSEMOVE, 2, 2, 0);
  Mouse(window.Handle(), WM_MOUSEMOVE, 3, 4, 0);
  Mouse(window.Handle(), WM_LBUTTONUP, 3, 4, 0);
  window.Pump();
  EXPECT_EQ(window.Messages(), (Messages{WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP}));
  EXPECT_EQ(window.log[1].lParam, MAKELPARAM(3, 4));
}

TEST(Queue, ADestroyedWindowTakesItsMessagesAndTimersAlong) {
  TestWindow window;
  window.handle = [&](UINT message, WPARAM, LPARAM) {
    if (message == WM_USER) {
      DestroyWindow(window.Handle());
      // The record still stands while its procedure runs.
      EXPECT_FALSE(IsIconic(window.Handle()));
    }
    return false;
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

}  // namespace
