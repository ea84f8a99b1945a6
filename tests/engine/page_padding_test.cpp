#include "engine/page_padding.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

bool IsPadding(const LineEntry& line) {
  return (line.Lflags & (LF_PADDING | LF_PAGEGAP)) == LF_PADDING;
}

// A run made from a row of words: "x" a line of text, "-" a blank line, "f" a line behind a form feed, "g" a
// gap line. Every line has 10 bytes of file. Tags are on the blank lines.
struct SmallRun {
  std::vector<LineEntry> entries;
  CellText cells = U"text  ";
  TextBuffer text;
  LineArray lines;

  SmallRun(const std::string& words, int count, int first, int cur, FilePos pos)
      : entries(static_cast<std::size_t>(count), LineEntry{-9, -9, -9, -9, 9}) {
    lines = {entries.data(), static_cast<std::int16_t>(count), static_cast<std::int16_t>(cur),
             static_cast<std::int16_t>(first), static_cast<std::int16_t>(first + std::ssize(words))};
    text = {cells.data(), static_cast<std::int32_t>(cells.size()), 6};
    LineEntry* entry = entries.data() + first;
    for (const char word : words) {
      if (word == 'x') *entry = {pos, 0, 4, 0, 0};
      if (word == '-') *entry = {pos, 4, 2, 0, 1};
      if (word == 'f') *entry = {pos, 0, 4, 0, LF_PAGEMARK};
      if (word == 'g') *entry = {pos, 0, 0, 0, LF_PAGEGAP};
      ++entry;
      pos += 10;
    }
    *entry = SentinelAt(pos);
  }

  [[nodiscard]] const LineEntry& At(int i) const { return entries.at(static_cast<std::size_t>(i)); }
};

// What padding must give, line by line: the lines of the run, the last blank ones replaced by a gap, and how
// many rows stand in front of each.
struct Wanted {
  std::vector<LineEntry> lines;
  std::vector<int> rowsBefore;
  int top = 0;
  FilePos end = 0;
  int total = 0;

  Wanted(const SmallRun& run, bool atEnd, int pageLength)
      : lines(run.entries.begin() + run.lines.Afirst, run.entries.begin() + run.lines.Alast),
        end(run.At(run.lines.Alast).Lpos) {
    LineEntry gap = {end, 0, 0, 0, LF_PAGEGAP | LF_PADDING};
    while (atEnd && lines.size() > 1 && (lines.back().Ltext == 4 || lines.back().Llen == 0)) {
      gap = {lines.back().Lpos, 0, 0, 0, LF_PAGEGAP | ((gap.Lflags | lines.back().Lflags) & LF_TAGMASK)};
      lines.pop_back();
    }
    if (atEnd) lines.push_back(gap);
    top = std::min<int>(run.lines.Acur - run.lines.Afirst, static_cast<int>(std::ssize(lines)) - 1);
    int row = -1;
    for (LineEntry& line : lines) {
      const bool isGap = (line.Lflags & LF_PAGEGAP) != 0;
      const bool begins = isGap || (line.Lflags & LF_PAGEMARK) != 0;
      rowsBefore.push_back(begins && row >= 0 && row < pageLength ? pageLength - row : 0);
      row = line.Lpos == 0 ? 1 : begins ? (isGap ? 0 : 1) : row < 0 ? row : row + 1;
      line.Lpage = row;
      total += 1 + rowsBefore.back();
    }
  }
};

