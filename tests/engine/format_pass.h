// One pass of a format routine over bytes that a test gives, with the result as plain values that compare
// and print. Slice, entries and text are allocated at their exact sizes, so that the address sanitizer
// sees a step outside.
#pragma once

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "engine/view_records.h"
#include "tests/cell_text.h"

struct PassLine {
  FilePos pos = 0;
  std::string text;
  std::uint32_t flags = 0;
  friend bool operator==(const PassLine&, const PassLine&) = default;
};

struct PassLimits {
  std::int32_t entries = kViewLines;
  std::int32_t firstEntry = 0;  // forward: first entry to fill; backward: one above the first
  std::int32_t textSize = kViewText;
  std::int32_t textUsed = 0;
  LongLine isLong = LongLine::unknown;
};

struct PassResult {
  ViewStatus status = 0;
  std::vector<PassLine> lines;     // top to bottom
  FilePos sentinel = kNoPosition;  // forward: its Lpos
  FilePos end = kNoPosition;       // LineCursor::Cend
  std::int32_t index = 0;          // LineCursor::Ccur
  std::int32_t textUsed = 0;       // TextBuffer::Tend

  // "pos:text " for each line, with the flags' letters behind a slash; forward "=sentinel" at the end.
  [[nodiscard]] std::string Shown() const {
    static constexpr std::pair<std::uint32_t, char> kLetters[] = {
        {LF_TRUNCATED, 'T'}, {LF_INCOMPLETE, 'I'}, {LF_PAGEMARK, 'M'}, {LF_PAGEGAP, 'G'}};
    std::string rows;
    for (const PassLine& line : lines) {
      rows += std::to_string(line.pos.Offset()) + ":" + line.text + (line.flags != 0 ? "/" : "");
      for (const auto& [flag, letter] : kLetters)
        rows += (line.flags & flag) != 0 ? std::string(1, letter) : "";
      rows += ' ';
    }
    return sentinel == kNoPosition ? rows : rows + "=" + std::to_string(sentinel.Offset());
  }
};

// Runs `format` from index `off` of `bytes`, which is the byte at file offset `pos`. The entries begin with
// rubbish, so that a field that is not set shows.
inline PassResult RunPass(FormatProc format, const std::string& bytes, std::int32_t off, FilePos pos,
                          std::int32_t direction, ViewOptions options, std::int32_t lineLen,
                          const PassLimits& limits = {}) {
  const auto data = std::make_unique<std::uint8_t[]>(bytes.size());
  std::copy(bytes.begin(), bytes.end(), data.get());
  std::vector<LineEntry> entries(static_cast<std::size_t>(limits.entries), LineEntry{77, 77, 77, 77, 77});
  const auto cells = std::make_unique<Cell[]>(static_cast<std::size_t>(limits.textSize));
  const auto clusters = std::make_unique<CellCluster[]>(static_cast<std::size_t>(limits.textSize));
  const FileSlice slice = {data.get(), static_cast<std::int32_t>(bytes.size()), off};
  LineCursor cursor{entries.data(), limits.entries, limits.firstEntry, limits.isLong};
  TextBuffer text = {cells.get(), limits.textSize, limits.textUsed, clusters.get(), 0};
  PassResult result;
  result.status = format(slice, cursor, text, pos, direction, options, lineLen);
  result.end = cursor.Cend;
  result.index = cursor.Ccur;
  result.textUsed = text.Tend;
  const bool forward = direction == FILL_FORWARD;
  for (std::int32_t i = forward ? limits.firstEntry : cursor.Ccur;
       i < (forward ? cursor.Ccur : limits.firstEntry); ++i) {
    const LineEntry& line = cursor.Cline[i];
    result.lines.push_back(
        {line.Lpos, BytesOf(LineCells(line, text)), line.Lflags | static_cast<std::uint32_t>(line.Lpage)});
  }
  if (forward && (result.status & VS_FAILED) == 0) {
    const LineEntry& sentinel = cursor.Cline[cursor.Ccur];
    const LineEntry wanted = SentinelAt(sentinel.Lpos);
    if (std::memcmp(&sentinel, &wanted, sizeof wanted) == 0) result.sentinel = sentinel.Lpos;
  }
  return result;
}
