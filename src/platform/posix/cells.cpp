#include "platform/cells.h"

#include <algorithm>
#include <iterator>

#include "platform/posix/windows_1252.h"
#include "platform/unicode.h"

namespace {

// The next character of UTF-8 text (RFC 3629), whose bytes it takes off `text`. Empty, with one byte taken,
// when that begins none.
std::optional<char32_t> TakeCharacter(std::string_view& text) {
  const auto byteAt = [&text](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  const std::uint8_t first = byteAt(0);
  const std::size_t length = first < 0x80                    ? 1
                             : first >= 0xC2 && first < 0xE0 ? 2
                             : (first & 0xF0) == 0xE0        ? 3
                             : first >= 0xF0 && first < 0xF5 ? 4
                                                             : 0;
  static constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  char32_t character = length == 1 ? first : first & (0xFFU >> (length + 1));
  bool good = length != 0 && text.size() >= length;
  for (std::size_t i = 1; good && i < length; ++i) {
    good = (byteAt(i) & 0xC0) == 0x80;
    character = (character << 6) | (byteAt(i) & 0x3FU);
  }
  good = good && character >= kLeast[length] && character <= 0x10FFFF && (character & 0xFFFFF800) != 0xD800;
  text.remove_prefix(good ? length : 1);
  return good ? std::optional(character) : std::nullopt;
}

void AppendUtf8(char32_t character, std::string& text) {
  if (character < 0x80) {
    text += static_cast<char>(character);
    return;
  }
  const int further = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
  static constexpr unsigned kLeads[] = {0, 0xC0, 0xE0, 0xF0};
  text += static_cast<char>(kLeads[further] | (character >> (6 * further)));
  for (int i = further - 1; i >= 0; --i)
    text += static_cast<char>(0x80 | ((character >> (6 * i)) & 0x3F));
}

void AppendUtf16(char32_t character, std::u16string& text) {
  if (character < 0x10000) {
    text += static_cast<char16_t>(character);
    return;
  }
  text += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
  text += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
}

// Gives each character that the cells stand for to `append`.
template <typename Append>
void EachCharacter(CellView cells, Append&& append) {
  for (const Cell cell : cells) {
    if ((cell & kCellKinds) == 0) {
      append(cell);
    } else if ((cell & kBadCell) != 0) {
      append(kReplacementCharacter);
    } else if ((cell & kClusterCell) != 0) {
      const CellCluster& cluster = cells.ClusterOf(cell);
      if (cluster.base != 0) append(cluster.base);
      for (const char32_t mark : cluster.marks) {
        if (mark != 0) append(mark);
      }
    }
  }
}

// Adds a mark to the character that stands last. False when there is none, or it has all that it can hold.
bool AddMark(char32_t mark, CellRow& row) {
  if (row.cells.empty()) return false;
  std::size_t at = row.cells.size() - 1;
  if (row.cells[at] == kWideTail && at > 0) --at;
  Cell& cell = row.cells[at];
  if ((cell & kCellKinds) == 0) {
    row.clusters.push_back({cell, {mark}});
    cell = kClusterCell | static_cast<Cell>(row.clusters.size() - 1);
    return true;
  }
  if ((cell & kCellKinds) != kClusterCell) return false;
  auto& marks = row.clusters[cell & ~kCellKinds].marks;
  const auto free = std::ranges::find(marks, char32_t{0});
  if (free == marks.end()) return false;
  *free = mark;
  return true;
}

}  // namespace

const Cell* CellsOfCodes() {
  static const auto cells = [] {
    std::array<Cell, kCellCodes> made{};
    for (std::size_t code = 0; code < kCellCodes; ++code)
      made[code] = UnicodeOfWindows1252(static_cast<std::uint8_t>(code));
    return made;
  }();
  return cells.data();
}

std::optional<std::uint8_t> CodeOf(Cell cell) {
  if (cell < 0x80 || (cell > 0x9F && cell <= 0xFF)) return static_cast<std::uint8_t>(cell);
  const auto* const at = std::ranges::find(kWindows1252Block, cell);
  if (at == std::end(kWindows1252Block)) return std::nullopt;
  return static_cast<std::uint8_t>(0x80 + (at - std::begin(kWindows1252Block)));
}

CellText CellsOfBytes(std::string_view bytes) {
  CellText cells;
  for (const char byte : bytes)
    cells += CellOf(static_cast<std::uint8_t>(byte));
  return cells;
}

CellRow CopyOf(CellView cells) {
  CellRow row;
  row.cells.resize(cells.size());
  CopyCells(cells, row.cells.data(), row.clusters);
  return row;
}

void CopyCells(CellView cells, Cell* to, std::vector<CellCluster>& clusters) {
  for (const Cell cell : cells) {
    *to = cell;
    if ((cell & kCellKinds) == kClusterCell) {
      clusters.push_back(cells.ClusterOf(cell));
      *to = kClusterCell | static_cast<Cell>(clusters.size() - 1);
    }
    ++to;
  }
}

CellRow CellsOfUtf8(std::string_view text) {
  CellRow row;
  while (!text.empty()) {
    const auto first = static_cast<std::uint8_t>(text[0]);
    const std::optional<char32_t> character = TakeCharacter(text);
    if (!character) {
      row.cells.push_back(kBadCell | first);
      continue;
    }
    const CharacterKind kind = KindOfCharacter(*character);
    if (kind != CharacterKind::mark) {
      row.cells += *character;
      if (kind == CharacterKind::wide) row.cells += kWideTail;
    } else if (!AddMark(*character, row)) {
      row.clusters.push_back({0, {*character}});
      row.cells += kClusterCell | static_cast<Cell>(row.clusters.size() - 1);
    }
  }
  return row;
}

std::string CellsToUtf8(CellView cells) {
  std::string text;
  EachCharacter(cells, [&text](char32_t character) { AppendUtf8(character, text); });
  return text;
}

std::u16string CellsToUtf16(CellView cells) {
  std::u16string text;
  EachCharacter(cells, [&text](char32_t character) { AppendUtf16(character, text); });
  return text;
}

std::optional<std::string> Utf8ToCodes(std::string_view text) {
  std::string codes;
  while (!text.empty()) {
    const std::optional<char32_t> character = TakeCharacter(text);
    const std::optional<std::uint8_t> code = character ? CodeOf(*character) : std::nullopt;
    if (!code) return std::nullopt;
    codes += static_cast<char>(*code);
  }
  return codes;
}
