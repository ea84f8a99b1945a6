// The view's text: cells, one a column, which stand on the grid of a font. It has operations of the layer's
// own, which each system's folder implements: a cell is no character of the texts that the system's own
// operations take, which are UTF-8 all through. Tables and conversions may be used on any thread, drawing on
// the window's only.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/win32.h"

// What stands in a column: a character (its code point); or, with one of the bits below, something else. A
// format character, a tab or a form feed in a cell has no picture of its own, and is drawn as a mark.
using Cell = char32_t;
using CellText = std::basic_string<Cell>;

inline constexpr Cell kClusterCell = 0x20000000;  // and the index of a character with its combining marks
inline constexpr Cell kBadCell = 0x40000000;      // and the byte, or unit, of the file that is no character
inline constexpr Cell kWideTail = 0x80000000;     // the right half of the wide character in front of it
inline constexpr Cell kCellKinds = 0xE0000000;

// A character with combining marks; 0 stands behind the last one.
struct CellCluster {
  static constexpr std::size_t kMostMarks = 4;
  char32_t base;  // 0: the marks have no character in front of them
  std::array<char32_t, kMostMarks> marks;
  bool operator==(const CellCluster&) const = default;
};

// Cells side by side, with the clusters that theirs name. Does not own them.
class CellView : public std::basic_string_view<Cell> {
 public:
  using View = std::basic_string_view<Cell>;
  CellView() = default;
  CellView(View cells, const CellCluster* clusters = nullptr) : View(cells), clusters_(clusters) {}
  CellView(const Cell* cells, std::size_t count, const CellCluster* clusters = nullptr)
      : View(cells, count), clusters_(clusters) {}
  CellView(const CellText& cells) : View(cells) {}

  [[nodiscard]] CellView substr(std::size_t from, std::size_t count = npos) const {
    return {View::substr(from, count), clusters_};
  }
  [[nodiscard]] const CellCluster* Clusters() const { return clusters_; }
  [[nodiscard]] const CellCluster& ClusterOf(Cell cell) const { return clusters_[cell & ~kCellKinds]; }

 private:
  const CellCluster* clusters_ = nullptr;
};

// Cells with their clusters, owned.
struct CellRow {
  CellText cells;
  std::vector<CellCluster> clusters;
  [[nodiscard]] CellView View() const { return {cells, clusters.data()}; }
};
[[nodiscard]] CellRow CopyOf(CellView cells);

// Copies cells to `to`, which has room for them, and the clusters that they name behind those in `clusters`.
void CopyCells(CellView cells, Cell* to, std::vector<CellCluster>& clusters);

// The cells of UTF-8 text, which is no file's: without tabs and line breaks of its own.
[[nodiscard]] CellRow CellsOfUtf8(std::string_view text);

inline constexpr std::size_t kCellCodes = 256;

// The cells of the characters of the Windows-1252 set, by their codes; and the code of a cell, where the set
// has its character.
[[nodiscard]] const Cell* CellsOfCodes();
[[nodiscard]] std::optional<std::uint8_t> CodeOf(Cell cell);
[[nodiscard]] inline Cell CellOf(std::uint8_t code) {
  return CellsOfCodes()[code];
}

// Cells of text whose bytes are of the Windows-1252 set.
[[nodiscard]] CellText CellsOfBytes(std::string_view bytes);

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

// The text that cells stand for: clusters with all their marks, U+FFFD for what is no character.
[[nodiscard]] std::string CellsToUtf8(CellView cells);
[[nodiscard]] std::u16string CellsToUtf16(CellView cells);

// The characters of the Windows-1252 set in the text, one code each. Empty when there is another one among
// them, or the text is no UTF-8.
[[nodiscard]] std::optional<std::string> Utf8ToCodes(std::string_view text);

// The OEM code page of the user's system: the code of the cell that shows each byte, where the page has a
// character that the set lacks one that looks or sounds like it; and the byte for the code of each cell.
[[nodiscard]] const std::uint8_t* OemCellCodes();
[[nodiscard]] const std::uint8_t* OemBytes();
