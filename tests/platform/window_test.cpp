#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

#include "tests/platform/test_window.h"

namespace {

using namespace platform_testing;

TEST(Windows, TheFirstShowTellsTheSizeBeforeItReturns) {
  TestWindow window(0, 0, nullptr, false);
  EXPECT_EQ(window.Messages(), (std::vector<UINT>{WM_CREATE}));
  ShowWindow(window.Handle(), SW_SHOWNORMAL);
  ASSERT_EQ(window.Messages(), (std::vector<UINT>{WM_CREATE, WM_SIZE}));
  EXPECT_EQ(window.log[1].wParam, SIZE_RESTORED);
  RECT client{};
  GetClientRect(window.Handle(), &client);
  EXPECT_EQ(window.log[1].lParam,
            MAKELPARAM(static_cast<UINT>(client.right), static_cast<UINT>(client.bottom)));
}

TEST(Windows, AFailedCreationLeavesNothing) {
  WNDCLASSA windowClass{};
  windowClass.lpszClassName = "REFUSES";
  windowClass.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
    return message == WM_CREATE ? -1 : DefWindowProcA(window, message, wParam, lParam);
  };
  EXPECT_NE(RegisterClassA(&windowClass), 0);
  EXPECT_EQ(RegisterClassA(&windowClass), 0);
  for (const char* name : {"REFUSES", "UNKNOWN"})
    EXPECT_EQ(CreateWindowExA(0, name, "", 0, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr), nullptr);
  EXPECT_TRUE(UnregisterClassA("REFUSES", nullptr));
  EXPECT_FALSE(UnregisterClassA("REFUSES", nullptr));
}

TEST(Windows, ResizingTellsTheSizeAndAsksForTheUncoveredParts) {
  TestWindow window(200, 100);
  window.Draw([](HDC dc) { FillWith(dc, {0, 0, 200, 100}, kBlue); });
  window.paint = [](HDC dc, const PAINTSTRUCT&) { FillWith(dc, {0, 0, 1000, 1000}, kRed); };
  ResizeClient(window.Handle(), 230, 110);
  window.Pump();
  EXPECT_EQ(window.Messages(), (std::vector<UINT>{WM_SIZE, WM_PAINT}));
  EXPECT_EQ(window.log[0].lParam, MAKELPARAM(230, 110));
  EXPECT_EQ(window.Art(198, 98, 4, 4), (std::vector<std::string>{"bbrr", "bbrr", "rrrr", "rrrr"}));
  window.Forget();
  ResizeClient(window.Handle(), 1, 1);
  window.Pump();
  EXPECT_EQ(window.Messages(), (std::vector<UINT>{WM_SIZE}));
  EXPECT_EQ(window.log[0].lParam, MAKELPARAM(1, 1));
  EXPECT_EQ(window.Art(0, 0, 1, 1), (std::vector<std::string>{"b"}));
}

TEST(Windows, MinimizeMaximizeAndRestore) {
  TestWindow window;
  const auto shows = [&](int how) {
    window.Forget();
    ShowWindow(window.Handle(), how);
    window.Pump();
    // The state and the size may come one after the other.
    WPARAM state = 99;
    for (const Received& received : window.log)
      state = received.message == WM_SIZE ? received.wParam : state;
    return state;
  };
  EXPECT_EQ(shows(SW_MINIMIZE), SIZE_MINIMIZED);
  EXPECT_EQ(window.log.front(), (Received{WM_SIZE, SIZE_MINIMIZED, 0}));
  EXPECT_TRUE(IsIconic(window.Handle()));
  EXPECT_EQ(shows(SW_RESTORE), SIZE_RESTORED);
  EXPECT_FALSE(IsIconic(window.Handle()));
  EXPECT_EQ(shows(SW_MAXIMIZE), SIZE_MAXIMIZED);
  EXPECT_EQ(shows(SW_SHOWMINIMIZED), SIZE_MINIMIZED);
  EXPECT_EQ(shows(SW_RESTORE), SIZE_MAXIMIZED);
  EXPECT_EQ(shows(SW_RESTORE), SIZE_RESTORED);
}

// While minimized the program holds a size of 0: painting then would leave the window blank when it returns.
TEST(Windows, AMinimizedWindowIsPaintedWhenItReturns) {
  TestWindow window(100, 40);
  InvalidateRect(window.Handle(), nullptr, FALSE);
  ShowWindow(window.Handle(), SW_MINIMIZE);
  window.Forget();
  window.Pump();
  UpdateWindow(window.Handle());
  EXPECT_EQ(window.Count(WM_PAINT), 0);
  ShowWindow(window.Handle(), SW_RESTORE);
  window.Pump();
  EXPECT_EQ(window.Count(WM_PAINT), 1);
}

TEST(Windows, CaptionsPassThroughUntouched) {
  TestWindow window;
  for (const char* caption :
       {"Quorl - a[*].txt", "Quorl - \xC3\xA4\xE2\x82\xAC", "broken \xFF\xC3 bytes", ""}) {
    EXPECT_TRUE(SetWindowTextA(window.Handle(), caption));
    char text[100];
    EXPECT_EQ(GetWindowTextA(window.Handle(), text, sizeof text), static_cast<int>(std::strlen(caption)));
    EXPECT_STREQ(text, caption);
    EXPECT_EQ(Caption(window.Handle()), caption);
  }
  SetWindowTextA(window.Handle(), "Quorl");
  char tight[4];
  EXPECT_EQ(GetWindowTextA(window.Handle(), tight, sizeof tight), 3);
  EXPECT_STREQ(tight, "Quo");
}

TEST(Windows, APictureOfTheWholeWindowCanBeSaved) {
  TestWindow window(200, 100);
  const std::string path = testing::TempDir() + "quorl_window_test.png";
  EXPECT_TRUE(SavePicture(window.Handle(), path));
  EXPECT_EQ(std::remove(path.c_str()), 0);
  EXPECT_FALSE(SavePicture(window.Handle(), "/no such folder/x.png"));
  const BYTE pixels[2 * 2 * 4] = {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 0, 0, 0, 0};
  const HICON icon = CreateIcon(nullptr, 2, 2, 1, 32, nullptr, pixels);
  ASSERT_NE(icon, nullptr);
  EXPECT_TRUE(DestroyIcon(icon));
}

}  // namespace
