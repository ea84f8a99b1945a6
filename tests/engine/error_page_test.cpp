#include "engine/error_page.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

// Arrays of exactly the sizes asked for, with a guard behind each.
struct Page {
  Page(std::int16_t entryCount, std::int32_t textSize)
      : entries(static_cast<std::size_t>(std::max<int>(entryCount, 0)) + 1, LineEntry{77, 77, 77, 77, 77}),
        characters(static_cast<std::size_t>(std::max(textSize, 0)) + 1, '#') {
    lines = {entries.data(), entryCount, 0, 0, 0};
    text = {characters.data(), textSize, 0};
  }
  bool GuardsStand() const { return entries.back().Lpos == 77 && characters.back() == '#'; }
  std::string Line(std::int16_t i) const {
    const LineEntry& line = lines.Aline[i];
    return {text.Tbuf + line.Ltext, static_cast<std::size_t>(line.Llen)};
  }

  std::vector<LineEntry> entries;
  std::string characters;
  LineArray lines;
  TextBuffer text;
  std::unique_ptr<ViewFile> file = std::make_unique<ViewFile>();
};

TEST(ErrorPage, SaysTheStatusAndTheNumbers) {
  Page page(kViewLines, kViewText);
  page.lines.Acur = -3;
  page.lines.Afirst = 12;
  page.lines.Alast = 32767;
  page.text.Tend = 4711;
  page.file->Fcur = INTPTR_MIN;
  page.file->Flen = 68719476736;
  EXPECT_EQ(ShowErrorPage(VS_FAILED | VS_NARROW, *page.file, page.lines, page.text), 0);
  const std::string rule(41, '*');
  const std::string wanted[] = {rule,
                                "* PROGRAM ERROR OCCURRED",
                                "* Please note the following information:",
                                "* Status=110",
                                "* Acnt=1000, Afirst=12, Alast=32767, Acur=-3",
                                "* Fcur=-9223372036854775808, Flen=68719476736",
                                "* Tlen=32760, Tend=4711",
                                "* Press [Home] to get back to Quorl",
                                rule,
                                " "};
  EXPECT_EQ(page.lines.Acur, 0);
  EXPECT_EQ(page.lines.Afirst, 0);
  ASSERT_EQ(page.lines.Alast, 10);
  for (std::int16_t i = 0; i < 10; ++i) {
    EXPECT_EQ(page.Line(i), wanted[i]);
    EXPECT_EQ(page.entries[static_cast<std::size_t>(i)].Lpos, 1);
    EXPECT_EQ(page.entries[static_cast<std::size_t>(i)].Lflags, LF_MESSAGE);
  }
  EXPECT_EQ(page.entries[10].Lpos, page.file->Flen);
  EXPECT_EQ(page.entries[10].Llen, kSentinelLength);
  EXPECT_EQ(page.entries[10].Lflags, LF_MESSAGE);
}

// However little room there is, the run is one that the rest of the program can walk.
TEST(ErrorPage, FitsAnyRoom) {
  for (const int entries : {-5, 0, 1, 2, 5, 10, 11, 12}) {
    for (const std::int32_t size : {-1, 0, 1, 2, 41, 42, 43, 200, 400}) {
      SCOPED_TRACE(std::to_string(entries) + " entries, text of " + std::to_string(size));
      Page page(static_cast<std::int16_t>(entries), size);
      page.lines.Acur = page.lines.Alast = 999;
      EXPECT_EQ(ShowErrorPage(VS_FAILED, *page.file, page.lines, page.text), 0);
      EXPECT_TRUE(page.GuardsStand());
      EXPECT_EQ(page.lines.Acur, 0);
      EXPECT_EQ(page.lines.Alast, size < 1 ? 0 : std::clamp(entries - 1, 0, 10));
      std::int32_t used = 0;
      for (std::int16_t i = 0; i < page.lines.Alast; used += page.lines.Aline[i++].Llen)
        EXPECT_EQ(page.lines.Aline[i].Ltext, used);
      EXPECT_EQ(page.text.Tend, used);
      if (entries >= 1) EXPECT_EQ(page.lines.Aline[page.lines.Alast].Llen, kSentinelLength);
    }
  }
  Page page(20, 100);
  TextBuffer none = {nullptr, kViewText, 9};
  LineArray noLines = {nullptr, 1000, 5, 5, 5};
  EXPECT_EQ(ShowErrorPage(VS_FAILED, *page.file, noLines, none), 0);
  EXPECT_EQ(noLines.Alast, 0);
  EXPECT_EQ(ShowErrorPage(VS_FAILED, *page.file, page.lines, none), 0);
  EXPECT_EQ(page.entries[0].Llen, kSentinelLength);
}

}  // namespace
