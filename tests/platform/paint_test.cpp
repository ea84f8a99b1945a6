#include <gtest/gtest.h>

#include <cstring>

#include "tests/platform/test_window.h"

namespace {

using Art = std::vector<std::string>;

// Draws on white and gives the upper left 8 x 6 pixels.
Art Drawn(const std::function<void(HDC)>& draw) {
  TestWindow window;
  window.Draw([&](HDC dc) {
    FillWith(dc, {0, 0, 200, 100}, kWhite);
    draw(dc);
  });
  return window.Art(0, 0, 8, 6);
}

void WithPen(HDC dc, int style, COLORREF color, const std::function<void()>& draw) {
  const HPEN pen = CreatePen(style, 1, color);
  const HGDIOBJ former = SelectObject(dc, pen);
  draw();
  SelectObject(dc, former);
  EXPECT_TRUE(DeleteObject(pen));
}

TEST(Drawing, ALineLeavesOutItsEndPoint) {
  struct Case {
    POINT from, to;
    Art expected;
  };
  const Case cases[] = {
      {{1, 1}, {4, 1}, {"........", ".rrr....", "........", "........", "........", "........"}},
      {{4, 1}, {1, 1}, {"........", "..rrr...", "........", "........", "........", "........"}},
      {{2, 0}, {2, 3}, {"..r.....", "..r.....", "..r.....", "........", "........", "........"}},
      {{1, 1}, {4, 4}, {"........", ".r......", "..r.....", "...r....", "........", "........"}},
      {{3, 3}, {3, 3}, {"........", "........", "........", "........", "........", "........"}},
      {{-5, 2}, {3, 2}, {"........", "........", "rrr.....", "........", "........", "........"}},
  };
  for (const Case& test : cases) {
    EXPECT_EQ(Drawn([&](HDC dc) {
                WithPen(dc, PS_SOLID, kRed, [&] {
                  MoveToEx(dc, test.from.x, test.from.y, nullptr);
                  LineTo(dc, test.to.x, test.to.y);
                });
              }),
              test.expected);
  }
}

TEST(Drawing, ADottedLineShowsTheBackgroundColorInItsGaps) {
  EXPECT_EQ(Drawn([](HDC dc) {
              SetBkColor(dc, kYellow);
              WithPen(dc, PS_DOT, kRed, [&] {
                MoveToEx(dc, 0, 0, nullptr);
                LineTo(dc, 8, 0);
                MoveToEx(dc, 1, 1, nullptr);
                LineTo(dc, 6, 1);
              });
            })[0],
            "rrryyyrr");
}

TEST(Drawing, ARectangleLeavesOutItsRightAndBottomEdge) {
  const auto rectangle = [](HDC dc) {
    const HBRUSH brush = CreateSolidBrush(kBlue);
    const HGDIOBJ former = SelectObject(dc, brush);
    Rectangle(dc, 1, 1, 6, 5);
    SelectObject(dc, former);
    DeleteObject(brush);
  };
  EXPECT_EQ(Drawn([&](HDC dc) { WithPen(dc, PS_SOLID, kRed, [&] { rectangle(dc); }); }),
            (Art{"........", ".rrrrr..", ".rbbbr..", ".rbbbr..", ".rrrrr..", "........"}));
  EXPECT_EQ(Drawn([&](HDC dc) {
              const HGDIOBJ former = SelectObject(dc, GetStockObject(NULL_PEN));
              rectangle(dc);
              SelectObject(dc, former);
            }),
            (Art{"........", ".bbbb...", ".bbbb...", ".bbbb...", "........", "........"}));
  // A new device context has a black pen and a white brush.
  EXPECT_EQ(Drawn([](HDC dc) { Rectangle(dc, 0, 0, 3, 3); })[1], "#.#.....");
}

TEST(Drawing, InvertingTwiceGivesThePictureBack) {
  const RECT rect{1, 1, 3, 3};
  EXPECT_EQ(Drawn([&](HDC dc) {
              FillWith(dc, {2, 0, 5, 6}, kYellow);
              InvertRect(dc, &rect);
            }),
            (Art{"..yyy...", ".#byy...", ".#byy...", "..yyy...", "..yyy...", "..yyy..."}));
  EXPECT_EQ(Drawn([&](HDC dc) {
              InvertRect(dc, &rect);
              InvertRect(dc, &rect);
            }),
            Art(6, "........"));
}

TEST(Drawing, ReachesOverNoEdgeOfTheClientArea) {
  TestWindow window(20, 10);
  window.Draw([](HDC dc) {
    FillWith(dc, {-1000000, -1000000, 1000000, 1000000}, kBlue);
    const RECT all{-5, -5, 1000, 1000};
    InvertRect(dc, &all);
    Rectangle(dc, -1, -1, 100000, 100000);
    MoveToEx(dc, -50, 3, nullptr);
    LineTo(dc, 30000, 3);
  });
  EXPECT_EQ(window.Art(0, 3, 20, 2), (Art{std::string(20, '#'), std::string(20, '.')}));
}

TEST(Painting, IsClippedToTheUpdateRegion) {
  TestWindow window;
  const RECT one{1, 1, 3, 3};
  const RECT other{5, 2, 7, 4};
  window.Draw([](HDC dc) { FillWith(dc, {0, 0, 200, 100}, kWhite); });
  window.paint = [](HDC dc, const PAINTSTRUCT&) { FillWith(dc, {0, 0, 200, 100}, kRed); };
  InvalidateRect(window.Handle(), &one, FALSE);
  InvalidateRect(window.Handle(), &other, FALSE);
  window.Pump();
  EXPECT_EQ(window.Art(0, 0, 8, 5), (Art{"........", ".rr.....", ".rr..rr.", ".....rr.", "........"}));
}

TEST(Painting, WhatLiesOutsideTheClientAreaIsNeverPending) {
  TestWindow window(200, 100);
  const RECT outside{200, 0, 300, 100};
  InvalidateRect(window.Handle(), &outside, FALSE);
  EXPECT_FALSE(GetUpdateRect(window.Handle(), nullptr, FALSE));
  const RECT across{190, 90, 300, 300};
  InvalidateRect(window.Handle(), &across, FALSE);
  RECT pending{};
  EXPECT_TRUE(GetUpdateRect(window.Handle(), &pending, FALSE));
  EXPECT_EQ(pending.right, 200);
  EXPECT_EQ(pending.bottom, 100);
}

TEST(Painting, ErasesOnlyWhenAsked) {
  TestWindow window;
  window.Draw([](HDC dc) { FillWith(dc, {0, 0, 200, 100}, kRed); });
  window.paint = [](HDC, const PAINTSTRUCT& record) { EXPECT_FALSE(record.fErase); };
  InvalidateRect(window.Handle(), nullptr, FALSE);
  window.Pump();
  EXPECT_EQ(window.Art(0, 0, 2, 1), Art{"rr"});
  InvalidateRect(window.Handle(), nullptr, TRUE);
  window.Pump();
  EXPECT_EQ(window.Art(0, 0, 2, 1), Art{".."});
  // Who answers the erasing with 0 is told to erase in the paint.
  window.handle = [](UINT message, WPARAM, LPARAM) { return message == WM_ERASEBKGND; };
  window.paint = [](HDC, const PAINTSTRUCT& record) { EXPECT_TRUE(record.fErase); };
  InvalidateRect(window.Handle(), nullptr, TRUE);
  window.Pump();
}

// Rows of one color each, so that a moved row is known by its color.
COLORREF RowColor(int y) {
  return RGB(static_cast<BYTE>(y), static_cast<BYTE>(y / 2), 77);
}

void FillRows(TestWindow& window, int width, int height) {
  window.Draw([&](HDC dc) {
    for (int y = 0; y < height; ++y) {
      FillWith(dc, {0, y, width, y + 1}, RowColor(y));
    }
  });
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
      {"a row up", 16, {0, 0, 200, 100}, {0, 0, 200, 16}},
      {"below titles, a row down", -16, {0, 32, 200, 100}, {0, 84, 200, 100}},
      {"below titles, a row up", 16, {0, 32, 200, 100}, {0, 32, 200, 48}},
      {"a part of the width", -10, {40, 20, 90, 70}, {40, 60, 90, 70}},
      {"more than there is", -500, {0, 32, 200, 100}, {0, 32, 200, 100}},
      {"nearly all", 60, {0, 30, 200, 100}, {0, 30, 200, 90}},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.what);
    TestWindow window(200, 100);
    FillRows(window, 200, 100);
    ScrollWindow(window.Handle(), 0, test.dy, &test.rect, &test.rect);
    RECT pending{};
    ASSERT_TRUE(GetUpdateRect(window.Handle(), &pending, FALSE));
    EXPECT_EQ(std::memcmp(&pending, &test.pending, sizeof pending), 0)
        << pending.left << ' ' << pending.top << ' ' << pending.right << ' ' << pending.bottom;
    const platform_testing::Pixels pixels = platform_testing::ClientPixels(window.Handle());
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
  window.paint = [&](HDC dc, const PAINTSTRUCT& record) {
    FillWith(dc, record.rcPaint, RowColor(record.rcPaint.top));
  };
  FillRows(window, 64, 200);
  // Far more steps, up and down, than the block behind the picture has room for.
  for (int step = 0; step < 300; ++step) {
    const int dy = step % 100 < 60 ? -7 : 7;
    const platform_testing::Pixels before = platform_testing::ClientPixels(window.Handle());
    ScrollWindow(window.Handle(), 0, dy, &below, &below);
    const platform_testing::Pixels after = platform_testing::ClientPixels(window.Handle());
    for (int y = 0; y < 200; ++y) {
      const int source = y < 20 ? y : y - dy;
      if (source >= (y < 20 ? 0 : 20) && source < 200)
        ASSERT_EQ(after.Get(5, y), before.Get(5, source)) << step << ' ' << y;
    }
    UpdateWindow(window.Handle());
  }
}

