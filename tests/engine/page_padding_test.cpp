#include "engine/page_padding.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>

namespace {

constexpr std::int16_t kEntries = 12;

// A small run made from a row of words: "x" a line of text, "-" a blank line, "f" a line behind a form feed,
// "g" a gap line. Every line has 10 bytes of file.
struct SmallRun {
  std::unique_ptr<LineEntry[]> entries = std::make_unique<LineEntry[]>(kEntries);
  std::string characters = "text  ";
  TextBuffer text;
  LineArray lines;

  SmallRun(const std::string& words, int first, int cur, FilePos pos) {
    lines = {entries.get(), kEntries, static_cast<std::int16_t>(cur), static_cast<std::int16_t>(first),
             static_cast<std::int16_t>(first + static_cast<int>(words.size()))};
    text = {characters.data(), static_cast<std::int32_t>(characters.size()), 6};
    LineEntry* entry = entries.get() + first;
    for (const char word : words) {
      const std::uint32_t flags = word == 'f' ? LF_PAGEMARK : word == 'g' ? LF_PAGEGAP : 0;
      *entry++ = {pos, word == '-' ? 4 : 0, word == '-' ? 2 : 4, 0, flags};
      pos += 10;
    }
    *entry = SentinelAt(pos);
  }

  // The lines as words again; "." is a pad line, "G" a gap line, and "<" stands in front of the top line.
  [[nodiscard]] std::string Words() const {
    std::string words;
    for (int i = lines.Afirst; i < lines.Alast; ++i) {
      const LineEntry& line = lines.Aline[i];
      if (i == lines.Acur) words += '<';
      words += (line.Lflags & LF_PAGEMARK) != 0  ? 'f'
               : (line.Lflags & LF_PAGEGAP) != 0 ? 'G'
               : line.Llen == 0                  ? '.'
               : line.Ltext == 4                 ? '-'
                                                 : 'x';
    }
    return words;
  }
};

TEST(PadPages, FillsPagesUpAndEndsTheFileWithOneGap) {
  struct Case {
    const char* what;
    std::string words;
    int first, cur;
    FilePos start;
    int pageLength;  // 0: 66, and the run's end is the file's
    std::string after;
  };
  constexpr FilePos kInside = 500;  // the run starts in the middle of the file
  const Case cases[] = {
      {"behind the top line", "xxfx", 3, 3, 0, 4, "<xx..fx"},
      {"in front of the top line", "xxfx", 3, 5, 0, 4, "xx..<fx"},
      {"rows before the first boundary are not counted", "xxfxfx", 2, 2, kInside, 3, "<xxfx.fx"},
      {"a gap line counts as row 0", "gxgx", 3, 3, kInside, 2, "<Gx.Gx"},
      {"no room behind: the rest drops out", "xxfxxx", 4, 4, 0, 9, "<xx....."},
      {"nothing but blank lines", "---", 2, 2, 100, 0, "<-G"},
      {"the top line was one of them", "xx---", 2, 6, 100, 0, "xx<G"},
      {"the same with a full array", "xxxxxxxxxxx", 0, 10, 100, 0, "xxxxxxxxx<xG"},
  };
  for (const Case& c : cases) {
    SmallRun run(c.words, c.first, c.cur, c.start);
    const FilePos end = c.start + 10 * static_cast<FilePos>(c.words.size());
    const bool atEnd = c.pageLength == 0;
    PadPages(run.lines, run.text, atEnd ? end : kBehindEveryPosition, atEnd ? 66 : c.pageLength);
    EXPECT_EQ(run.Words(), c.after) << c.what;
    if (atEnd) EXPECT_EQ(run.lines.Aline[run.lines.Alast].Lpos, end) << c.what;
    EXPECT_EQ(run.lines.Aline[run.lines.Alast].Llen, kSentinelLength) << c.what;
  }
}

TEST(PadPages, LeavesASoundRunWhateverItIsGiven) {
  std::mt19937 random(7);
  const auto pick = [&random](int most) { return static_cast<int>(random() % static_cast<unsigned>(most)); };
  for (int round = 0; round < 20000; ++round) {
    std::string words(static_cast<std::size_t>(pick(kEntries)), 'x');
    for (char& word : words)
      word = "xx--fg"[pick(6)];
    const int first = pick(kEntries - static_cast<int>(words.size()));
    const int cur = first + (words.empty() ? 0 : pick(static_cast<int>(words.size())));
    SmallRun run(words, first, cur, pick(2) * 50);
    const FilePos top = run.lines.Aline[cur].Lpos;
    const FilePos end = run.lines.Aline[run.lines.Alast].Lpos;
    const bool atEnd = pick(2) == 1;
    PadPages(run.lines, run.text, atEnd ? end : end + 10, 1 + pick(6));
    const LineArray& lines = run.lines;
    ASSERT_TRUE(0 <= lines.Afirst && lines.Afirst <= lines.Acur && lines.Acur <= lines.Alast) << words;
    ASSERT_LT(lines.Alast, kEntries) << words;
    ASSERT_EQ(lines.Aline[lines.Alast].Llen, kSentinelLength) << words;
    if (words.empty()) continue;
    ASSERT_LT(lines.Acur, lines.Alast) << words;
    if (!atEnd) ASSERT_EQ(lines.Aline[lines.Acur].Lpos, top) << words;
  }
}

}  // namespace
