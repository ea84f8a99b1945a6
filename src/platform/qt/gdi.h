// The objects behind HDC, HFONT, HPEN and HBRUSH. Fonts, pens and brushes are owned by whoever made them;
// a device context lives from GetDC or BeginPaint to its end and only points to what is selected.
#pragma once

#include <QRawFont>
#include <QRegion>
#include <array>
#include <vector>

#include "platform/qt/glyphs.h"
#include "platform/qt/surface.h"
#include "platform/win32.h"

struct GdiObject {
  enum class Kind : std::uint8_t { font, pen, brush } kind;
  bool stock = false;
  int selections = 0;  // device contexts that hold it
};

struct HPEN__ : GdiObject {
  int style = PS_SOLID;  // or NULL_PEN
  COLORREF color = 0;
};

struct HBRUSH__ : GdiObject {
  COLORREF color = 0;
};

// How one byte of text is drawn: a glyph of the font itself, of a font that has what it lacks, or a box.
struct ByteGlyph {
  enum class Source : std::uint8_t { unknown, font, fallback, box } source = Source::unknown;
  std::uint16_t fallback = 0;  // index of the fallback font
  quint32 glyph = 0;
};

struct HFONT__ : GdiObject {
  QRawFont face;
  QFont description;
  std::array<ByteGlyph, 256> glyphs;
  std::vector<QRawFont> fallbacks;
  int ascent = 0;
  int descent = 0;
  int internalLeading = 0;
  int externalLeading = 0;
  int advance = 1;  // the step of the grid
  int widest = 1;
  bool fixedPitch = false;
  platform_qt::GlyphTiles tiles;
};

struct HDC__ {
  HWND window = nullptr;
  QRegion clip;  // within the client area
  HFONT font = nullptr;
  HPEN pen = nullptr;
  HBRUSH brush = nullptr;
  COLORREF textColor = RGB(0, 0, 0);
  COLORREF background = RGB(255, 255, 255);
  POINT position{0, 0};
};

namespace platform_qt {

constexpr Pixel PixelOf(COLORREF color) {
  return 0xFF000000U | ((color & 0xFF) << 16) | (color & 0xFF00) | ((color >> 16) & 0xFF);
}
constexpr COLORREF ColorOf(Pixel pixel) {
  return ((pixel & 0xFF) << 16) | (pixel & 0xFF00) | ((pixel >> 16) & 0xFF);
}
inline QRect RectOf(const RECT& rect) {
  return {QPoint(rect.left, rect.top), QPoint(rect.right - 1, rect.bottom - 1)};
}
inline RECT RectOf(const QRect& rect) {
  return {rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()};
}

// A device context of `window` with the objects that a new one holds, and its end.
HDC OpenDc(HWND window, const QRegion& clip);
void CloseDc(HDC dc);

// Fills the part of `rect` that the device context may draw on.
void FillThrough(HDC dc, const QRect& rect, Pixel color);

// The glyph of one byte; finds a fallback on first use.
const ByteGlyph& GlyphOf(HFONT__& font, std::uint8_t byte);

}  // namespace platform_qt