TEST(Scrolling, MovesWhatIsStillToBePainted) {
  TestWindow window(200, 100);
  const RECT stale{10, 50, 20, 60};
  const RECT elsewhere{10, 5, 20, 10};
  const RECT rect{0, 20, 200, 100};
  InvalidateRect(window.Handle(), &stale, FALSE);
  InvalidateRect(window.Handle(), &elsewhere, FALSE);
  window.Draw([](HDC dc) { FillWith(dc, {0, 0, 200, 100}, kWhite); });
  window.paint = [](HDC dc, const PAINTSTRUCT&) { FillWith(dc, {0, 0, 200, 100}, kRed); };
  ScrollWindow(window.Handle(), 0, -10, &rect, &rect);
  window.Pump();
  EXPECT_EQ(window.Art(9, 39, 3, 2), (Art{"...", ".rr"}));
  EXPECT_EQ(window.Art(9, 50, 3, 2), (Art{"...", "..."}));
  EXPECT_EQ(window.Art(9, 4, 3, 2), (Art{"...", ".rr"}));
  EXPECT_EQ(window.Art(0, 89, 2, 2), (Art{"..", "rr"}));
}

TEST(DrawingLog, KeepsCallsInOrderWhileItIsOn) {
  using Kind = platform_testing::DrawCall::Kind;
  TestWindow window;
  const auto draw = [](HDC dc) {
    const RECT rect{1, 2, 3, 4};
    ExtTextOutA(dc, 5, 6, ETO_OPAQUE, &rect, "ab\xE4x", 3, nullptr);
    TextOutA(dc, 7, 8, "note", 4);
    InvertRect(dc, &rect);
  };
  platform_testing::LogDrawing(true);
  window.Draw(draw);
  platform_testing::LogDrawing(false);
  window.Draw(draw);
  std::vector<Kind> kinds;
  for (const platform_testing::DrawCall& call : platform_testing::DrawingLog())
    kinds.push_back(call.kind);
  EXPECT_EQ(kinds, (std::vector<Kind>{Kind::fillText, Kind::text, Kind::invert}));
}

}  // namespace
