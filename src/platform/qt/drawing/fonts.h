// Fonts as the program sees them: an em height in pixels, and a grid whose step is a whole number of
// pixels, on which cells stand. They know nothing of what they are drawn on.
#pragma once

#include "platform/qt/drawing/gdi_objects.h"

namespace platform_qt {

// A fixed-pitch font of the system; lives as long as the toolkit.
[[nodiscard]] HFONT StockFont();
void ForgetStockFont();

// The toolkit's font for a description; lfHeight counts in device pixels.
[[nodiscard]] QFont DescribeFont(const LOGFONTA& font);

// The glyph of a cell that holds a character alone; looks for it on first use. Valid until the next call.
[[nodiscard]] const CellGlyph& GlyphOf(HFONT__& font, Cell cell);

}  // namespace platform_qt
