#include <gtest/gtest.h>

#include <cstring>
#include <map>

#include "tests/platform/test_window.h"

namespace {

using platform_testing::Pixels;

HFONT MakeFont(int height, const char* face = "Courier New", bool italic = false, int weight = 400) {
  LOGFONTA description{};
  description.lfHeight = height;
  description.lfItalic = italic ? 1 : 0;
  description.lfWeight = weight;
  std::strcpy(description.lfFaceName, face);
  return CreateFontIndirectA(&description);
}

TEXTMETRICA Measure(HDC dc) {
  TEXTMETRICA metrics{};
  GetTextMetricsA(dc, &metrics);
  return metrics;
}

// Draws with a font on a white window of 400 x 120.
class TextTest : public testing::Test {
 protected:
  void With(HFONT font, const std::function<void(HDC, const TEXTMETRICA&)>& draw) {
    window_.Draw([&](HDC dc) {
      FillWith(dc, {0, 0, 400, 120}, kWhite);
      SetBkColor(dc, kWhite);
      const HGDIOBJ former = SelectObject(dc, font);
      draw(dc, Measure(dc));
      SelectObject(dc, former);
    });
  }
  [[nodiscard]] Pixels Picture() const { return platform_testing::ClientPixels(window_.Handle()); }
  // Whether a pixel of the part is not of the color.
  [[nodiscard]] bool Marked(int left, int top, int right, int bottom, COLORREF ground = kWhite) const {
    const Pixels pixels = Picture();
    for (int y = top; y < bottom; ++y) {
      for (int x = left; x < right; ++x) {
        if (pixels.Get(x, y) != ground) {
          return true;
        }
      }
    }
    return false;
  }

  TestWindow window_{400, 120};
};

TEST_F(TextTest, EachByteStandsInItsOwnColumn) {
  const HFONT font = MakeFont(-13);
  std::map<char, std::vector<COLORREF>> cells;
  int width = 0;
  int height = 0;
  const auto cellAt = [&](const Pixels& pixels, int column, int left) {
    std::vector<COLORREF> cell;
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        cell.push_back(pixels.Get(left + column * width + x, 10 + y));
      }
    }
    return cell;
  };
  const char text[] = "aMi W.\xE4\x80{_";
  for (const char* at = text; *at != '\0'; ++at) {
    With(font, [&](HDC dc, const TEXTMETRICA& metrics) {
      width = metrics.tmAveCharWidth;
      height = metrics.tmHeight;
      TextOutA(dc, 3, 10, at, 1);
    });
    cells[*at] = cellAt(Picture(), 0, 3);
    EXPECT_EQ(Marked(3, 10, 3 + width, 10 + height), *at != ' ') << *at;
  }
  With(font, [&](HDC dc, const TEXTMETRICA&) { TextOutA(dc, 50, 10, text, sizeof text - 1); });
  const Pixels pixels = Picture();
  for (std::size_t i = 0; i + 1 < sizeof text; ++i) {
    EXPECT_EQ(cellAt(pixels, static_cast<int>(i), 50), cells[text[i]]) << text[i];
  }
  DeleteObject(font);
}

TEST_F(TextTest, OpaqueFillsTheRectangleAndClippedKeepsToIt) {
  const HFONT font = MakeFont(-13);
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
    TextOutA(dc, 100, 50, "  ", 2);
    EXPECT_EQ(metrics.tmHeight, 15);
    EXPECT_EQ(metrics.tmAveCharWidth, 8);
  });
  EXPECT_EQ(window_.Art(19, 17, 3, 2), (std::vector<std::string>{".rr", "..."}));
  EXPECT_EQ(window_.Art(98, 63, 4, 3), (std::vector<std::string>{"..rr", "..rr", "...."}));
  EXPECT_EQ(window_.Art(114, 50, 4, 1), (std::vector<std::string>{"rr.."}));
  DeleteObject(font);
}

