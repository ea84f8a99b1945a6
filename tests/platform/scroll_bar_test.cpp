#include <gtest/gtest.h>

#include "platform/scroll.h"
#include "tests/platform/test_window.h"

namespace {

using namespace platform_testing;

constexpr std::int64_t kHuge = INT64_MAX;

TEST(ScrollBars, ADragReachesBothEndsExactlyAndEveryPlaceNearly) {
  TestWindow window;
  for (const std::int64_t top : {std::int64_t{7}, std::int64_t{70'000}, std::int64_t{1} << 36, kHuge}) {
    for (const std::int64_t wanted : {top, top / 2, top / 7 * 5, std::int64_t{0}}) {
      SetScrollBar(window.Handle(), SB_VERT, top, wanted == 0 ? top : 0, 0);
      std::int64_t thumb = -1;
      window.handle = [&](UINT message, WPARAM wParam, LPARAM) {
        if (message == WM_VSCROLL && LOWORD(wParam) == SB_THUMBPOSITION) {
          thumb = ScrollBarThumb(window.Handle(), SB_VERT);
          EXPECT_EQ(HIWORD(wParam), static_cast<WORD>(thumb));
        }
        return false;
      };
      DragThumb(window.Handle(), SB_VERT, wanted);
      window.Pump();
      if (wanted == 0 || wanted == top || top < 100'000) {
        EXPECT_EQ(thumb, wanted) << top;
      } else {
        EXPECT_LE(std::abs(thumb - wanted), top / 1'000'000'000 + 1) << top;
      }
    }
  }
}

std::vector<int> Codes(const TestWindow& window) {
  std::vector<int> codes;
  for (const Received& received : window.log)
    if (received.message == WM_VSCROLL) codes.push_back(LOWORD(received.wParam));
  return codes;
}

TEST(ScrollBars, TheThumbStaysWhereItWasDroppedUntilTheProgramSetsIt) {
  TestWindow window;
  SetScrollBar(window.Handle(), SB_VERT, 1000, 0, 10);
  window.Forget();
  DragThumb(window.Handle(), SB_VERT, 600);
  // A paint that still shows the old place, before the program has seen the drop.
  SetScrollBar(window.Handle(), SB_VERT, 1000, 0, 10);
  EXPECT_EQ(ScrollBarThumb(window.Handle(), SB_VERT), 600);
  window.Pump();
  EXPECT_EQ(Codes(window), (std::vector<int>{SB_THUMBTRACK, SB_THUMBPOSITION, SB_ENDSCROLL}));
  EXPECT_EQ(ScrollBarThumb(window.Handle(), SB_VERT), 600);
  SetScrollBar(window.Handle(), SB_VERT, 1000, 590, 10);
  EXPECT_EQ(ScrollBarThumb(window.Handle(), SB_VERT), 590);
}

TEST(ScrollBars, ARangeOfZeroTakesABarAwayAndTheWindowLearnsItsNewSize) {
  TestWindow window(200, 100);
  SetScrollBar(window.Handle(), SB_VERT, 1000, 0, 10);
  EXPECT_TRUE(ScrollBarOf(window.Handle(), SB_VERT).visible);
  ASSERT_EQ(window.Count(WM_SIZE), 1);
  RECT client{};
  GetClientRect(window.Handle(), &client);
  EXPECT_LT(client.right, 200);
  EXPECT_EQ(client.bottom, 100);
  EXPECT_EQ(window.log.back().lParam,
            MAKELPARAM(static_cast<UINT>(client.right), static_cast<UINT>(client.bottom)));
  SetScrollBar(window.Handle(), SB_HORZ, 5, 0, 0);
  GetClientRect(window.Handle(), &client);
  EXPECT_LT(client.bottom, 100);
  SetScrollBar(window.Handle(), SB_HORZ, 0, 0, 0);
  SetScrollBar(window.Handle(), SB_VERT, 0, 0, 0);
  EXPECT_EQ(window.Count(WM_SIZE), 4);
  GetClientRect(window.Handle(), &client);
  EXPECT_EQ(client.right, 200);
  EXPECT_EQ(client.bottom, 100);
  EXPECT_EQ(ScrollBarTop(window.Handle(), SB_VERT), 0);
}

TEST(ScrollBars, ALayoutThatNeverRestsIsBroughtToRest) {
  TestWindow window(200, 100);
  // A bar that is wanted exactly when it is not there.
  bool wanted = false;
  window.paint = [&](HDC, const PAINTSTRUCT&) {
    wanted = !wanted;
    SetScrollBar(window.Handle(), SB_VERT, wanted ? 100 : 0, 0, 0);
    InvalidateRect(window.Handle(), nullptr, FALSE);
  };
  window.handle = [&](UINT message, WPARAM, LPARAM) {
    if (message == WM_PAINT && window.Count(WM_PAINT) == 200) window.paint = nullptr;
    return false;
  };
  InvalidateRect(window.Handle(), nullptr, FALSE);
  window.Pump();
  EXPECT_LT(window.Count(WM_SIZE), 30);
}

}  // namespace
