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
};

TEST(ErrorPage, SaysTheStatusAndTheNumbers) {
  Page page(kViewLines, kViewText);
  page.lines.Acur = -3;
  page.lines.Afirst = 12;
  page.lines.Alast = 32767;
  page.text.Tend = 4711;
  auto file = std::make_unique<ViewFile>();
  file->Fcur = INTPTR_MIN;
  file->Flen = 68719476736;
  EXPECT_EQ(ShowErrorPage(VS_FAILED | VS_NARROW, *file, page.lines, page.text), 0);

  const char* const wanted[] = {
      "*****************************************",
      "* PROGRAM ERROR OCCURRED",
      "* Please note the following information:",
      "* Status=110",
      "* Acnt=1000, Afirst=12, Alast=32767, Acur=-3",
      "* Fcur=-9223372036854775808, Flen=68719476736",
      "* Tlen=32760, Tend=4711",
      "* Press [Home] to get back to Quorl",
      "*****************************************",
      " ",
  };
  EXPECT_EQ(page.lines.Acur, 0);
  EXPECT_EQ(page.lines.Afirst, 0);
  ASSERT_EQ(page.lines.Alast, 10);
  for (std::int16_t i = 0; i < 10; ++i) {
    EXPECT_EQ(page.Line(i), wanted[i]);
    EXPECT_EQ(page.entries[static_cast<std::size_t>(i)].Lpos, 1);
    EXPECT_EQ(page.entries[static_cast<std::size_t>(i)].Lflags, LF_MESSAGE);
  }
  const LineEntry& sentinel = page.entries[10];
  EXPECT_EQ(sentinel.Lpos, file->Flen);
  EXPECT_EQ(sentinel.Ltext, 0);
  EXPECT_EQ(sentinel.Llen, kSentinelLength);
  EXPECT_EQ(sentinel.Lflags, LF_MESSAGE);
}

// However little room there is, the run is one that the rest of the program can walk.
TEST(ErrorPage, FitsAnyRoom) {
  const auto file = std::make_unique<ViewFile>();
  for (const int entries : {-5, 0, 1, 2, 5, 10, 11, 12}) {
    for (const std::int32_t size : {-1, 0, 1, 2, 41, 42, 43, 200, 400}) {
      SCOPED_TRACE(std::to_string(entries) + " entries, text of " + std::to_string(size));
      Page page(static_cast<std::int16_t>(entries), size);
      page.text.Tend = 32000;
      page.lines.Acur = page.lines.Alast = 999;
      EXPECT_EQ(ShowErrorPage(VS_FAILED, *file, page.lines, page.text), 0);
      EXPECT_TRUE(page.GuardsStand());
      EXPECT_EQ(page.lines.Acnt, entries);
      EXPECT_EQ(page.lines.Acur, 0);
      EXPECT_EQ(page.lines.Afirst, 0);
      EXPECT_EQ(page.lines.Alast, size < 1 ? 0 : std::clamp(entries - 1, 0, 10));
      std::int32_t used = 0;
      for (std::int16_t i = 0; i < page.lines.Alast; ++i) {
        EXPECT_EQ(page.lines.Aline[i].Ltext, used);
        used += page.lines.Aline[i].Llen;
      }
      EXPECT_EQ(page.text.Tend, used);
      if (entries < 1) continue;
      EXPECT_EQ(page.lines.Aline[page.lines.Alast].Llen, kSentinelLength);
    }
  }
}

TEST(ErrorPage, LivesWithoutBuffers) {
  const auto file = std::make_unique<ViewFile>();
  LineArray lines = {nullptr, 1000, 5, 5, 5};
  TextBuffer text = {nullptr, kViewText, 9};
  EXPECT_EQ(ShowErrorPage(VS_FAILED, *file, lines, text), 0);
  EXPECT_EQ(lines.Alast, 0);

  Page page(20, 100);
  EXPECT_EQ(ShowErrorPage(VS_FAILED, *file, page.lines, text), 0);
  EXPECT_EQ(page.lines.Alast, 0);
  EXPECT_EQ(page.entries[0].Llen, kSentinelLength);
}

TEST(AddErrorLine, KeepsItsBounds) {
  struct Case {
    std::int16_t acur;
    std::int32_t tend;
    ViewStatus status;
    const char* line;
  };
  const Case cases[] = {
      {0, 0, 0, "abcdef"},
      {3, 3, 0, "abcdef"},
      {3, 4, 0, "abcde"},
      {3, 8, 0, "a"},
      {3, 9, 0, ""},
      {3, 10, VS_FAILED, ""},
      {3, INT32_MAX, VS_FAILED, ""},
      {3, -1, VS_FAILED, ""},
      {4, 0, VS_FAILED, ""},
      {-1, 0, VS_FAILED, ""},
      {32767, 0, VS_FAILED, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.acur) + ", " + std::to_string(c.tend));
    Page page(4, 10);
    page.lines.Acur = page.lines.Afirst = page.lines.Alast = c.acur;
    page.text.Tend = c.tend;
    EXPECT_EQ(AddErrorLine(page.lines, page.text, "abc%s", "def"), c.status);
    EXPECT_TRUE(page.GuardsStand());
    if (c.status != 0) {
      EXPECT_EQ(page.lines.Acur, c.acur);
      EXPECT_EQ(page.text.Tend, c.tend);
      continue;
    }
    EXPECT_EQ(page.Line(c.acur), c.line);
    EXPECT_EQ(page.lines.Afirst, c.acur);
    EXPECT_EQ(page.lines.Acur, c.acur + 1);
    EXPECT_EQ(page.lines.Alast, c.acur + 1);
  }
}

}  // namespace
