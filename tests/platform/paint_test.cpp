#include <gtest/gtest.h>

#include <cstring>

#include "tests/platform/test_window.h"

namespace {

using Art = std::vector<std::string>;
using platform_testing::Pixels;

// Draws on white with a pen and a blue brush, and gives the upper left 8 x 6 pixels.
Art Drawn(HPEN pen, const std::function<void(HDC)>& draw) {
  TestWindow window;
  window.Draw([&](HDC dc) {
    FillWith(dc, {0, 0, 200, 100}, kWhite);
    const HBRUSH brush = CreateSolidBrush(kBlue);
    const HGDIOBJ formerBrush = SelectObject(dc, brush);
    const HGDIOBJ formerPen = SelectObject(dc, pen);
    draw(dc);
    SelectObject(dc, formerPen);
    SelectObject(dc, formerBrush);
    DeleteObject(brush);
    DeleteObject(pen);
  });
  return window.Art(0, 0, 8, 6);
}

TEST(Drawing, ALineLeavesOutItsEndPoint) {
  struct Case {
    POINT from, to;
    Art expected;
  };
  const Case cases[] = {
      {{4, 1}, {1, 1}, {"........", "..rrr...", "........", "........", "........", "........"}},
      {{2, 0}, {2, 3}, {"..r.....", "..r.....", "..r.....", "........", "........", "........"}},
      {{1, 1}, {4, 4}, {"........", ".r......", "..r.....", "...r....", "........", "........"}},
      {{3, 3}, {3, 3}, {"........", "........", "........", "........", "........", "........"}},
      {{-5, 2}, {3, 2}, {"........", "........", "rrr.....", "........", "........", "........"}},
  };
  const auto line = [](HDC dc, POINT from, POINT to) {
    MoveToEx(dc, from.x, from.y, nullptr);
    LineTo(dc, to.x, to.y);
  };
  for (const Case& test : cases) {
    const HPEN pen = CreatePen(PS_SOLID, 1, kRed);
    EXPECT_EQ(Drawn(pen, [&](HDC dc) { line(dc, test.from, test.to); }), test.expected);
  }
  // A dotted one shows the background color in its gaps.
  EXPECT_EQ(Drawn(CreatePen(PS_DOT, 1, kRed),
                  [&](HDC dc) {
                    SetBkColor(dc, kYellow);
                    line(dc, {0, 0}, {8, 0});
                  })[0],
            "rrryyyrr");
}

TEST(Drawing, ARectangleLeavesOutItsRightAndBottomEdge) {
  const auto draw = [](HDC dc) { Rectangle(dc, 1, 1, 6, 5); };
  EXPECT_EQ(Drawn(CreatePen(PS_SOLID, 1, kRed), draw),
            (Art{"........", ".rrrrr..", ".rbbbr..", ".rbbbr..", ".rrrrr..", "........"}));
  EXPECT_EQ(Drawn(static_cast<HPEN>(GetStockObject(NULL_PEN)), draw),
            (Art{"........", ".bbbb...", ".bbbb...", ".bbbb...", "........", "........"}));
}

TEST(Drawing, InvertsAndReachesOverNoEdgeOfTheClientArea) {
  TestWindow window(20, 10);
  window.Draw([](HDC dc) {
    FillWith(dc, {-1000000, -1000000, 1000000, 1000000}, kBlue);
    FillWith(dc, {0, 0, 2, 10}, kWhite);
    const RECT part{1, 1, 3, 1000};
    InvertRect(dc, &part);
  });
  EXPECT_EQ(window.Art(0, 0, 4, 3), (Art{"..bb", ".#yb", ".#yb"}));
  EXPECT_EQ(window.Art(17, 9, 3, 1), Art{"bbb"});
}

TEST(Painting, IsClippedToTheUpdateRegion) {
  TestWindow window;
  window.Draw([](HDC dc) { FillWith(dc, {0, 0, 200, 100}, kWhite); });
  window.paint = [](HDC dc, const PAINTSTRUCT&) { FillWith(dc, {0, 0, 200, 100}, kRed); };
  for (const RECT& part : {RECT{1, 1, 3, 3}, RECT{5, 2, 7, 4}, RECT{200, 0, 300, 100}})
    InvalidateRect(window.Handle(), &part, FALSE);
  RECT pending{};
  EXPECT_TRUE(GetUpdateRect(window.Handle(), &pending, FALSE));
  EXPECT_EQ(pending.right, 7) << "what lies outside the client area is never pending";
  window.Pump();
  EXPECT_EQ(window.Art(0, 0, 8, 5), (Art{"........", ".rr.....", ".rr..rr.", ".....rr.", "........"}));
}

// Rows of one color each, so that a moved row is known by its color.
COLORREF RowColor(int y) {
  return RGB(static_cast<BYTE>(y), static_cast<BYTE>(y / 2), 77);
}

TEST(Scrolling, MovesPixelsAndLeavesTheUncoveredStripToAPaint) {
  struct Case {
    const char* what;
    int dy;
    RECT rect;
    RECT pending;
  };
  const Case cases[] = {
      {"a row down", -16, {0, 0, 200, 100}, {0, 84, 200, 100}},
      {"below titles, a row down", -16, {0, 32, 200, 100}, {0, 84, 200, 100}},
      {"below titles, a row up", 16, {0, 32, 200, 100}, {0, 32, 200, 48}},
      {"a part of the width", -10, {40, 20, 90, 70}, {40, 60, 90, 70}},
      {"more than there is", -500, {0, 32, 200, 100}, {0, 32, 200, 100}},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.what);
    TestWindow window(200, 100);
    window.Draw([&](HDC dc) {
      for (int y = 0; y < 100; ++y)
        FillWith(dc, {0, y, 200, y + 1}, RowColor(y));
    });
    ScrollWindow(window.Handle(), 0, test.dy, &test.rect, &test.rect);
    RECT pending{};
    ASSERT_TRUE(GetUpdateRect(window.Handle(), &pending, FALSE));
    EXPECT_EQ(std::memcmp(&pending, &test.pending, sizeof pending), 0) << pending.top;
    const Pixels pixels = platform_testing::ClientPixels(window.Handle());
    for (int y = 0; y < 100; ++y) {
      for (const int x : {0, 39, 40, 89, 90, 199}) {
        const RECT& rect = test.rect;
        const bool inside = x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
        const bool strip = inside && y >= test.pending.top && y < test.pending.bottom;
        if (!strip) ASSERT_EQ(pixels.Get(x, y), RowColor(inside ? y - test.dy : y)) << x << ' ' << y;
      }
    }
  }
}

