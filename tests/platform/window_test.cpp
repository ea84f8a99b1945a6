// The window around the client area: its size and state, its caption, menu and scroll bars.
#include <gtest/gtest.h>

#include "platform/scroll.h"
#include "tests/platform/test_window.h"

namespace {

using namespace platform_testing;

TEST(Windows, ResizingTellsTheSizeAndAsksForTheUncoveredParts) {
  TestWindow window(200, 100);
  window.Draw([](HDC dc) { FillWith(dc, {0, 0, 200, 100}, kBlue); });
  window.paint = [](HDC dc, const PAINTSTRUCT&) { FillWith(dc, {0, 0, 1000, 1000}, kRed); };
  ResizeClient(window.Handle(), 230, 110);
  window.Pump();
  EXPECT_EQ(window.Messages(), (std::vector<UINT>{WM_SIZE, WM_PAINT}));
  EXPECT_EQ(window.log[0].lParam, MAKELPARAM(230, 110));
  EXPECT_EQ(window.Art(198, 98, 4, 4), (std::vector<std::string>{"bbrr", "bbrr", "rrrr", "rrrr"}));
  window.log.clear();
  ResizeClient(window.Handle(), 1, 1);
  window.Pump();
  EXPECT_EQ(window.log, (std::vector<Received>{{WM_SIZE, SIZE_RESTORED, MAKELPARAM(1, 1)}}));
}

// While minimized the program holds a size of 0: painting then would leave the window blank when it returns.
TEST(Windows, AMinimizedWindowIsPaintedWhenItReturns) {
  TestWindow window(100, 40);
  const auto shows = [&](int how) {
    window.log.clear();
    ShowWindow(window.Handle(), how);
    window.Pump();
    // The state and the size may come one after the other.
    WPARAM state = 99;
    for (const Received& received : window.log)
      state = received.message == WM_SIZE ? received.wParam : state;
    return state;
  };
  EXPECT_EQ(shows(SW_MAXIMIZE), SIZE_MAXIMIZED);
  InvalidateRect(window.Handle(), nullptr, FALSE);
  EXPECT_EQ(shows(SW_MINIMIZE), SIZE_MINIMIZED);
  EXPECT_EQ(window.log.front(), (Received{WM_SIZE, SIZE_MINIMIZED, 0}));
  UpdateWindow(window.Handle());
  EXPECT_EQ(window.Count(WM_PAINT), 0);
  EXPECT_TRUE(IsIconic(window.Handle()));
  EXPECT_EQ(shows(SW_RESTORE), SIZE_MAXIMIZED);
  EXPECT_GE(window.Count(WM_PAINT), 1);
  EXPECT_EQ(shows(SW_RESTORE), SIZE_RESTORED);
}

TEST(Windows, CaptionsPassThroughUntouched) {
  TestWindow window;
  for (const std::string caption : {"Quorl - a[*].txt", "broken \xFF\xC3 bytes \xC3\xA4", ""}) {
    EXPECT_TRUE(SetWindowTextA(window.Handle(), caption.c_str()));
    char text[100];
    EXPECT_EQ(GetWindowTextA(window.Handle(), text, sizeof text), static_cast<int>(caption.size()));
    EXPECT_EQ(text, caption);
    EXPECT_EQ(Caption(window.Handle()), caption);
  }
}

TEST(Menus, AnAcceleratorRespectsTheStateThatTheOpeningOfItsPullDownSets) {
  const HMENU bar = CreateMenu();
  const HMENU file = CreatePopupMenu();
  AppendMenuA(file, MF_STRING, 101, "&Open...\tF2");
  AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), "&File");
  TestWindow window(200, 100, bar);
  ACCEL entries[] = {{FVIRTKEY, VK_F2, 101}};
  window.accelerators = CreateAcceleratorTableA(entries, 1);
  for (const UINT state : {MF_GRAYED, MF_ENABLED}) {
    window.handle = [&](UINT message, WPARAM wParam, LPARAM) {
      if (message == WM_INITMENUPOPUP) EnableMenuItem(reinterpret_cast<HMENU>(wParam), 101, state);
      return false;
    };
    window.log.clear();
    PressKey(window.Handle(), VK_F2, 0);
    window.Pump();
    EXPECT_EQ(window.Count(WM_COMMAND), state == MF_ENABLED ? 1 : 0);
  }
  EXPECT_EQ(window.log.back().wParam, MAKEWPARAM(101, 1));
}

TEST(ScrollBars, ADragReachesBothEndsExactlyAndEveryPlaceNearly) {
  TestWindow window;
  std::int64_t thumb = -1;
  window.handle = [&](UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_VSCROLL && LOWORD(wParam) == SB_THUMBPOSITION) {
      thumb = ScrollBarThumb(window.Handle(), SB_VERT);
      EXPECT_EQ(HIWORD(wParam), static_cast<WORD>(thumb));
    }
    return false;
  };
  for (const std::int64_t top : {std::int64_t{7}, std::int64_t{70'000}, std::int64_t{1} << 36, INT64_MAX}) {
    for (const std::int64_t wanted : {top, top / 2, top / 7 * 5, std::int64_t{0}}) {
      SetScrollBar(window.Handle(), SB_VERT, top, wanted == 0 ? top : 0, 0);
      DragThumb(window.Handle(), SB_VERT, wanted);
      window.Pump();
      const bool exact = wanted == 0 || wanted == top || top < 100'000;
      EXPECT_LE(std::abs(thumb - wanted), exact ? 0 : top / 1'000'000'000 + 1) << top;
    }
  }
}

TEST(ScrollBars, TheThumbStaysWhereItWasDroppedUntilTheProgramSetsIt) {
  TestWindow window;
  SetScrollBar(window.Handle(), SB_VERT, 1000, 0, 10);
  window.log.clear();
  DragThumb(window.Handle(), SB_VERT, 600);
  // A paint that still shows the old place, before the program has seen the drop.
  SetScrollBar(window.Handle(), SB_VERT, 1000, 0, 10);
  EXPECT_EQ(ScrollBarThumb(window.Handle(), SB_VERT), 600);
  window.Pump();
  std::vector<int> codes;
  for (const Received& received : window.log)
    if (received.message == WM_VSCROLL) codes.push_back(LOWORD(received.wParam));
  EXPECT_EQ(codes, (std::vector<int>{SB_THUMBTRACK, SB_THUMBPOSITION, SB_ENDSCROLL}));
  EXPECT_EQ(ScrollBarThumb(window.Handle(), SB_VERT), 600);
  SetScrollBar(window.Handle(), SB_VERT, 1000, 590, 10);
  EXPECT_EQ(ScrollBarThumb(window.Handle(), SB_VERT), 590);
}

TEST(ScrollBars, ALayoutThatNeverRestsIsBroughtToRest) {
  TestWindow window(200, 100);
  // A bar that is wanted exactly when it is not there.
  int paints = 0;
  window.paint = [&](HDC, const PAINTSTRUCT&) {
    if (++paints > 200) return;
    SetScrollBar(window.Handle(), SB_VERT, paints % 2 == 1 ? 100 : 0, 0, 0);
    InvalidateRect(window.Handle(), nullptr, FALSE);
  };
  InvalidateRect(window.Handle(), nullptr, FALSE);
  window.Pump();
  EXPECT_LT(window.Count(WM_SIZE), 30);
}

}  // namespace
