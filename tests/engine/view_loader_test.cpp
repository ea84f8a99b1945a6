// The loader on real files: the run around a place, steps from run to run as the view makes them, lines
// that do not fit a slice or the text, and files that change under the view.
#include "engine/view_loader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "engine/hex_format.h"
#include "engine/raw_format.h"
#include "engine/text_format.h"
#include "tests/scratch.h"

namespace {

constexpr std::int32_t kRows = 30;
constexpr ViewOptions kUnwrapped = VO_EXPANDTABS | VO_FORMFEED;
constexpr ViewOptions kWrapped = kUnwrapped | VO_WRAP;

// The view's records, and the moves that a user makes, by the loader alone.
struct View {
  explicit View(const std::string& path, FormatProc formatProc = FormatText,
                ViewOptions viewOptions = kUnwrapped, std::int32_t width = 80)
      : format(formatProc), options(viewOptions), lineLen(width) {
    path.copy(file.Fname, sizeof file.Fname - 1);
    lines = {entries.data(), kViewLines, 0, 0, 0};
    text = {chars.data(), kViewText, 0};
    tags = {tagSlots.data(), kTagSlots - 1, 0};
  }
  ViewStatus Load(FilePos pos, std::int32_t cur = 0) {
    const ViewStatus status = LoadView(pos, cur, rows, lineLen, file, lines, text, tags, format, options);
    if (status != 0) return status;
    EXPECT_TRUE(0 <= lines.Afirst && lines.Afirst <= lines.Acur && lines.Alast < lines.Acnt);
    EXPECT_TRUE(lines.Acur < lines.Alast || lines.Afirst == lines.Alast);
    EXPECT_LE(Start(lines.Alast), std::max(file.Flen, FilePos{0}));
    return status;
  }
  [[nodiscard]] FilePos Start(std::int32_t i) const { return lines.Aline[i].Lpos; }
  [[nodiscard]] FilePos Top() const { return Start(lines.Acur); }
  [[nodiscard]] FilePos Next() const { return Start(lines.Acur + 1); }
  [[nodiscard]] std::string Row(std::int32_t i) const {
    const LineEntry& line = lines.Aline[i];
    return {text.Tbuf + line.Ltext, static_cast<std::size_t>(line.Llen)};
  }

