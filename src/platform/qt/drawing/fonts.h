// Fonts as the program sees them: an em height in pixels, and a grid whose step is a whole number of
// pixels, on which the bytes of the Windows-1252 set stand. They know nothing of what they are drawn on.
#pragma once

#include "platform/qt/drawing/gdi_objects.h"

namespace platform_qt {

// A fixed-pitch font of the system; lives as long as the toolkit.
[[nodiscard]] HFONT StockFont();
void ForgetStockFont();

// The toolkit's font for a description; lfHeight counts in device pixels.
[[nodiscard]] QFont DescribeFont(const LOGFONTA& font);

// The glyph of one byte; finds a fallback on first use.
[[nodiscard]] const ByteGlyph& GlyphOf(HFONT__& font, std::uint8_t byte);

}  // namespace platform_qt
