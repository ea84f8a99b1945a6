// Go To: the field and the range of each choice, what OK accepts, and where the answer leads.
#include "places/goto_logic.h"

#include <gtest/gtest.h>

#include "places/place.h"

namespace {

TEST(GoTo, FieldOfEachChoice) {
  struct Case {
    GoToChoice choice;
    GoToLimits limits;
    const char* shown;  // text, range, whether it takes input
  };
  const Case cases[] = {
      {GoToChoice::bottom, {100, 5}, "N/A| |0"},
      {GoToChoice::bytePosition, {FilePos::At(5LL << 32), 5}, "0x000000|1 to 0x500000000|1"},
      {GoToChoice::pageNumber, {100, 3LL << 32}, "1|1 to 12884901888|1"},
      {GoToChoice::pageNumber, {100, 57, true}, "1|1 to 57 so far|1"},
      {GoToChoice::pageNumber, {100, 0}, "1|N/A|1"}};
  for (const Case& c : cases) {
    const GoToField field = GoToFieldOf(c.choice, c.limits);
    EXPECT_EQ(std::string(field.text) + "|" + field.range + "|" + std::to_string(field.enabled), c.shown);
  }
  EXPECT_TRUE(GoToOffersPages({100, 1}));
  EXPECT_FALSE(GoToOffersPages({100, 0}));
}

TEST(GoTo, Validate) {
  struct Case {
    GoToChoice choice;
    const char* text;
    bool accepted;
    std::string message;
    bool morePages = false;
  };
  const Case cases[] = {
      {GoToChoice::top, "N/A", true, ""},
      {GoToChoice::none, "1", false, ""},
      {GoToChoice::bytePosition, "0x64", true, ""},
      {GoToChoice::bytePosition, "101", false, "File Offset must be a number between 0 and 100!"},
      {GoToChoice::bytePosition, "-200k", true, ""},
      {GoToChoice::bytePosition, "12.5%", true, ""},
      {GoToChoice::bytePosition, "p5", true, ""},
      {GoToChoice::bytePosition, "1k", false, "Invalid character \"k\" in File Offset."},
      {GoToChoice::bytePosition, "p6", false, "Page Number must be a number between 1 and 5!"},
      {GoToChoice::pageNumber, "0x5", true, ""},
      {GoToChoice::pageNumber, "6", false, "Page Number must be a number between 1 and 5!"},
      {GoToChoice::pageNumber, "6", true, "", true},
      {GoToChoice::pageNumber, "9223372036854775807", true, "", true},
      {GoToChoice::pageNumber, "0", false, "Page Number must be a number between 1 and 9223372036854775807!",
       true}};
  for (const Case& c : cases) {
    const FieldCheck check = GoToValidate(c.choice, c.text, {100, 5, c.morePages});
    EXPECT_EQ(check.accepted, c.accepted) << c.text;
    EXPECT_EQ(check.message, c.message);
  }
  // A field of the greatest file holds its last position in each notation.
  const std::string longest = "0777777777777777777777";
  EXPECT_TRUE(GoToValidate(GoToChoice::bytePosition, longest, {INTPTR_MAX, -1}).accepted);
}

TEST(GoTo, AnswerAndTarget) {
  struct Case {
    GoToChoice choice;
    const char* text;
    GoToMove move;
    FilePos position;
    std::int64_t page = 0;
  };
  const Case cases[] = {{GoToChoice::top, "N/A", GoToMove::top, kNoPosition},
                        {GoToChoice::bottom, "N/A", GoToMove::bottom, kNoPosition},
                        {GoToChoice::none, "7", GoToMove::none, kNoPosition},
                        {GoToChoice::bytePosition, "0x0A", GoToMove::load, 10},
                        // The file has become shorter while the dialog stood.
                        {GoToChoice::bytePosition, "5000000000", GoToMove::load, 15},
                        {GoToChoice::pageNumber, "0x30", GoToMove::page, kNoPosition, 48}};
  for (const Case& c : cases) {
    const GoToTarget target = GoToTargetOf(GoToRead(c.choice, c.text, 100), 15);
    EXPECT_EQ(target.move, c.move) << c.text;
    EXPECT_EQ(target.position, c.position) << c.text;
    EXPECT_EQ(target.page, c.page) << c.text;
  }
}

TEST(Places, TheShareOfAnyLength) {
  const FilePos most = INTPTR_MAX;
  for (const FilePos length :
       {FilePos::At(0), FilePos::At(1), FilePos::At(1000), FilePos::At(1LL << 40), most}) {
    EXPECT_EQ(PositionOfShare(length, 0, 7), FilePos::At(0));
    EXPECT_EQ(PositionOfShare(length, 7, 7), length);
    EXPECT_EQ(PositionOfShare(length, 1, 2), FilePos::At(length.Offset() / 2));
    EXPECT_EQ(PositionOfShare(length, INTPTR_MAX - 1, INTPTR_MAX),
              length == most ? most - 1 : std::max<FilePos>(length - 1, 0));
  }
  EXPECT_EQ(PositionOfShare(1000, 333, 1001), FilePos::At(332));
}

TEST(Places, AreNamedInOneWay) {
  const struct {
    const char* text;
    GoToChoice choice = GoToChoice::none;  // none: no place
    std::int64_t value = 0;                // in a file of 10,000 bytes
  } cases[] = {
      {"12345", GoToChoice::bytePosition, 10'000},
      {"0x10", GoToChoice::bytePosition, 16},
      {"010", GoToChoice::bytePosition, 8},
      {"4k", GoToChoice::bytePosition, 4096},
      {"-4K", GoToChoice::bytePosition, 5904},
      {"-1T", GoToChoice::bytePosition, 0},
      {"-0", GoToChoice::bytePosition, 10'000},
      {"50%", GoToChoice::bytePosition, 5000},
      {"12.345%", GoToChoice::bytePosition, 1234},
      {"100%", GoToChoice::bytePosition, 10'000},
      {"p12", GoToChoice::pageNumber, 12},
      {"P1", GoToChoice::pageNumber, 1},
      {"9223372036854775807", GoToChoice::bytePosition, 10'000},
      {""},
      {"-"},
      {"%"},
      {".%"},
      {"101%"},
      {"1.2345%"},
      {"1.2.3%"},
      {"p"},
      {"p0"},
      {"p1k"},
      {"12x"},
      {"k"},
      {"--1"},
      {"+1"},
      {" 1"},
      {"1 "},
      {"0x"},
      {"08"},
      {"9223372036854775807k"},
  };
  for (const auto& c : cases) {
    const auto place = ParsePlace(c.text);
    ASSERT_EQ(place.has_value(), c.choice != GoToChoice::none) << c.text;
    if (!place) continue;
    const GoToAnswer answer = AnswerOf(*place, 10'000);
    EXPECT_EQ(answer.choice, c.choice) << c.text;
    EXPECT_EQ(answer.value, c.value) << c.text;
  }
}

}  // namespace
