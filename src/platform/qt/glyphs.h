// Draws the bytes of a text on the grid of its font: slowly and generally with a painter, or fast from tiles.
//
// A tile is the finished picture of one byte's cell in one pair of colors. Text of a viewer is mostly cells
// of the same few pairs, so that a screen of it is a matter of copying. A tile has the very pixels that the
// painter gives within the cell; a glyph that reaches over its cell, and a font too large to keep, have none.
#pragma once

#include <QPainter>
#include <QRegion>
#include <array>
#include <bitset>
#include <cstdint>
#include <vector>

#include "platform/qt/surface.h"
#include "platform/win32.h"

struct HFONT__;

namespace platform_qt {

// A text on the grid of its font: (x, y) is the upper left corner of the first cell.
struct GridText {
  int x, y;
  const char* bytes;
  int count;
};

// Draws the glyphs, and the lines of an underlined font, in the color of the painter's pen.
void PaintGlyphs(QPainter& painter, HFONT__& font, const GridText& text);

class GlyphTiles {
 public:
  // The tile of a byte: rows of the font's advance, as many as its height. Null when there is none.
  const Pixel* Tile(HFONT__& font, std::uint8_t byte, Pixel text, Pixel ground);

 private:
  static constexpr std::size_t kPairs = 4;
  struct Set {
    Pixel text = 0;
    Pixel ground = 0;
    std::uint64_t lastUse = 0;
    std::bitset<256> drawn;
    std::vector<Pixel> pixels;
  };

  Set& SetFor(std::size_t pixelsOfTile, Pixel text, Pixel ground);
  bool Draw(HFONT__& font, std::uint8_t byte, Set& set);

  std::array<Set, kPairs> sets_;
  std::size_t last_ = 0;
  std::uint64_t uses_ = 0;
  std::bitset<256> reachesOver_;
};

}  // namespace platform_qt
