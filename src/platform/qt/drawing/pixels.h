// Colors and rectangles as the program and as the toolkit have them, turned into each other.
#pragma once

#include <QRect>
#include <cstdint>

#include "platform/win32.h"

namespace platform_qt {

using Pixel = std::uint32_t;  // 0xFFRRGGBB

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

}  // namespace platform_qt