TEST_F(TextTest, APartPaintedAloneLooksAsInTheWhole) {
  const std::string text = "The quick brown fox jumps over the lazy dog _WAVE_ \xC5\xFF\x81";
  for (const bool italic : {false, true}) {
    const HFONT font = MakeFont(-15, "Courier New", italic);
    const auto draw = [&](HDC dc) {
      const RECT row{0, 5, 400, 40};
      ExtTextOutA(dc, 3, 5, ETO_OPAQUE | ETO_CLIPPED, &row, text.data(), static_cast<UINT>(text.size()),
                  nullptr);
    };
    With(font, [&](HDC dc, const TEXTMETRICA&) { draw(dc); });
    const Pixels whole = Picture();
    // Spoil some places, and have only these painted anew.
    for (const RECT& part : {RECT{37, 0, 38, 40}, RECT{100, 9, 161, 13}, RECT{390, 3, 400, 20}}) {
      window_.Draw([&](HDC dc) { FillWith(dc, part, kRed); });
      InvalidateRect(window_.Handle(), &part, FALSE);
    }
    window_.paint = [&](HDC dc, const PAINTSTRUCT&) {
      FillWith(dc, {0, 0, 400, 120}, kWhite);
      SetBkColor(dc, kWhite);
      const HGDIOBJ former = SelectObject(dc, font);
      draw(dc);
      SelectObject(dc, former);
    };
    window_.Pump();
    EXPECT_EQ(Picture(), whole) << italic;
    DeleteObject(font);
  }
}

TEST_F(TextTest, TheLongestTextFarOffTheLeftEdgeShowsItsVisibleColumns) {
  const HFONT font = MakeFont(-13);
  std::string text(32760, 'x');
  text.replace(30000, 3, "abc");
  With(font, [&](HDC dc, const TEXTMETRICA& metrics) {
    TextOutA(dc, 16 - 30000 * metrics.tmAveCharWidth, 0, text.data(), static_cast<int>(text.size()));
  });
  const Pixels far = Picture();
  With(font, [&](HDC dc, const TEXTMETRICA&) {
    const std::string near = "xxabc" + std::string(60, 'x');
    TextOutA(dc, 0, 0, near.data(), static_cast<int>(near.size()));
  });
  EXPECT_EQ(Picture(), far);
  DeleteObject(font);
}

TEST_F(TextTest, EveryByteOfEveryKindOfFontCanBeDrawn) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) {
    all += static_cast<char>(byte);
  }
  for (const char* face : {"Courier New", "DejaVu Sans", "No Such Face At All", "", "Symbol"}) {
    const HFONT font = MakeFont(-11, face, true, 700);
    ASSERT_NE(font, nullptr) << face;
    With(font, [&](HDC dc, const TEXTMETRICA& metrics) {
      for (int row = 0; row < 8; ++row) {
        TextOutA(dc, 0, row * metrics.tmHeight, all.data() + row * 32, 32);
      }
      SIZE size{};
      GetTextExtentPointA(dc, all.data(), 256, &size);
      EXPECT_EQ(size.cx, 256 * metrics.tmAveCharWidth);
      EXPECT_EQ(size.cy, metrics.tmHeight);
    });
    DeleteObject(font);
  }
}

TEST_F(TextTest, AControlCharacterShowsAsABox) {
  const HFONT font = MakeFont(-13);
  With(font, [&](HDC dc, const TEXTMETRICA& metrics) {
    TextOutA(dc, 0, 0, "\x01", 1);
    TextOutA(dc, 50, 0, "\x81", 1);
    EXPECT_TRUE(Marked(0, 0, metrics.tmAveCharWidth, metrics.tmHeight));
  });
  EXPECT_EQ(window_.Art(0, 0, 8, 15), window_.Art(50, 0, 8, 15));
  DeleteObject(font);
}

