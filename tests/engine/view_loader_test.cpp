// The loader on real files: lines that do not fit a slice or the text, and files that change under the view.
#include "engine/view_loader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "engine/text_format.h"
#include "tests/scratch.h"

namespace {

constexpr std::int32_t kRows = 30;
constexpr ViewOptions kUnwrapped = VO_EXPANDTABS | VO_FORMFEED;
constexpr ViewOptions kWrapped = kUnwrapped | VO_WRAP;

// The view's records, and the moves that a user makes, by the loader alone.
struct View {
  explicit View(const std::string& path, ViewOptions viewOptions = kUnwrapped, std::int32_t width = 80)
      : options(viewOptions), lineLen(width) {
    path.copy(file.Fname, sizeof file.Fname - 1);
    lines = {entries.data(), kViewLines, 0, 0, 0};
    text = {chars.data(), kViewText, 0};
    tags = {tagSlots.data(), kTagSlots - 1, 0};
  }
  ViewStatus Load(FilePos pos, std::int32_t cur = 0) {
    const ViewStatus status =
        LoadView(pos, cur, kRows, lineLen, file, lines, text, tags, FormatText, options);
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
  ViewOptions options;
  std::int32_t lineLen;
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

// With wrap, a place inside a line that fits is shown on the line's own grid at the top, and the rows below
// go on from the place; far from the file's ends, too, the row at the top is whole.
TEST(ViewLoader, MeetsTwoGridsInALineThatFits) {
  const ScratchFile one(std::string(300, 'w') + "\n");
  View view(one.Path(), kWrapped);
  ASSERT_EQ(view.Load(100), 0);
  EXPECT_EQ(view.Top(), 160);
  EXPECT_EQ(view.Next(), 180);
  const ScratchFile many(Numbered(100, 3000));
  View middle(many.Path(), kWrapped);
  for (FilePos target = 150000; target < 153001; target += 37) {
    ASSERT_EQ(middle.Load(target), 0);
    ASSERT_EQ(middle.lines.Aline[middle.lines.Acur].Lflags & LF_INCOMPLETE, 0U) << target;
  }
}

std::string LongWithTabs(std::size_t size) {
  std::string content;
  for (std::size_t i = 0; content.size() < size; ++i)
    content += i % 9 == 0 ? std::string("\t") : std::to_string(i);
  return content;
}

const std::string kLongLines[] = {std::string(700000, 'z'), LongWithTabs(600000), Numbered(30, 70000)};

// Pages down and up again by the loader: the way back meets the same top lines, whatever their lengths.
TEST(ViewLoader, PagesDownAndUpAgain) {
  std::vector<std::string> contents(std::begin(kLongLines), std::end(kLongLines));
  contents.insert(contents.end(), {Numbered(9000, 61), Numbered(200, 5000), Numbered(40, 33000)});
  for (const std::string& content : contents) {
    const ScratchFile file(content);
    for (const ViewOptions options : {kUnwrapped, kWrapped}) {
      View view(file.Path(), options);
      ASSERT_EQ(view.Load(static_cast<FilePos>(content.size() / 3)), 0);
      // Two grids may meet in the first run of a wrapped line that fits: start from one of its lines.
      ASSERT_EQ(view.Load(view.Top()), 0);
      std::vector<FilePos> tops;
      for (int page = 0; page < 12 && view.lines.Acur + kRows < view.lines.Alast; ++page) {
        tops.push_back(view.Top());
        ASSERT_EQ(view.Load(kNoPosition, view.lines.Acur + kRows), 0);
      }
      for (; !tops.empty(); tops.pop_back()) {
        if (view.lines.Acur - view.lines.Afirst >= kRows)
          view.lines.Acur = static_cast<std::int16_t>(view.lines.Acur - kRows);
        else
          ASSERT_EQ(view.Load(kNoPosition, view.lines.Acur - kRows), 0);
        ASSERT_EQ(view.Top(), tops.back()) << content.size() << " bytes, options " << options;
      }
    }
  }
}

// In a long line: the byte jumped to is on the top row, rows that follow each other are neighbouring bytes,
// lines lie above, and every character shown is the file's.
TEST(ViewLoader, ShowsTheByteJumpedToInALongLine) {
  std::mt19937 random(99);
  for (const std::string& content : kLongLines) {
    const auto size = static_cast<FilePos>(content.size());
    const auto byteAt = [&content](FilePos pos) { return content[static_cast<std::size_t>(pos)]; };
    const ScratchFile file(content);
    for (const ViewOptions options : {kUnwrapped, kWrapped}) {
      View view(file.Path(), options, 97);
      for (int i = 0; i < 60; ++i) {
        const FilePos target = static_cast<FilePos>(random()) % size;
        SCOPED_TRACE(std::to_string(size) + " at " + std::to_string(target));
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
  View view(file.Path(), kWrapped, 80);
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