  std::vector<LineEntry> entries = std::vector<LineEntry>(kViewLines);
  std::vector<char> chars = std::vector<char>(kViewText);
  std::vector<TagEntry> tagSlots = std::vector<TagEntry>(kTagSlots);
  ViewFile file;
  LineArray lines;
  TextBuffer text;
  TagList tags;
  FormatProc format;
  ViewOptions options;
  std::int32_t lineLen;
  std::int32_t rows = kRows;
};

std::string Numbered(int count, int width) {
  std::string content;
  for (int i = 0; i < count; ++i) {
    std::string line = "line " + std::to_string(i) + " ";
    line.resize(static_cast<std::size_t>(width), static_cast<char>('a' + i % 26));
    content += line + "\n";
  }
  return content;
}

TEST(ViewLoader, PlacesTheRun) {
  const ScratchFile file(Numbered(20000, 39));  // 40 bytes a line
  View view(file.Path());
  ASSERT_EQ(view.Load(400000 + 17), 0);
  EXPECT_EQ(view.Top(), 400000);
  EXPECT_EQ(view.lines.Acur, 485);
  EXPECT_LT(view.lines.Afirst, 485);
  EXPECT_GT(view.lines.Alast, 485 + kRows);
  ASSERT_EQ(view.Load(800000), 0);
  EXPECT_EQ(view.Top(), 800000 - 40);
  EXPECT_EQ(view.lines.Acur, 998);
  EXPECT_EQ(view.lines.Alast, 999);
  EXPECT_EQ(view.Start(999), 800000);
}

TEST(ViewLoader, CopesWithSmallFiles) {
  struct Small {
    const char* name;
    std::string content;
    FilePos pos;
    std::string top;
    std::int32_t lines;
  };
  const Small cases[] = {
      {"empty", "", 0, "", 0},
      {"one byte, at its end", "x", 1, "x", 1},
      {"end-of-file mark alone, at its end", "\x1a", 1, "", 0},
      {"below the end of a shorter file", "ab\ncd\n", 5000000000, "cd", 2},
      {"one line break", "\n", 1, "", 1},
      {"65535 bytes, at its end", std::string(65535, 'q'), 65535, std::string(80, 'q'), 1},
  };
  for (const Small& c : cases) {
    const ScratchFile file(c.content);
    View view(file.Path());
    ASSERT_EQ(view.Load(c.pos), 0) << c.name;
    EXPECT_EQ(view.lines.Alast - view.lines.Afirst, c.lines) << c.name;
    if (c.lines > 0) EXPECT_EQ(view.Row(view.lines.Acur), c.top) << c.name;
  }
}

// With wrap, a place inside a line that fits is shown on the line's own grid at the top, and the rows below
// go on from the place; far from the file's ends, too, the row at the top is whole.
TEST(ViewLoader, MeetsTwoGridsInALineThatFits) {
  const ScratchFile one(std::string(300, 'w') + "\n");
  View view(one.Path(), FormatText, kWrapped);
  ASSERT_EQ(view.Load(100), 0);
  EXPECT_EQ(view.Top(), 160);
  EXPECT_EQ(view.Next(), 180);
  EXPECT_EQ(view.Start(view.lines.Afirst), 0);
  const ScratchFile many(Numbered(100, 3000));
  View middle(many.Path(), FormatText, kWrapped);
  for (FilePos target = 150000; target < 153001; target += 37) {
    ASSERT_EQ(middle.Load(target), 0);
    ASSERT_EQ(middle.lines.Aline[middle.lines.Acur].Lflags & LF_INCOMPLETE, 0U) << target;
  }
}

struct Shape {
  const char* name;
  std::string content;
};

std::string LongWithTabs(std::size_t size) {
  std::string content;
  for (std::size_t i = 0; content.size() < size; ++i)
    content += i % 9 == 0 ? std::string("\t") : std::to_string(i);
  return content;
}

std::vector<Shape> Shapes() {
  std::mt19937 random(4711);
  std::string mixed;
  for (int i = 0; i < 300; ++i) {
    std::string line(i % 40 == 7 ? 90000 + random() % 60000 : random() % 400, ' ');
    for (char& byte : line)
      byte = static_cast<char>('!' + random() % 90);
    mixed += line + (i % 3 == 0 ? "\r\n" : "\n");
  }
  return {
      {"short lines", Numbered(9000, 61)},          {"one line", std::string(700000, 'z')},
      {"one line with tabs", LongWithTabs(600000)}, {"lines of 5000", Numbered(200, 5000)},
      {"lines of 33000", Numbered(40, 33000)},      {"lines of 65000", Numbered(30, 65000)},
      {"lines of 70000", Numbered(30, 70000)},      {"mixed", mixed},
      {"NUL-filled", std::string(400000, '\0')},    {"line breaks alone", std::string(100000, '\n')},
  };
}

// Pages down and up again by the loader: the way back meets the same top lines, in every format, whatever
// the lengths of the lines.
TEST(ViewLoader, PagesDownAndUpAgain) {
  for (const Shape& shape : Shapes()) {
    const ScratchFile file(shape.content);
    for (const ViewOptions options : {kUnwrapped, kWrapped}) {
      for (const double part : {0.0, 0.31, 0.66}) {
        SCOPED_TRACE(std::string(shape.name) + (options == kWrapped ? ", wrapped, from " : ", from ") +
                     std::to_string(part));
        View view(file.Path(), FormatText, options);
        ASSERT_EQ(view.Load(static_cast<FilePos>(part * static_cast<double>(shape.content.size()))), 0);
        // Two grids may meet in the first run of a wrapped line that fits: start from one of its lines.
        ASSERT_EQ(view.Load(view.Top()), 0);
        std::vector<FilePos> tops;
        for (int page = 0; page < 12 && view.lines.Acur + kRows < view.lines.Alast; ++page) {
          tops.push_back(view.Top());
          ASSERT_EQ(view.Load(kNoPosition, view.lines.Acur + kRows), 0);
        }
        for (; !tops.empty(); tops.pop_back()) {
          // Up by reloading from the run's first line, as a page across the run's end does.
          if (view.lines.Acur - view.lines.Afirst >= kRows) {
            view.lines.Acur = static_cast<std::int16_t>(view.lines.Acur - kRows);
          } else {
            ASSERT_EQ(view.Load(kNoPosition, view.lines.Acur - kRows), 0);
          }
          ASSERT_EQ(view.Top(), tops.back());
        }
      }
    }
  }
}

// In a long line: the byte jumped to is on the top row, rows that follow each other are neighbouring bytes,
// lines lie above, and every character shown is the file's.
TEST(ViewLoader, ShowsTheByteJumpedToInALongLine) {
  std::mt19937 random(99);
  for (const Shape& shape : Shapes()) {
    const auto size = static_cast<FilePos>(shape.content.size());
    const auto byteAt = [&shape](FilePos pos) { return shape.content[static_cast<std::size_t>(pos)]; };
    const ScratchFile file(shape.content);
    for (const ViewOptions options : {kUnwrapped, kWrapped}) {
      if (shape.content.find('\n') < (options == kWrapped ? 60000 : 65536)) continue;  // lines that fit
      View view(file.Path(), FormatText, options, 97);
      for (int i = 0; i < 60; ++i) {
        const FilePos target = static_cast<FilePos>(random()) % size;
        SCOPED_TRACE(std::string(shape.name) + " at " + std::to_string(target));
        ASSERT_EQ(view.Load(target), 0);
        EXPECT_LE(view.Top(), target);
        EXPECT_GT(view.Next(), target);
        if (view.Top() > 0) EXPECT_LT(view.lines.Afirst, view.lines.Acur);
        EXPECT_GE(view.lines.Alast - view.lines.Acur, std::min<FilePos>(kRows, (size - target) / 97));
        for (std::int32_t row = view.lines.Afirst; row < view.lines.Alast; ++row) {
          if (view.Row(row).empty() || byteAt(view.Start(row)) < ' ') continue;
          ASSERT_EQ(view.Row(row)[0], byteAt(view.Start(row))) << row;
          ASSERT_LE(view.Start(row + 1) - view.Start(row), 97 + 2) << row;
        }
      }
    }
  }
}

// Where a row of a long line begins does not depend on the road to it.
TEST(ViewLoader, KnowsOneGridForALongLine) {
  const ScratchFile file("head\n" + LongWithTabs(300000) + "\ntail\n");
  View view(file.Path(), FormatText, kWrapped, 80);
  std::vector<FilePos> starts;
  ASSERT_EQ(view.Load(0), 0);
  while (view.Start(view.lines.Alast) < view.file.Flen) {
    for (std::int32_t i = view.lines.Acur; i < view.lines.Alast; ++i)
      starts.push_back(view.Start(i));
    ASSERT_EQ(view.Load(view.Start(view.lines.Alast)), 0);
  }
  std::mt19937 random(5);
  for (int i = 0; i < 200; ++i) {
    const FilePos target = 5 + static_cast<FilePos>(random() % 250000);
    ASSERT_EQ(view.Load(target), 0);
    for (std::int32_t row = view.lines.Afirst; row < view.lines.Alast; ++row) {
      const FilePos start = view.Start(row);
      if (start > starts.back()) break;
      ASSERT_TRUE(std::binary_search(starts.begin(), starts.end(), start)) << start << " from " << target;
    }
  }
}

TEST(ViewLoader, HoldsFewLinesThatFillTheText) {
  const ScratchFile file(Numbered(50, 8000));
  View view(file.Path(), FormatText, kUnwrapped, 8000);
  ASSERT_EQ(view.Load(8001 * 20), 0);
  EXPECT_EQ(view.Top(), 8001 * 20);
  EXPECT_EQ(view.lines.Alast - view.lines.Acur, 3);
  EXPECT_EQ(view.Start(view.lines.Alast), 8001 * 23);
  EXPECT_EQ(view.Row(view.lines.Acur).size(), 8000U);
  // No line at hand is `rows` lines down: the nearest one is taken.
  ASSERT_EQ(view.Load(kNoPosition, view.lines.Acur + kRows), 0);
  EXPECT_EQ(view.Top(), 8001 * 23);
  ASSERT_EQ(view.Load(kNoPosition, -5000), 0);
  EXPECT_LT(view.Top(), 8001 * 23);
}

TEST(ViewLoader, FollowsAFileThatChanges) {
  ScratchFile file(Numbered(20000, 39));
  View view(file.Path());
  ASSERT_EQ(view.Load(700000), 0);
  file.Write(Numbered(100, 39));  // shorter than the place
  ASSERT_EQ(view.Load(kNoPosition, view.lines.Acur), 0);
  EXPECT_EQ(view.Top(), 99 * 40);
  EXPECT_EQ(view.Start(view.lines.Alast), 4000);
  file.Append("grown\n");
  ASSERT_EQ(view.Load(view.file.Flen), 0);
  EXPECT_EQ(view.Row(view.lines.Acur), "grown");
  file.Write("");
  ASSERT_EQ(view.Load(kNoPosition, view.lines.Acur), 0);
  EXPECT_EQ(view.lines.Afirst, view.lines.Alast);
  file.Remove();
  EXPECT_EQ(view.Load(0), VS_FAILED);
}

}  // namespace