void Check(SmallRun& run, bool atEnd, int pageLength) {
  const int count = run.lines.Acnt;
  const Wanted wanted(run, atEnd, std::min(pageLength, std::max(count / 4, 1)));
  PadPages(run.lines, run.text, wanted.end + (atEnd ? 0 : 10), pageLength);
  const LineArray& lines = run.lines;
  ASSERT_TRUE(0 <= lines.Afirst && lines.Afirst <= lines.Acur && lines.Acur < lines.Alast);
  ASSERT_LT(lines.Alast, count);
  ASSERT_FALSE(IsPadding(run.At(lines.Afirst)) || IsPadding(run.At(lines.Alast - 1)));

  const auto last = static_cast<std::size_t>(std::ssize(wanted.lines));
  std::size_t first = 0;
  while (first < last && wanted.lines[first].Lpos != run.At(lines.Afirst).Lpos)
    ++first;
  std::size_t next = first;  // the line that comes next
  int rows = 0;              // padding rows in front of it
  for (int i = lines.Afirst; i < lines.Alast; ++i) {
    const LineEntry& line = run.At(i);
    ASSERT_LT(next, last);
    ASSERT_EQ(line.Lpos, wanted.lines[next].Lpos);
    if (IsPadding(line)) {
      ASSERT_EQ(line.Llen, 0);
      ASSERT_EQ(line.Lpage, run.At(i - 1).Lpage + 1);
      ++rows;
      continue;
    }
    ASSERT_EQ(line.Ltext, wanted.lines[next].Ltext);
    ASSERT_EQ(line.Llen, wanted.lines[next].Llen);
    ASSERT_EQ(line.Lpage, wanted.lines[next].Lpage);
    ASSERT_EQ(line.Lflags, wanted.lines[next].Lflags);
    ASSERT_EQ(rows, next == first ? 0 : wanted.rowsBefore[next]);
    ASSERT_EQ(i == lines.Acur, static_cast<int>(next) == wanted.top);
    ++next;
    rows = 0;
  }
  const LineEntry& sentinel = run.At(lines.Alast);
  ASSERT_EQ(sentinel.Llen, kSentinelLength);
  ASSERT_EQ(sentinel.Lpos, next < last ? wanted.lines[next].Lpos : wanted.end);

  // Nothing drops out that there is room for.
  if (wanted.total < count) ASSERT_TRUE(first == 0 && next == last);
  if (first > 0) ASSERT_LE(lines.Afirst, wanted.rowsBefore[first]);
  if (next == last) return;
  const bool onlyGapBehind = next + 2 == last && atEnd && wanted.lines.back().Lpos == wanted.end;
  ASSERT_LE(count - 1 - lines.Alast,
            wanted.rowsBefore[next] + (onlyGapBehind ? 1 + wanted.rowsBefore[next + 1] : 0));
  if (count >= 8) ASSERT_LT(sentinel.Lpos, wanted.end) << "the sentinel tells that something is left";
}

TEST(PadPages, KeepsTheLinesOfAnyRun) {
  std::mt19937 random(7);
  const auto pick = [&random](int most) { return static_cast<int>(random() % static_cast<unsigned>(most)); };
  for (int round = 0; round < 30000; ++round) {
    const int count = 2 + pick(pick(2) == 0 ? 12 : 50);
    const int length = 1 + pick(count - 1);
    std::string words(static_cast<std::size_t>(pick(length + 1)), 'x');
    const int kinds = 1 + pick(8);
    for (char& word : words)
      word = "xxf-xgxx"[pick(kinds)];
    words.resize(static_cast<std::size_t>(length), "x-"[pick(2)]);
    const int first = pick(count - length);
    const int cur = first + pick(length);
    const int pageLength = pick(9) == 0 ? INT32_MAX : 1 + pick(12);
    SmallRun run(words, count, first, cur, FilePos::At(pick(2) * 50));
    SCOPED_TRACE(words + " of " + std::to_string(count) + " from " + std::to_string(first) + " top " +
                 std::to_string(cur) + " pages of " + std::to_string(pageLength));
    Check(run, pick(2) == 1, pageLength);
    if (HasFatalFailure()) return;
  }
}

// As many rows to fill up as there can be: the largest array, a page on each line. And a run of no line.
TEST(PadPages, StandsTheMostAndTheLeast) {
  for (const int cur : {0, 3, 16000, 32765}) {
    SmallRun run(std::string(32766, 'f'), 32767, 0, cur, 0);
    Check(run, cur == 32765, INT32_MAX);
  }
  SmallRun empty("", 12, 4, 4, 0);
  PadPages(empty.lines, empty.text, 0, 6);
  EXPECT_EQ(empty.lines.Alast, 4);
  EXPECT_EQ(empty.At(4).Llen, kSentinelLength);
}

}  // namespace
