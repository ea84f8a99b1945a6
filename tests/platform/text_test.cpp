#include <gtest/gtest.h>

#include <cstring>
#include <map>

#include "tests/platform/test_window.h"

namespace {

using platform_testing::Pixels;

struct Font {
  explicit Font(int height, const char* face = "Courier New", bool italic = false, int weight = 400) {
    LOGFONTA description{};
    description.lfHeight = height;
    description.lfItalic = italic ? 1 : 0;
    description.lfWeight = weight;
    std::strcpy(description.lfFaceName, face);
    handle = CreateFontIndirectA(&description);
    EXPECT_NE(handle, nullptr) << face << height;
  }
  ~Font() { DeleteObject(handle); }
  Font(const Font&) = delete;
  Font& operator=(const Font&) = delete;
  HFONT handle;
};

void Write(HDC dc, int x, int y, const std::string& text) {
  TextOutA(dc, x, y, text.data(), static_cast<int>(text.size()));
}

TEXTMETRICA Measure(HDC dc) {
  TEXTMETRICA metrics{};
  GetTextMetricsA(dc, &metrics);
  return metrics;
}

// Draws with a font on a white window of 400 x 120.
class TextTest : public testing::Test {
 protected:
  static void Draw(HDC dc, const Font& font, const std::function<void(HDC, const TEXTMETRICA&)>& draw) {
    FillWith(dc, {0, 0, 400, 120}, kWhite);
    SetBkColor(dc, kWhite);
    const HGDIOBJ former = SelectObject(dc, font.handle);
    draw(dc, Measure(dc));
    SelectObject(dc, former);
  }
  Pixels With(const Font& font, const std::function<void(HDC, const TEXTMETRICA&)>& draw) {
    window_.Draw([&](HDC dc) { Draw(dc, font, draw); });
    return platform_testing::ClientPixels(window_.Handle());
  }
  // Whether a pixel of the part is not of the color.
  [[nodiscard]] bool Marked(int left, int top, int right, int bottom, COLORREF ground = kWhite) const {
    const Pixels pixels = platform_testing::ClientPixels(window_.Handle());
    for (int y = top; y < bottom; ++y) {
      for (int x = left; x < right; ++x)
        if (pixels.Get(x, y) != ground) return true;
    }
    return false;
  }

  TestWindow window_{400, 120};
};

TEST_F(TextTest, EachByteStandsInItsOwnColumn) {
  const Font font(-13);
  TEXTMETRICA size{};
  const auto cellAt = [&](const Pixels& pixels, int left) {
    std::vector<COLORREF> cell;
    for (int y = 0; y < size.tmHeight; ++y) {
      for (int x = 0; x < size.tmAveCharWidth; ++x)
        cell.push_back(pixels.Get(left + x, 10 + y));
    }
    return cell;
  };
  std::map<char, std::vector<COLORREF>> cells;
  const std::string text = "aMi W.\xE4\x80{_";
  for (const char character : text) {
    const Pixels pixels = With(font, [&](HDC dc, const TEXTMETRICA& metrics) {
      size = metrics;
      Write(dc, 3, 10, std::string(1, character));
    });
    cells[character] = cellAt(pixels, 3);
    EXPECT_EQ(Marked(3, 10, 3 + size.tmAveCharWidth, 10 + size.tmHeight), character != ' ') << character;
  }
  const Pixels pixels = With(font, [&](HDC dc, const TEXTMETRICA&) { Write(dc, 50, 10, text); });
  for (std::size_t i = 0; i < text.size(); ++i)
    EXPECT_EQ(cellAt(pixels, 50 + static_cast<int>(i) * size.tmAveCharWidth), cells[text[i]]) << text[i];
}

TEST_F(TextTest, OpaqueFillsTheRectangleAndClippedKeepsToIt) {
  const Font font(-13);
  const RECT rect{20, 10, 40, 18};
  With(font, [&](HDC dc, const TEXTMETRICA&) {
    SetBkColor(dc, kYellow);
    ExtTextOutA(dc, 10, 8, ETO_OPAQUE | ETO_CLIPPED, &rect, "MMMMMMMMMM", 10, nullptr);
  });
  EXPECT_TRUE(Marked(20, 10, 40, 18, kYellow));
  EXPECT_FALSE(Marked(0, 0, 20, 120));
  EXPECT_FALSE(Marked(40, 0, 400, 120));
  EXPECT_FALSE(Marked(0, 18, 400, 120));
  // An empty text fills all the same, and without the option the cells alone have the ground.
  With(font, [&](HDC dc, const TEXTMETRICA& metrics) {
    SetBkColor(dc, kRed);
    ExtTextOutA(dc, 0, 0, ETO_OPAQUE | ETO_CLIPPED, &rect, "", 0, nullptr);
    Write(dc, 100, 50, "  ");
    EXPECT_EQ(metrics.tmHeight, 15);
    EXPECT_EQ(metrics.tmAveCharWidth, 8);
  });
  EXPECT_EQ(window_.Art(19, 17, 3, 2), (std::vector<std::string>{".rr", "..."}));
  EXPECT_EQ(window_.Art(98, 63, 4, 3), (std::vector<std::string>{"..rr", "..rr", "...."}));
  EXPECT_EQ(window_.Art(114, 50, 4, 1), (std::vector<std::string>{"rr.."}));
}

TEST_F(TextTest, APartPaintedAloneLooksAsInTheWhole) {
  const std::string text = "The quick brown fox jumps over the lazy dog _WAVE_ \xC5\xFF\x81";
  for (const bool italic : {false, true}) {
    const Font font(-15, "Courier New", italic);
    const auto draw = [&](HDC dc, const TEXTMETRICA&) {
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
    window_.paint = [&](HDC dc, const PAINTSTRUCT&) { Draw(dc, font, draw); };
    window_.Pump();
    EXPECT_EQ(platform_testing::ClientPixels(window_.Handle()), whole) << italic;
  }
}

TEST_F(TextTest, TheLongestTextFarOffTheLeftEdgeShowsItsVisibleColumns) {
  const Font font(-13);
  std::string text(32760, 'x');
  text.replace(30000, 3, "abc");
  const Pixels far = With(font, [&](HDC dc, const TEXTMETRICA& metrics) {
    Write(dc, 16 - 30000 * metrics.tmAveCharWidth, 0, text);
  });
  EXPECT_EQ(With(font, [&](HDC dc, const TEXTMETRICA&) { Write(dc, 0, 0, "xxabc" + std::string(60, 'x')); }),
            far);
}

TEST_F(TextTest, EveryByteOfEveryKindOfFontCanBeDrawn) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte)
    all += static_cast<char>(byte);
  for (const char* face : {"Courier New", "DejaVu Sans", "No Such Face At All", "", "Symbol"}) {
    With(Font(-11, face, true, 700), [&](HDC dc, const TEXTMETRICA& metrics) {
      for (int row = 0; row < 8; ++row)
        Write(dc, 0, row * metrics.tmHeight, all.substr(static_cast<std::size_t>(row) * 32, 32));
      SIZE size{};
      GetTextExtentPointA(dc, all.data(), 256, &size);
      EXPECT_EQ(size.cx, 256 * metrics.tmAveCharWidth);
      EXPECT_EQ(size.cy, metrics.tmHeight);
    });
  }
  // A control character shows as a box.
  With(Font(-13), [&](HDC dc, const TEXTMETRICA&) {
    Write(dc, 0, 0, "\x01");
    Write(dc, 50, 0, "\x81");
  });
  EXPECT_TRUE(Marked(0, 0, 8, 15));
  EXPECT_EQ(window_.Art(0, 0, 8, 15), window_.Art(50, 0, 8, 15));
}

