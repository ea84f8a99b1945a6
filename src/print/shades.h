// Print shades as numbers from 0, white, to 8, black, as a person types them.
#pragma once

#include "platform/win32.h"

inline constexpr int kMostShade = 8;
inline constexpr int kLevelsOfAShade = 32;

// The number of a color, by its red alone.
[[nodiscard]] constexpr int ShadeOf(COLORREF color) {
  return (256 - static_cast<int>(color & 0xFF)) / kLevelsOfAShade;
}

// The pure gray of a number from 0 to 8.
[[nodiscard]] constexpr COLORREF ColorOfShade(int number) {
  const int level = (kMostShade - number) * kLevelsOfAShade;
  const auto gray = static_cast<BYTE>(level < 255 ? level : 255);
  return RGB(gray, gray, gray);
}
