// Fonts as the program sees them: an em height in pixels, and a grid whose step is a whole number of
// pixels, on which the bytes of the Windows-1252 set stand.
#pragma once

#include "platform/qt/gdi.h"

class QFont;

namespace platform_qt {

// A fixed-pitch font of the system; lives as long as the toolkit.
[[nodiscard]] HFONT StockFont();
void ForgetStockFont();

// The toolkit's font for a description; lfHeight counts in device pixels.
[[nodiscard]] QFont DescribeFont(const LOGFONTA& font);

// Dots per inch of the picture of a window.
[[nodiscard]] int DotsPerInch(HWND window);

}  // namespace platform_qt