TEST_F(TextTest, SizesFromOnePixelToThousandsMeasureAndDraw) {
  int former = 0;
  for (const int size : {1, 2, 3, 5, 8, 13, 40, 100, 200, 1000, 5000, 7999}) {
    const HFONT font = MakeFont(-size);
    ASSERT_NE(font, nullptr) << size;
    With(font, [&](HDC dc, const TEXTMETRICA& metrics) {
      EXPECT_GE(metrics.tmHeight, size);
      EXPECT_GE(metrics.tmHeight, former);
      EXPECT_GE(metrics.tmAveCharWidth, 1);
      EXPECT_EQ(metrics.tmHeight, metrics.tmAscent + metrics.tmDescent);
      EXPECT_NEAR(metrics.tmAveCharWidth, size * 0.6, 1.0);
      former = metrics.tmHeight;
      // The stem of the second letter in the middle of the window, standing on its lower part.
      TextOutA(dc, 200 - metrics.tmAveCharWidth * 3 / 2, 100 - metrics.tmAscent, "AI\x81M", 4);
    });
    EXPECT_TRUE(Marked(0, 0, 400, 120)) << size;
    DeleteObject(font);
  }
  // Beyond what the font engine can do a size is taken for the largest.
  for (const int size : {100000, 2000000000}) {
    const HFONT font = MakeFont(-size);
    ASSERT_NE(font, nullptr);
    With(font, [&](HDC dc, const TEXTMETRICA& metrics) {
      EXPECT_GE(metrics.tmHeight, 8000);
      TextOutA(dc, 0, 0, "x", 1);
    });
    DeleteObject(font);
  }
}

TEST_F(TextTest, APositiveHeightIsTheHeightOfTheCell) {
  const HFONT font = MakeFont(30);
  With(font, [](HDC, const TEXTMETRICA& metrics) { EXPECT_NEAR(metrics.tmHeight, 30, 1); });
  DeleteObject(font);
}

TEST_F(TextTest, WeightAndSlantChangeTheLetters) {
  const auto picture = [&](HFONT font) {
    With(font, [](HDC dc, const TEXTMETRICA&) { TextOutA(dc, 10, 10, "HIll", 4); });
    DeleteObject(font);
    return Picture();
  };
  const Pixels plain = picture(MakeFont(-16));
  EXPECT_NE(picture(MakeFont(-16, "Courier New", false, 700)), plain);
  EXPECT_NE(picture(MakeFont(-16, "Courier New", true)), plain);
  EXPECT_EQ(picture(MakeFont(-16)), plain);
}

TEST_F(TextTest, ColorsAreExactInTheMiddleOfALine) {
  const HFONT font = MakeFont(-40);
  With(font, [](HDC dc, const TEXTMETRICA&) {
    SetTextColor(dc, kBlue);
    SetBkColor(dc, kYellow);
    TextOutA(dc, 0, 0, "_", 1);
  });
  const Pixels pixels = Picture();
  int blue = 0;
  for (int y = 0; y < 60; ++y) {
    blue += pixels.Get(12, y) == kBlue ? 1 : 0;
  }
  EXPECT_GE(blue, 1);
  DeleteObject(font);
}

TEST_F(TextTest, StockFontAndDotsPerInch) {
  window_.Draw([](HDC dc) {
    EXPECT_EQ(GetDeviceCaps(dc, LOGPIXELSY), 96);
    const HGDIOBJ stock = GetStockObject(ANSI_FIXED_FONT);
    SelectObject(dc, stock);
    TEXTMETRICA metrics = Measure(dc);
    EXPECT_GT(metrics.tmAveCharWidth, 4);
    EXPECT_EQ(metrics.tmPitchAndFamily & 1, 0);
    // A stock object outlives its deletion.
    EXPECT_TRUE(DeleteObject(stock));
  });
  window_.Draw([](HDC dc) { EXPECT_GT(Measure(dc).tmHeight, 8); });
}

}  // namespace
