// Painting by its drawing log: the state of the window is set by hand, one full repaint follows, and the
// calls are compared. The colors are the numbers of their slots, so that a call tells which it used.
#include "window/painting.h"

#include <sstream>

#include "tests/window/viewer.h"

namespace {

using platform_testing::DrawCall;

template <typename... Parts>
std::string Words(const Parts&... parts) {
  std::ostringstream words;
  ((words << parts << ' '), ...);
  return words.str();
}

std::string Fill(int x, int left, int top, int right, const std::string& text, int color, int background) {
  return Words("fill", x, left, top, right, top + MainState.CharHeight, text, color, background);
}
std::string Note(int x, int y, const std::string& text) {
  return Words("note", x, y, text, CommentText, CommentBgnd);
}
std::string Rule(int style, int x, int y, int toX, int toY) {
  return Words("rule", style, x, y, toX, toY, WindowText);
}
std::string Box(int left, int top, int right, int bottom) {
  return Words("box", left, top, right, bottom, Background);
}
std::string Describe(const DrawCall& call) {
  const auto& [left, top, right, bottom] = call.rect;
  switch (call.kind) {
    case DrawCall::Kind::text:
      return Words("note", call.x, call.y, call.text, call.color, call.background);
    case DrawCall::Kind::fillText:
      return Words("fill", call.x, left, top, right, bottom, call.text, call.color, call.background);
    case DrawCall::Kind::line:
      return Words("rule", call.penStyle, left, top, right, bottom, call.color);
    case DrawCall::Kind::rectangle:
      return Words("box", left, top, right, bottom, call.background);
    case DrawCall::Kind::invert:
      return Words("invert", left, top, right, bottom);
    default:
      return "scroll";
  }
}

// A window on three lines, which a test changes before it is painted.
class Painting : public testing::Test {
 protected:
  Painting() : file_("first\nsecond line\nthird\n"), viewer_({file_.Path()}) {
    for (int slot = 0; slot < kWindowColors; ++slot)
      ColorTable[slot] = static_cast<COLORREF>(slot);
    MainState.VertScroll = MainState.HorzScroll = kBarNever;
    RepaintWindow();
    viewer_.Pump();
    viewer_.Resize(40, 6);
    width_ = MainState.ClientWidth;
    ch_ = MainState.CharHeight;
    cw_ = MainState.CharWidth;
  }
  static LineEntry& Line(int index) { return MainState.Lines.Aline[index]; }

