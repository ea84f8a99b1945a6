#include <gtest/gtest.h>

#include <cstring>

#include "tests/platform/test_window.h"

namespace {

using platform_testing::Pixels;
using Draw = std::function<void(HDC, const TEXTMETRICA&)>;

struct Font {
  explicit Font(int height, const char* face = "Courier New", bool italic = false) {
    LOGFONTA description{};
    description.lfHeight = height;
    description.lfItalic = italic ? 1 : 0;
    description.lfWeight = 400;
    std::strcpy(description.lfFaceName, face);
    handle = CreateFontIndirectA(&description);
  }
  ~Font() { DeleteObject(handle); }
  Font(const Font&) = delete;
  Font& operator=(const Font&) = delete;
  HFONT handle;
};

void Write(HDC dc, int x, int y, const std::string& text) {
  TextOutA(dc, x, y, text.data(), static_cast<int>(text.size()));
}

void DrawWith(HDC dc, const Font& font, const Draw& draw) {
  FillWith(dc, {0, 0, 400, 120}, kWhite);
  SetBkColor(dc, kWhite);
  const HGDIOBJ former = SelectObject(dc, font.handle);
  TEXTMETRICA metrics{};
  GetTextMetricsA(dc, &metrics);
  draw(dc, metrics);
  SelectObject(dc, former);
}

class TextTest : public testing::Test {
 protected:
  Pixels With(const Font& font, const Draw& draw) {
    window_.Draw([&](HDC dc) { DrawWith(dc, font, draw); });
    return platform_testing::ClientPixels(window_.Handle());
  }
  [[nodiscard]] bool Blank(int left, int top, int right, int bottom) const {
    for (const std::string& row : window_.Art(left, top, right - left, bottom - top))
      if (row.find_first_not_of('.') != std::string::npos) return false;
    return true;
  }

