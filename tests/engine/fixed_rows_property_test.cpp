// Laws of the two formats whose lines are a fixed number of bytes, held against a reference that is too
// simple to be wrong.
#include <gtest/gtest.h>

#include <cstdio>
#include <random>

#include "engine/char_map.h"
#include "engine/hex_format.h"
#include "engine/raw_format.h"
#include "tests/engine/format_pass.h"

namespace {

struct Shape {
  const char* name;
  FormatProc format;
  std::int32_t lineLen;
  FilePos bytes;  // of a line
};
const Shape kShapes[] = {
    {"raw 1", FormatRaw, 1, 1},     {"raw 2", FormatRaw, 2, 2},       {"raw 7", FormatRaw, 7, 7},
    {"raw 80", FormatRaw, 80, 80},  {"raw 250", FormatRaw, 250, 250}, {"hex 4", FormatHex, 22, 4},
    {"hex 8", FormatHex, 40, 8},    {"hex 16", FormatHex, 80, 16},    {"hex 32", FormatHex, 200, 32},
    {"hex 64", FormatHex, 999, 64},
};

std::string RandomFile(std::size_t size) {
  std::mt19937 random(20 + static_cast<unsigned>(size));
  std::string bytes;
  while (bytes.size() < size)
    bytes.push_back(static_cast<char>(random() & 0xFF));
  return bytes;
}

// The line that begins at `pos`, maybe before the file, as a pass in `direction` makes it.
PassLine ReferenceLine(const Shape& shape, const std::string& file, FilePos pos, std::int32_t direction) {
  std::string digits;
  std::string characters;
  for (FilePos i = 0; i < shape.bytes && pos + i < static_cast<FilePos>(file.size()); ++i) {
    char pair[4] = "  ";
    char shown = ' ';
    if (pos + i >= 0) {
      const auto byte = static_cast<std::uint8_t>(file[static_cast<std::size_t>(pos + i)]);
      std::snprintf(pair, sizeof pair, "%02X", byte);
      shown = static_cast<char>(GetCharMap(0)[byte]);
    }
    digits += pair;
    if (i % 4 == 3) digits += ' ';
    characters += shown;
  }
  if (shape.format == FormatRaw) return {std::max<FilePos>(pos, 0), characters};
  char address[32];
  std::snprintf(address, sizeof address, "%06X  ", static_cast<unsigned>(pos));
  std::string row =
      direction == FILL_FORWARD ? address : std::string(address).substr(std::strlen(address) - 8);
  row += digits;
  row.resize(static_cast<std::size_t>(9 + shape.bytes / 4 * 9), ' ');
  return {std::max<FilePos>(pos, 0), row + characters};
}

std::vector<PassLine> ReferenceForward(const Shape& shape, const std::string& file, FilePos pos) {
  std::vector<PassLine> lines;
  for (; pos < static_cast<FilePos>(file.size()); pos += shape.bytes) {
    lines.push_back(ReferenceLine(shape, file, pos, FILL_FORWARD));
  }
  return lines;
}

std::vector<PassLine> ReferenceBackward(const Shape& shape, const std::string& file, FilePos pos) {
  std::vector<PassLine> lines;
  while (pos > 0) {
    pos -= shape.bytes;
    lines.insert(lines.begin(), ReferenceLine(shape, file, pos, FILL_BACKWARD));
  }
  return lines;
}

TEST(FixedRows, EqualTheReferenceFromEveryPlace) {
  const PassLimits down = {340, 0, 4000, 0};
  const PassLimits up = {340, 340, 4000, 0};
  for (const std::size_t size : {0, 1, 3, 4, 63, 64, 65, 333}) {
    const std::string file = RandomFile(size);
    for (const Shape& shape : kShapes) {
      const std::int32_t step = size > 100 ? 11 : 1;
      for (std::int32_t at = 0; at <= static_cast<std::int32_t>(size); at += step) {
        SCOPED_TRACE(std::string(shape.name) + " size " + std::to_string(size) + " at " + std::to_string(at));
        const PassResult forward = RunPass(shape.format, file, at, at, FILL_FORWARD, 0, shape.lineLen, down);
        ASSERT_EQ(forward.lines, ReferenceForward(shape, file, at));
        ASSERT_EQ(forward.sentinel, static_cast<FilePos>(size));
        const PassResult backward = RunPass(shape.format, file, at, at, FILL_BACKWARD, 0, shape.lineLen, up);
        ASSERT_EQ(backward.lines, ReferenceBackward(shape, file, at));
      }
    }
  }
}

// Whatever piece of the file is in memory, the lines made are those of the whole file, and only whole ones
// at the upper end.
TEST(FixedRows, APieceOfTheFileGivesLinesOfTheFile) {
  const std::string file = RandomFile(400);
  std::mt19937 random(5);
  for (int round = 0; round < 1500; ++round) {
    const Shape& shape = kShapes[random() % std::size(kShapes)];
    const auto start = static_cast<FilePos>(random() % 300);
    const std::string piece = file.substr(static_cast<std::size_t>(start), random() % 100);
    const auto off = static_cast<std::int32_t>(random() % (piece.size() + 1));
    const FilePos pos = start + off;
    SCOPED_TRACE(std::string(shape.name) + " piece from " + std::to_string(start) + " at " +
                 std::to_string(pos));

    const std::string cut = file.substr(0, static_cast<std::size_t>(start) + piece.size());
    const PassResult forward = RunPass(shape.format, piece, off, pos, FILL_FORWARD, 0, shape.lineLen);
    ASSERT_EQ(forward.lines, ReferenceForward(shape, cut, pos));

    std::vector<PassLine> above = ReferenceBackward(shape, file, pos);
    std::erase_if(above, [&](const PassLine& line) { return start > 0 && line.pos < start; });
    const PassResult backward =
        RunPass(shape.format, piece, off, pos, FILL_BACKWARD, 0, shape.lineLen, {200, 200, 40000, 0});
    ASSERT_EQ(backward.lines, above);
  }
}

// Page Down n times and Page Up n times comes back, on one grid, whatever a page holds.
TEST(FixedRows, PagesDownAndUpMeetOnOneGrid) {
  const std::string file = RandomFile(1500);
  for (const Shape& shape : kShapes) {
    for (const std::int32_t rows : {1, 2, 5, 24}) {
      SCOPED_TRACE(std::string(shape.name) + " rows " + std::to_string(rows));
      std::vector<FilePos> down;
      FilePos pos = 13;
      while (pos + rows * shape.bytes <= static_cast<FilePos>(file.size())) {
        const PassResult page = RunPass(shape.format, file, static_cast<std::int32_t>(pos), pos, FILL_FORWARD,
                                        0, shape.lineLen, {rows + 1, 0, rows * 250 + 250, 0});
        for (const FilePos line : page.Starts())
          down.push_back(line);
        pos = page.sentinel;
      }
      std::vector<FilePos> up;
      while (up.size() < down.size()) {
        const PassResult page = RunPass(shape.format, file, static_cast<std::int32_t>(pos), pos,
                                        FILL_BACKWARD, 0, shape.lineLen, {rows, rows, rows * 250 + 250, 0});
        const std::vector<FilePos> starts = page.Starts();
        ASSERT_EQ(starts.size(), static_cast<std::size_t>(rows));
        up.insert(up.begin(), starts.begin(), starts.end());
        pos = starts.front();
      }
      EXPECT_EQ(up, down);
    }
  }
}

}  // namespace