  std::vector<std::string> Paint() {
    platform_testing::ForgetRecords();
    platform_testing::LogDrawing(true);
    RepaintWindow();
    UpdateWindow(viewer_.Window());
    std::vector<std::string> calls;
    for (const DrawCall& call : platform_testing::DrawingLog())
      calls.push_back(Describe(call));
    return calls;
  }
  // Rows 1 and 2, which most cases leave as they are, and the area below.
  [[nodiscard]] std::vector<std::string> WithRest(std::vector<std::string> calls) const {
    calls.push_back(Fill(1, 0, ch_, width_ + 2, "second line", WindowText, WindowBgnd));
    calls.push_back(Fill(1, 0, 2 * ch_, width_ + 2, "third", WindowText, WindowBgnd));
    calls.push_back(Box(-1, 3 * ch_, width_ + 1, 6 * ch_ + 1));
    return calls;
  }
  ScratchFile file_;
  Viewer viewer_;
  int width_ = 0, ch_ = 0, cw_ = 0;
};

TEST_F(Painting, FlagsOfALine) {
  struct Case {
    const char* what;
    std::uint32_t flags;
    int text, background;
    std::vector<std::string> behind;
    std::int32_t showMessages = 1;
  };
  const int end = 5 * cw_ + 2;  // where the text of the first line ends
  const std::vector<std::string> truncated{Note(end + 2, 0, " [Truncated...] ")};
  const std::vector<std::string> incomplete{Note(end + 2, 0, " [Incomplete Line...] ")};
  const Case cases[] = {
      {"no flag", 0, WindowText, WindowBgnd, {}},
      {"tag set by hand", 2, TagText, TagBgnd, {}},
      {"message wins over tag", LF_MESSAGE | 1, MessageText, MessageBgnd, {}},
      {"incomplete", LF_INCOMPLETE, WindowText, WindowBgnd, incomplete},
      {"truncated wins", LF_INCOMPLETE | LF_TRUNCATED, WindowText, WindowBgnd, truncated},
      {"no notes wanted", LF_TRUNCATED, WindowText, WindowBgnd, {}, 0},
      {"page mark", LF_PAGEMARK, WindowText, WindowBgnd, {Rule(PS_DOT, 0, 0, width_ + 1, 0)}},
  };
  for (const Case& c : cases) {
    Line(0).Lflags = c.flags;
    MainState.ShowMessages = c.showMessages;
    std::vector<std::string> expected{Fill(1, 0, 0, width_ + 2, "first", c.text, c.background)};
    expected.insert(expected.end(), c.behind.begin(), c.behind.end());
    EXPECT_EQ(Paint(), WithRest(expected)) << c.what;
  }
}

TEST_F(Painting, BehindTheTextIsBackground) {
  MainState.FormatFlags |= VO_BACKGROUND;
  struct Case {
    const char* what;
    std::uint32_t flags;
    int padLineLength, offset;
    const char* text;
    int end;
  };
  const Case cases[] = {{"text", 0, 0, 0, "first", 5 * cw_ + 2},
                        {"at least the padded width", 0, 8, 0, "first", 8 * cw_ + 2},
                        {"the padded width is scrolled too", 0, 8, 2, "rst", 6 * cw_ + 2},
                        {"a page gap has no text width", LF_PAGEGAP, 8, 0, "first", 0}};
  for (const Case& c : cases) {
    Line(0).Lflags = c.flags;
    MainState.PadLineLength = c.padLineLength;
    MainState.HorzOffset = c.offset;
    const std::vector<std::string> calls = Paint();
    ASSERT_GT(calls.size(), 2U) << c.what;
    EXPECT_EQ(calls[0], Fill(1, 0, 0, c.end + 1, c.text, WindowText, WindowBgnd)) << c.what;
    EXPECT_EQ(calls[1], Box(c.end, 0, width_ + 1, ch_ + 1)) << c.what;
  }
}

TEST_F(Painting, FrozenColumnsStay) {
  MainState.FrozenColumns = 3;
  MainState.HorzOffset = 4;
  const int frozen = 3 * cw_ + 3;
  std::vector<std::string> expected;
  for (const auto& [left, rest] : {std::pair{"fir", ""}, {"sec", "line"}, {"thi", ""}}) {
    const int top = static_cast<int>(expected.size()) / 2 * ch_;
    expected.push_back(Fill(0, 0, top, frozen - 1, left, HeadingText, HeadingBgnd));
    expected.push_back(Fill(frozen + 1, frozen, top, width_ + 2, rest, WindowText, WindowBgnd));
  }
  expected.push_back(Rule(PS_SOLID, frozen - 1, 0, frozen - 1, 3 * ch_));
  expected.push_back(Box(-1, 3 * ch_, width_ + 1, 6 * ch_ + 1));
  EXPECT_EQ(Paint(), expected);
}

TEST_F(Painting, ASelectionInvertsTheRowsItMeets) {
  struct Case {
    FilePos start, end;
    std::vector<int> rows;
  };
  // Lines begin at 0, 6 and 18; the file ends at 24.
  const Case cases[] = {{0, 6, {0}},      {0, 7, {0, 1}}, {7, 8, {1}},
                        {17, 24, {1, 2}}, {24, 99, {}},   {-1, 24, {0, 1, 2}}};
  for (const auto& [start, end, rows] : cases) {
    MainState.SelStart = start;
    MainState.SelEnd = end;
    std::vector<std::string> expected;
    for (const int row : rows)
      expected.push_back(Words("invert", 0, row * ch_, width_ + 1, (row + 1) * ch_));
    std::vector<std::string> inverted = Paint();
    std::erase_if(inverted, [](const std::string& call) { return !call.starts_with("invert"); });
    EXPECT_EQ(inverted, expected) << start << " to " << end;
  }
}

// Titles stand above the text, and are cut by frozen columns as the lines are.
TEST_F(Painting, Titles) {
  ASSERT_EQ(LockTitles(MainState.Titles, true), 1);
  std::string("TitleSecond").copy(MainState.Titles.Text.Tbuf, 11);
  MainState.Titles.Lines.Aline[0] = {0, 0, 5, 0, 0};
  MainState.Titles.Lines.Aline[1] = {1, 5, 6, 0, 0};
  MainState.Titles.Lines.Aline[2] = {2, 0, 0, 0, 0};
  MainState.Titles.Lines.Alast = 2;
  UnlockTitles(MainState.Titles);
  MainState.HorzOffset = 2;
  const std::vector<std::string> expected{
      Fill(0, 0, 0, width_ + 1, "tle", HeadingText, HeadingBgnd),
      Fill(0, 0, ch_, width_ + 1, "cond", HeadingText, HeadingBgnd),
      Rule(PS_SOLID, 0, 2 * ch_ - 1, width_, 2 * ch_ - 1),
      Fill(1, 0, 2 * ch_, width_ + 2, "rst", WindowText, WindowBgnd),
      Fill(1, 0, 3 * ch_, width_ + 2, "cond line", WindowText, WindowBgnd),
      Fill(1, 0, 4 * ch_, width_ + 2, "ird", WindowText, WindowBgnd),
      Box(-1, 5 * ch_, width_ + 1, 6 * ch_ + 1)};
  EXPECT_EQ(Paint(), expected);
  MainState.HorzOffset = 0;
  MainState.FrozenColumns = 3;
  const int frozen = 3 * cw_ + 3;
  EXPECT_EQ(Paint()[1], Fill(frozen, frozen, 0, width_ + 1, "le", HeadingText, HeadingBgnd));
  MainState.FrozenColumns = 0;
  viewer_.Send(WM_COMMAND, 112);
  EXPECT_EQ(Paint().size(), 3U) << "they stay without a file";
}

}  // namespace
