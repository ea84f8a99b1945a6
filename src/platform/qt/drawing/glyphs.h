// Draws the cells of a text on the grid of its font: slowly and generally with a painter, or fast from tiles.
//
// A tile is the finished picture of one character in one pair of colors. Text of a viewer is mostly cells of
// the same few pairs, so that a screen of it is a matter of copying. A tile has the very pixels that the
// painter gives within its cells; a glyph of the font that reaches over its cell, and a font too large to
// keep, have none. What no single glyph of the font does for (wide characters, marks on a character, a face
// of another font that is too wide) is a picture, which is fitted into its cells and never reaches over them.
#pragma once

#include <QPainter>
#include <cstdint>

#include "platform/cells.h"
#include "platform/qt/drawing/gdi_objects.h"

namespace platform_qt {

// A text on the grid of its font: (x, y) is the upper left corner of the first cell.
struct GridText {
  int x, y;
  CellView cells;

  [[nodiscard]] int Count() const { return static_cast<int>(cells.size()); }
};

// Draws the glyphs, and the lines of an underlined font, in the color of the painter's pen. Pictures may lie
// on ground of the color given.
void PaintGlyphs(QPainter& painter, HFONT__& font, const GridText& text, Pixel ground);

// The tile of the character at `index`: rows of the font's advance times its columns, as many as the font's
// height. Null when there is none. Valid as long as no more
// tiles are asked for than a row of a screen has.
[[nodiscard]] const Pixel* TileAt(HFONT__& font, CellView cells, std::size_t index, Pixel text, Pixel ground);

}  // namespace platform_qt
