#include "platform/cells.h"

#include <algorithm>
#include <iterator>

#include "platform/posix/windows_1252.h"

namespace {

// The next character of UTF-8 text (RFC 3629), as far as it lies in the basic plane: no other stands in the
// set. Takes its bytes off `text`. Empty when they are no such character.
std::optional<char16_t> TakeCharacter(std::string_view& text) {
  const auto byteAt = [&text](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  const std::uint8_t first = byteAt(0);
  const std::size_t length = first < 0x80                    ? 1
                             : first >= 0xC2 && first < 0xE0 ? 2
                             : (first & 0xF0) == 0xE0        ? 3
                                                             : 0;
  if (length == 0 || text.size() < length) return std::nullopt;
  std::uint32_t character = length == 1 ? first : length == 2 ? first & 0x1FU : first & 0x0FU;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byteAt(i) & 0xC0) != 0x80) return std::nullopt;
    character = (character << 6) | (byteAt(i) & 0x3FU);
  }
  if (length == 3 && character < 0x800) return std::nullopt;
  text.remove_prefix(length);
  return static_cast<char16_t>(character);
}

std::optional<Cell> CellOfUnicode(char16_t character) {
  if (character < 0x80 || (character > 0x9F && character <= 0xFF))
    return CellOf(static_cast<std::uint8_t>(character));
  const auto* const at = std::ranges::find(kWindows1252Block, character);
  if (at == std::end(kWindows1252Block)) return std::nullopt;
  return CellOf(static_cast<std::uint8_t>(0x80 + (at - std::begin(kWindows1252Block))));
}

}  // namespace

std::string CellsToUtf8(CellView cells) {
  std::string text;
  for (const Cell cell : cells) {
    const unsigned character = UnicodeOfWindows1252(CodeOf(cell));
    if (character < 0x80) {
      text += static_cast<char>(character);
    } else if (character < 0x800) {
      text += static_cast<char>(0xC0 | (character >> 6));
      text += static_cast<char>(0x80 | (character & 0x3F));
    } else {
      text += static_cast<char>(0xE0 | (character >> 12));
      text += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
      text += static_cast<char>(0x80 | (character & 0x3F));
    }
  }
  return text;
}

std::u16string CellsToUtf16(CellView cells) {
  std::u16string text;
  for (const Cell cell : cells)
    text += UnicodeOfWindows1252(CodeOf(cell));
  return text;
}

std::optional<CellText> Utf8ToCells(std::string_view text) {
  CellText cells;
  while (!text.empty()) {
    const std::optional<char16_t> character = TakeCharacter(text);
    const std::optional<Cell> cell = character ? CellOfUnicode(*character) : std::nullopt;
    if (!cell) return std::nullopt;
    cells += *cell;
  }
  return cells;
}