  TestWindow window_{400, 120};
};

TEST_F(TextTest, EachByteStandsInItsOwnColumn) {
  const Font font(-13);
  const std::string text = "aMi W.\xE4\x80{_\x01";
  const Pixels together = With(font, [&](HDC dc, const TEXTMETRICA& metrics) {
    EXPECT_EQ(metrics.tmHeight, 15);
    EXPECT_EQ(metrics.tmAveCharWidth, 8);
    Write(dc, 50, 10, text);
  });
  EXPECT_EQ(With(font,
                 [&](HDC dc, const TEXTMETRICA&) {
                   for (int i = 0; i < static_cast<int>(text.size()); ++i)
                     Write(dc, 50 + 8 * i, 10, text.substr(static_cast<std::size_t>(i), 1));
                 }),
            together);
  for (int i = 0; i < static_cast<int>(text.size()); ++i)
    EXPECT_EQ(Blank(50 + 8 * i, 10, 58 + 8 * i, 25), i == 3) << i;
  // Of a long text far off the left edge the visible columns show.
  EXPECT_EQ(With(font,
                 [&](HDC dc, const TEXTMETRICA&) {
                   const std::string far = std::string(30000, ' ') + text + std::string(2700, ' ');
                   Write(dc, 50 - 8 * 30000, 10, far);
                 }),
            together);
}

TEST_F(TextTest, OpaqueFillsTheRectangleAndClippedKeepsToIt) {
  const Font font(-13);
  const RECT rect{20, 10, 40, 18};
  With(font, [&](HDC dc, const TEXTMETRICA&) {
    SetBkColor(dc, kYellow);
    ExtTextOutA(dc, 10, 8, ETO_OPAQUE | ETO_CLIPPED, &rect, "MMMMMMMMMM", 10, nullptr);
  });
  EXPECT_FALSE(Blank(20, 10, 40, 18));
  EXPECT_TRUE(Blank(0, 0, 20, 120) && Blank(40, 0, 400, 120) && Blank(0, 18, 400, 120));
  // An empty text fills all the same, and without the option the cells alone have the ground.
  With(font, [&](HDC dc, const TEXTMETRICA&) {
    SetBkColor(dc, kRed);
    ExtTextOutA(dc, 0, 0, ETO_OPAQUE | ETO_CLIPPED, &rect, "", 0, nullptr);
    Write(dc, 100, 50, "  ");
  });
  EXPECT_EQ(window_.Art(19, 17, 3, 2), (std::vector<std::string>{".rr", "..."}));
  EXPECT_EQ(window_.Art(98, 63, 4, 3), (std::vector<std::string>{"..rr", "..rr", "...."}));
  EXPECT_EQ(window_.Art(114, 50, 4, 1), (std::vector<std::string>{"rr.."}));
}

TEST_F(TextTest, APartPaintedAloneLooksAsInTheWhole) {
  const std::string text = "The quick brown fox jumps over the lazy dog _WAVE_ \xC5\xFF\x81";
  for (const bool italic : {false, true}) {
    const Font font(-15, "Courier New", italic);
    const Draw draw = [&](HDC dc, const TEXTMETRICA&) {
      const RECT row{0, 5, 400, 40};
      const auto length = static_cast<UINT>(text.size());
      ExtTextOutA(dc, 3, 5, ETO_OPAQUE | ETO_CLIPPED, &row, text.data(), length, nullptr);
    };
    const Pixels whole = With(font, draw);
    // Spoil some places, and have only these painted anew.
    for (const RECT& part : {RECT{37, 0, 38, 40}, RECT{100, 9, 161, 13}, RECT{390, 3, 400, 20}}) {
      window_.Draw([&](HDC dc) { FillWith(dc, part, kRed); });
      InvalidateRect(window_.Handle(), &part, FALSE);
    }
    window_.paint = [&](HDC dc, const PAINTSTRUCT&) { DrawWith(dc, font, draw); };
    window_.Pump();
    EXPECT_EQ(platform_testing::ClientPixels(window_.Handle()), whole) << italic;
  }
}

TEST_F(TextTest, APageThatHasNoPixelsLooksLikeAWindow) {
  const Font font(-15, "Courier New", true);
  const Draw draw = [](HDC dc, const TEXTMETRICA& metrics) {
    EXPECT_EQ(GetDeviceCaps(dc, LOGPIXELSY), 96);
    EXPECT_EQ(metrics.tmDigitizedAspectX, 96);
    const RECT cut{20, 20, 90, 31};
    SetTextColor(dc, kBlue);
    SetBkColor(dc, kYellow);
    ExtTextOutA(dc, 10, 18, ETO_OPAQUE | ETO_CLIPPED, &cut, "_Wa fjord", 9, nullptr);
    Write(dc, 200, 30, "behind the cut");  // no clip is left behind
    MoveToEx(dc, 0, 0, nullptr);
    LineTo(dc, 300, 90);
    Rectangle(dc, 100, 50, 160, 80);
    const RECT inverted{10, 10, 230, 60};
    InvertRect(dc, &inverted);
  };
  const Pixels page = platform_testing::PagePixels(400, 120, [&](HDC dc) { DrawWith(dc, font, draw); });
  EXPECT_EQ(page, With(font, draw));
}

TEST_F(TextTest, EveryByteOfEveryFontAndSizeMeasuresAndDraws) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte)
    all += static_cast<char>(byte);
  for (const char* face : {"Courier New", "DejaVu Sans", "No Such Face At All", "", "Symbol"}) {
    for (const int size : {1, 2, 13, 40, 1000, 2000000000}) {
      With(Font(-size, face, true), [&](HDC dc, const TEXTMETRICA& metrics) {
        EXPECT_GE(metrics.tmHeight, std::min(size, 8000));
        EXPECT_EQ(metrics.tmHeight, metrics.tmAscent + metrics.tmDescent);
        SIZE extent{};
        GetTextExtentPointA(dc, all.data(), 256, &extent);
        EXPECT_EQ(extent.cx, 256 * metrics.tmAveCharWidth);
        Write(dc, 200 - metrics.tmAveCharWidth * 3 / 2, 100 - metrics.tmAscent, "AI\x81M" + all);
      });
      EXPECT_TRUE(size > 8000 || !Blank(0, 0, 400, 120)) << face << size;
    }
  }
  // A positive height is that of the cell.
  With(Font(30), [](HDC, const TEXTMETRICA& metrics) { EXPECT_NEAR(metrics.tmHeight, 30, 1); });
}

}  // namespace
