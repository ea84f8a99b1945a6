#include "print/print_range.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr FilePos kLength = 1000;
constexpr FilePos kTop = 300;

std::string Shown(const PrintRange& range) {
  const std::string last = range.toPage == kLastPage ? "end" : std::to_string(range.toPage);
  return std::to_string(range.from.Offset()) + "-" + std::to_string(range.to.Offset()) + " pages " +
         std::to_string(range.fromPage) + "-" + last;
}

// What each command asks for, and what the choices in the dialog make of it.
TEST(PrintRange, IsWhatTheUserChose) {
  struct Case {
    const char* what;
    FilePos from, to;
    std::int32_t fromPage, toPage;
    bool namesSelection;
    PrintChoice choice;
    std::int32_t dialogFrom, dialogTo;
    const char* shown;
  };
  const Case cases[] = {
      {"all", -1, -1, -1, -1, false, PrintChoice::all, kBlankPage, kBlankPage, "0-1000 pages 1-end"},
      {"all, with a selection", 200, 400, -1, -1, true, PrintChoice::all, kBlankPage, kBlankPage,
       "0-1000 pages 1-end"},
      {"the selection", 200, 400, -1, -1, true, PrintChoice::selection, kBlankPage, kBlankPage,
       "200-400 pages 1-end"},
      {"pages", -1, -1, -1, -1, false, PrintChoice::pages, 3, 4, "0-1000 pages 3-4"},
      {"pages of a selection are the file's", 200, 400, -1, -1, true, PrintChoice::pages, 3, 3,
       "0-1000 pages 3-3"},
      {"pages from the top line on", -1, -1, -1, -1, false, PrintChoice::pages, 0, 2, "300-1000 pages 0-2"},
      {"from a page on", -1, -1, -1, -1, false, PrintChoice::pages, 7, kBlankPage, "0-1000 pages 7-end"},
      {"up to a page", -1, -1, -1, -1, false, PrintChoice::pages, kBlankPage, 7, "0-1000 pages 1-7"},
      {"one page from the top line", kTop, 0, 1, 1, true, PrintChoice::asRequested, 0, 0,
       "300-1000 pages 1-1"},
      {"tags of the selection", 200, 400, -1, -1, true, PrintChoice::asRequested, 0, 0,
       "200-400 pages 0-end"},
      {"an end in front of the start", 700, 400, 5, 2, true, PrintChoice::asRequested, 0, 0,
       "700-700 pages 5-5"},
  };
  for (const Case& c : cases) {
    PrintRequest request;
    request.from = c.from;
    request.to = c.to;
    request.fromPage = c.fromPage;
    request.toPage = c.toPage;
    EXPECT_EQ(NamesSelection(request), c.namesSelection) << c.what;
    const PrintRange range = RangeOf(request, kLength);
    EXPECT_EQ(Shown(ChosenRange(range, c.choice, c.dialogFrom, c.dialogTo, kTop, kLength)), c.shown)
        << c.what;
  }
}

}  // namespace
