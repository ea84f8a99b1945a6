// Go To: the field and the range of each choice, what OK accepts, and where the answer leads.
#include "search/goto_logic.h"

#include "tests/scratch.h"

namespace {

TEST(GoTo, FieldOfEachChoice) {
  struct Case {
    GoToChoice choice;
    GoToLimits limits;
    const char* text;
    const char* range;
    bool enabled;
  };
  const Case cases[] = {
      {GoToChoice::top, {100, 5}, "N/A", " ", false},
      {GoToChoice::bottom, {100, 5}, "N/A", " ", false},
      {GoToChoice::bytePosition, {0xABCD, 5}, "0x000000", "1 to 0xABCD", true},
      {GoToChoice::bytePosition, {FilePos{5} << 32, 5}, "0x000000", "1 to 0x500000000", true},
      {GoToChoice::pageNumber, {100, 5}, "1", "1 to 5", true},
      {GoToChoice::pageNumber, {100, FilePos{3} << 32}, "1", "1 to 12884901888", true},
      {GoToChoice::pageNumber, {100, 0}, "1", "N/A", true},
      {GoToChoice::pageNumber, {100, -1}, "1", "N/A", true},
  };
  for (const Case& c : cases) {
    const GoToField field = GoToFieldOf(c.choice, c.limits);
    EXPECT_EQ(field.text, c.text);
    EXPECT_EQ(field.range, c.range);
    EXPECT_EQ(field.enabled, c.enabled) << c.range;
  }
  EXPECT_TRUE(GoToOffersPages({100, 1}));
  EXPECT_FALSE(GoToOffersPages({100, 0}));
  EXPECT_FALSE(GoToOffersPages({100, -1}));
}

TEST(GoTo, Validate) {
  const std::string offset = "File Offset must be a number between 0 and 100!";
  const std::string page = "Page Number must be a number between 1 and 5!";
  struct Case {
    GoToChoice choice;
    const char* text;
    bool accepted;
    std::string message;
  };
  const Case cases[] = {
      {GoToChoice::top, "N/A", true, ""},
      {GoToChoice::bottom, "N/A", true, ""},
      {GoToChoice::none, "1", false, ""},
      {GoToChoice::bytePosition, "0", true, ""},
      {GoToChoice::bytePosition, "0x64", true, ""},
      {GoToChoice::bytePosition, "101", false, offset},
      {GoToChoice::bytePosition, "64h", false, "Invalid character \"h\" in File Offset."},
      {GoToChoice::pageNumber, "0x5", true, ""},
      {GoToChoice::pageNumber, "0", false, page},
      {GoToChoice::pageNumber, "6", false, page},
  };
  for (const Case& c : cases) {
    const FieldCheck check = GoToValidate(c.choice, c.text, {100, 5});
    EXPECT_EQ(check.accepted, c.accepted) << c.text;
    EXPECT_EQ(check.message, c.message);
  }
  // A field of the greatest file holds its last position in each notation.
  const std::string longest = "0777777777777777777777";
  EXPECT_TRUE(GoToValidate(GoToChoice::bytePosition, longest, {INTPTR_MAX, -1}).accepted);
  EXPECT_EQ(longest.size(), std::size_t{kGoToFieldChars});
}

TEST(GoTo, AnswerAndTarget) {
  const ScratchFile file("one\n\ftwo\n\fthree");
  PageIndexState pages;
  ASSERT_EQ(PageIndexRun(PG_START, pages, file.Path().c_str(), 8192), PageIndexFault::none);
  ASSERT_EQ(PageIndexRun(PG_CONT, pages, file.Path().c_str(), 8192), PageIndexFault::none);
  constexpr FilePos kLength = 15;
  struct Case {
    GoToChoice choice;
    const char* text;
    FilePos value;
    GoToMove move;
    FilePos position;
  };
  const Case cases[] = {
      {GoToChoice::top, "N/A", 0, GoToMove::top, kNoPosition},
      {GoToChoice::bottom, "N/A", 9999999, GoToMove::bottom, kNoPosition},
      {GoToChoice::none, "7", -1, GoToMove::none, kNoPosition},
      {GoToChoice::bytePosition, "0x0A", 10, GoToMove::load, 10},
      {GoToChoice::bytePosition, "010", 8, GoToMove::load, 8},
      {GoToChoice::bytePosition, "15", 15, GoToMove::load, 15},
      // The file has become shorter while the dialog stood.
      {GoToChoice::bytePosition, "5000000000", 5000000000, GoToMove::load, kLength},
      {GoToChoice::pageNumber, "1", 1, GoToMove::move, 0},
      {GoToChoice::pageNumber, "3", 3, GoToMove::move, 9},
      {GoToChoice::pageNumber, "4", 4, GoToMove::invalidPage, kPageNone},
  };
  for (const Case& c : cases) {
    const GoToAnswer answer = GoToRead(c.choice, c.text);
    EXPECT_EQ(answer.choice, c.choice);
    EXPECT_EQ(answer.value, c.value) << c.text;
    const GoToTarget target = GoToTargetOf(answer, kLength, pages.index, PageIndexCount(pages));
    EXPECT_EQ(target.move, c.move) << c.text;
    EXPECT_EQ(target.position, c.position) << c.text;
    EXPECT_EQ(target.fault, PageIndexFault::none);
  }
  EXPECT_EQ(PageIndexRun(PG_END, pages, "", 0), PageIndexFault::none);
  EXPECT_EQ(GoToTargetOf({GoToChoice::pageNumber, 1}, kLength, pages.index, 3).move, GoToMove::invalidPage);
}

}  // namespace
