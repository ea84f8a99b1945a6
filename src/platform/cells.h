// The view's text: cells, one a column, which stand on the grid of a font. It has operations of the layer's
// own, which each system's folder implements: a cell is no character of the texts that the system's own
// operations take, which are UTF-8 all through. Tables and conversions may be used on any thread, drawing on
// the window's only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/win32.h"

// What stands in a column: a character of the Windows-1252 set.
using Cell = char;
using CellView = std::basic_string_view<Cell>;
using CellText = std::basic_string<Cell>;

inline constexpr std::size_t kCellCodes = 256;

// The cell of a character's code, and back.
[[nodiscard]] constexpr Cell CellOf(std::uint8_t code) {
  return static_cast<Cell>(code);
}
[[nodiscard]] constexpr std::uint8_t CodeOf(Cell cell) {
  return static_cast<std::uint8_t>(cell);
}

// Cells of text that is ASCII.
[[nodiscard]] inline CellText AsciiCells(std::string_view text) {
  return {text.begin(), text.end()};
}

// Draws cells with the upper left corner of the first one at (x, y), in the colors and the font of the device
// context. With a rectangle, that is filled with the background color first, and nothing is drawn outside it;
// without one, the cells lie on ground of their own.
void DrawCells(HDC dc, int x, int y, const RECT* rect, CellView cells);

// The width that so many cells take in the font of the device context, pixels.
[[nodiscard]] int CellsWidth(HDC dc, std::size_t count);

[[nodiscard]] std::string CellsToUtf8(CellView cells);
[[nodiscard]] std::u16string CellsToUtf16(CellView cells);

// Each character becomes one cell. Empty when there is no cell for one of them, or the text is no UTF-8.
[[nodiscard]] std::optional<CellText> Utf8ToCells(std::string_view text);

// The OEM code page of the user's system: the code of the cell that shows each byte, where the page has a
// character that the set lacks one that looks or sounds like it; and the byte for the code of each cell.
[[nodiscard]] const std::uint8_t* OemCellCodes();
[[nodiscard]] const std::uint8_t* OemBytes();