TEST_F(TextTest, SizesFromOnePixelToThousandsMeasureAndDraw) {
  int former = 0;
  for (const int size : {1, 2, 3, 5, 8, 13, 40, 200, 1000, 7999}) {
    With(Font(-size), [&](HDC dc, const TEXTMETRICA& metrics) {
      EXPECT_GE(metrics.tmHeight, size);
      EXPECT_GE(metrics.tmHeight, former);
      EXPECT_GE(metrics.tmAveCharWidth, 1);
      EXPECT_EQ(metrics.tmHeight, metrics.tmAscent + metrics.tmDescent);
      EXPECT_NEAR(metrics.tmAveCharWidth, size * 0.6, 1.0);
      former = metrics.tmHeight;
      // The stem of the second letter in the middle of the window, standing on its lower part.
      Write(dc, 200 - metrics.tmAveCharWidth * 3 / 2, 100 - metrics.tmAscent, "AI\x81M");
    });
    EXPECT_TRUE(Marked(0, 0, 400, 120)) << size;
  }
  // Beyond what the font engine can do a size is taken for the largest.
  With(Font(-2000000000), [&](HDC dc, const TEXTMETRICA& metrics) {
    EXPECT_GE(metrics.tmHeight, 8000);
    Write(dc, 0, 0, "x");
  });
  // A positive height is that of the cell.
  With(Font(30), [](HDC, const TEXTMETRICA& metrics) { EXPECT_NEAR(metrics.tmHeight, 30, 1); });
}

TEST_F(TextTest, WeightSlantAndColorsShow) {
  const auto picture = [&](const Font& font) {
    return With(font, [](HDC dc, const TEXTMETRICA&) { Write(dc, 10, 10, "HIll"); });
  };
  const Pixels plain = picture(Font(-16));
  EXPECT_NE(picture(Font(-16, "Courier New", false, 700)), plain);
  EXPECT_NE(picture(Font(-16, "Courier New", true)), plain);
  EXPECT_EQ(picture(Font(-16)), plain);
  const Pixels pixels = With(Font(-40), [](HDC dc, const TEXTMETRICA&) {
    SetTextColor(dc, kBlue);
    SetBkColor(dc, kYellow);
    Write(dc, 0, 0, "_");
  });
  int blue = 0;  // exact in the middle of a line
  for (int y = 0; y < 60; ++y)
    blue += pixels.Get(12, y) == kBlue ? 1 : 0;
  EXPECT_GE(blue, 1);
}

TEST_F(TextTest, StockFontAndDotsPerInch) {
  window_.Draw([](HDC dc) {
    EXPECT_EQ(GetDeviceCaps(dc, LOGPIXELSY), 96);
    const HGDIOBJ stock = GetStockObject(ANSI_FIXED_FONT);
    SelectObject(dc, stock);
    EXPECT_GT(Measure(dc).tmAveCharWidth, 4);
    EXPECT_EQ(Measure(dc).tmPitchAndFamily & 1, 0);
    EXPECT_TRUE(DeleteObject(stock)) << "a stock object outlives its deletion";
  });
  window_.Draw([](HDC dc) { EXPECT_GT(Measure(dc).tmHeight, 8); });
}

}  // namespace
