#include "marks/titles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// A run of lines of ten bytes from offset 100 on, each showing `length` characters.
struct LineRun {
  explicit LineRun(int lineCount, int length) : text(static_cast<std::size_t>(lineCount) * length, U' ') {
    for (int i = 0; i < lineCount; ++i) {
      entries.push_back({FilePos::At(100 + i * 10), i * length, length, 0, LF_TAGMASK});
      for (int k = 0; k < length; ++k)
        text[static_cast<std::size_t>(i * length + k)] = static_cast<Cell>('a' + i % 26);
    }
    entries.push_back(SentinelAt(FilePos::At(100 + lineCount * 10)));
    lines.Aline = entries.data();
    lines.Alast = static_cast<std::int16_t>(lineCount);
    lines.Acnt = static_cast<std::int16_t>(lineCount + 1);
    buffer.Tbuf = text.data();
  }
  CellText text;
  std::vector<LineEntry> entries;
  LineArray lines;
  TextBuffer buffer;
};

TEST(Titles, AreTheLinesThatTheSelectionTouches) {
  LineRun run(30, 4);
  const struct {
    const char* what;
    FilePos start, end;
    int count;
    FilePos first;
  } cases[] = {
      {"nothing but a byte in the middle of a line", 115, 116, 1, 110},
      {"whole lines", 110, 130, 2, 110},
      {"up to a line's first byte", 110, 131, 3, 110},
      {"more than there is room for", 100, 400, 15, 100},
      {"beyond the run at both ends", 0, 121, 3, 100},
      {"none of the run", 0, 100, 0, -1},
  };
  TitleSet titles;
  for (const auto& c : cases) {
    ASSERT_EQ(LockTitles(titles, true), 1);
    FreezeLines(titles, run.lines, run.buffer, c.start, c.end);
    UnlockTitles(titles);
    ASSERT_EQ(titles.Lines.Alast, c.count) << c.what;
    if (c.count == 0) {
      EXPECT_EQ(titles.Lines.Aline[0].Lpos, FilePos::At(0));
      continue;
    }
    EXPECT_EQ(titles.Lines.Aline[0].Lpos, c.first) << c.what;
    EXPECT_EQ(titles.Lines.Aline[0].Lflags, 0U) << c.what;
    EXPECT_EQ(titles.Lines.Aline[c.count].Lpos, titles.Lines.Aline[c.count - 1].Lpos + 1) << c.what;
    const auto at = static_cast<std::size_t>((c.first.Offset() - 100) / 10 * 4);
    EXPECT_EQ(CellText(titles.Text.Tbuf, 4), run.text.substr(at, 4)) << c.what;
  }
  FreeTitles(titles);
}

TEST(Titles, StopWhereTheTextIsFull) {
  LineRun run(5, 9000);
  TitleSet titles;
  ASSERT_EQ(LockTitles(titles, true), 1);
  FreezeLines(titles, run.lines, run.buffer, 0, 1000);
  EXPECT_EQ(titles.Lines.Alast, 3);
  const CellText rest(static_cast<std::size_t>(kTitleText) - 27001, U'r');
  EXPECT_FALSE(AppendTitle(titles, 0, rest));
  EXPECT_TRUE(AppendTitle(titles, 0, CellView(rest).substr(1)));
  EndTitles(titles, 1);
  UnlockTitles(titles);
  FreeTitles(titles);
}

}  // namespace
