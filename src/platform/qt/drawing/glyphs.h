// Draws the cells of a text on the grid of its font: slowly and generally with a painter, or fast from tiles.
//
// A tile is the finished picture of one cell in one pair of colors. Text of a viewer is mostly cells
// of the same few pairs, so that a screen of it is a matter of copying. A tile has the very pixels that the
// painter gives within the cell; a glyph that reaches over its cell, and a font too large to keep, have none.
#pragma once

#include <QPainter>
#include <cstdint>

#include "platform/cells.h"
#include "platform/qt/drawing/gdi_objects.h"

namespace platform_qt {

// A text on the grid of its font: (x, y) is the upper left corner of the first cell.
struct GridText {
  int x, y;
  const Cell* cells;
  int count;
};

// Draws the glyphs, and the lines of an underlined font, in the color of the painter's pen.
void PaintGlyphs(QPainter& painter, HFONT__& font, const GridText& text);

// Draws a character that is no cell, in the one at (x, y): with whatever font of the system has it, else as a
// box.
void PaintCharacter(QPainter& painter, const HFONT__& font, int x, int y, char32_t character);

// The tile of a cell: rows of the font's advance, as many as its height. Null when there is none. Valid until
// the next call with other colors.
[[nodiscard]] const Pixel* TileOf(HFONT__& font, std::uint8_t code, Pixel text, Pixel ground);

}  // namespace platform_qt