TEST(Scrolling, ManyStepsKeepThePicture) {
  TestWindow window(64, 200);
  const RECT below{0, 20, 64, 200};
  int color = 0;
  window.paint = [&](HDC dc, const PAINTSTRUCT& record) { FillWith(dc, record.rcPaint, RowColor(++color)); };
  // Far more steps, up and down, than the block behind the picture has room for.
  for (int step = 0; step < 300; ++step) {
    const int dy = step % 100 < 60 ? -7 : 7;
    const Pixels before = platform_testing::ClientPixels(window.Handle());
    ScrollWindow(window.Handle(), 0, dy, &below, &below);
    const Pixels after = platform_testing::ClientPixels(window.Handle());
    for (int y = 0; y < 200; ++y) {
      const int source = y < 20 ? y : y - dy;
      if (y >= 20 && (source < 20 || source >= 200)) continue;
      ASSERT_EQ(after.Get(5, y), before.Get(5, source)) << step << ' ' << y;
    }
    UpdateWindow(window.Handle());
  }
}

TEST(Scrolling, MovesWhatIsStillToBePainted) {
  TestWindow window(200, 100);
  const RECT rect{0, 20, 200, 100};
  for (const RECT& stale : {RECT{10, 50, 20, 60}, RECT{10, 5, 20, 10}})
    InvalidateRect(window.Handle(), &stale, FALSE);
  window.Draw([](HDC dc) { FillWith(dc, {0, 0, 200, 100}, kWhite); });
  window.paint = [](HDC dc, const PAINTSTRUCT&) { FillWith(dc, {0, 0, 200, 100}, kRed); };
  ScrollWindow(window.Handle(), 0, -10, &rect, &rect);
  window.Pump();
  EXPECT_EQ(window.Art(9, 39, 3, 2), (Art{"...", ".rr"}));
  EXPECT_EQ(window.Art(9, 50, 3, 2), (Art{"...", "..."}));
  EXPECT_EQ(window.Art(9, 4, 3, 2), (Art{"...", ".rr"}));
  EXPECT_EQ(window.Art(0, 89, 2, 2), (Art{"..", "rr"}));
}

}  // namespace
