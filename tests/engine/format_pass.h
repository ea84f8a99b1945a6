// One pass of a format routine over bytes that a test gives, with the result as plain values that compare
// and print. Slice, entries and text are allocated at their exact sizes, so that the address sanitizer
// sees a step outside.
#pragma once

#include <cstring>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "engine/view_records.h"

struct PassLine {
  FilePos pos = 0;
  std::string text;
  std::uint32_t flags = 0;
  friend bool operator==(const PassLine&, const PassLine&) = default;
  friend std::ostream& operator<<(std::ostream& out, const PassLine& line) {
    return out << "{" << line.pos << ", \"" << line.text << "\", " << line.flags << "}";
  }
};

struct PassLimits {
  std::int32_t entries = kViewLines;
  std::int32_t firstEntry = 0;  // forward: first entry to fill; backward: one above the first
  std::int32_t textSize = kViewText;
  std::int32_t textUsed = 0;
};

struct PassResult {
  ViewStatus status = 0;
  std::vector<PassLine> lines;          // top to bottom
  FilePos sentinel = kNoPosition;       // forward: its Lpos
  FilePos end = kNoPosition;            // LineCursor::Cend
  std::int32_t index = 0;               // LineCursor::Ccur
  std::int32_t textUsed = 0;            // TextBuffer::Tend
  std::vector<FilePos> Starts() const;  // of the lines
};

inline std::vector<FilePos> PassResult::Starts() const {
  std::vector<FilePos> starts;
  for (const PassLine& line : lines)
    starts.push_back(line.pos);
  return starts;
}

// Runs `format` from index `off` of `bytes`, which is the byte at file offset `pos`. The entries begin with
// rubbish, so that a field that is not set shows.
inline PassResult RunPass(FormatProc format, const std::string& bytes, std::int32_t off, FilePos pos,
                          std::int32_t direction, ViewOptions options, std::int32_t lineLen,
                          const PassLimits& limits = {}) {
  const auto size = bytes.size();
  const auto data = std::make_unique<std::uint8_t[]>(size);
  if (size > 0) std::memcpy(data.get(), bytes.data(), size);
  const auto entries = std::make_unique<LineEntry[]>(static_cast<std::size_t>(limits.entries));
  for (std::int32_t i = 0; i < limits.entries; ++i)
    entries[static_cast<std::size_t>(i)] = {77, 77, 77, 77, 77};
  const auto characters = std::make_unique<char[]>(static_cast<std::size_t>(limits.textSize));

  const FileSlice slice = {data.get(), static_cast<std::int32_t>(size), off};
  LineCursor cursor;
  cursor.Cline = entries.get();
  cursor.Ccnt = limits.entries;
  cursor.Ccur = limits.firstEntry;
  TextBuffer text = {characters.get(), limits.textSize, limits.textUsed};
  PassResult result;
  result.status = format(slice, cursor, text, pos, direction, options, lineLen);
  result.end = cursor.Cend;
  result.index = cursor.Ccur;
  result.textUsed = text.Tend;

  const bool forward = direction == FILL_FORWARD;
  const std::int32_t first = forward ? limits.firstEntry : cursor.Ccur;
  const std::int32_t last = forward ? cursor.Ccur : limits.firstEntry;
  for (std::int32_t i = first; i < last; ++i) {
    const LineEntry& line = cursor.Cline[i];
    result.lines.push_back({line.Lpos,
                            {text.Tbuf + line.Ltext, static_cast<std::size_t>(line.Llen)},
                            line.Lflags | static_cast<std::uint32_t>(line.Lpage)});
  }
  if (forward && (result.status & VS_FAILED) == 0) {
    const LineEntry& sentinel = cursor.Cline[cursor.Ccur];
    const LineEntry wanted = SentinelAt(sentinel.Lpos);
    if (std::memcmp(&sentinel, &wanted, sizeof wanted) == 0) result.sentinel = sentinel.Lpos;
  }
  return result;
}
