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
std::string Invert(int y) {
  return Words("invert", 0, y, MainState.ClientWidth + 1, y + MainState.CharHeight);
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
  void FreezeTitles() {
    ASSERT_EQ(LockTitles(MainState.Titles, true), 1);
    const std::string text = "TitleSecond";
    text.copy(MainState.Titles.Text.Tbuf, text.size());
    MainState.Titles.Lines.Aline[0] = {0, 0, 5, 0, 0};
    MainState.Titles.Lines.Aline[1] = {1, 5, 6, 0, 0};
    MainState.Titles.Lines.Aline[2] = {2, 0, 0, 0, 0};
    MainState.Titles.Lines.Alast = 2;
    UnlockTitles(MainState.Titles);
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
      {"any tag bit", 8, TagText, TagBgnd, {}},
      {"message wins over tag", LF_MESSAGE | 1, MessageText, MessageBgnd, {}},
      {"incomplete", LF_INCOMPLETE, WindowText, WindowBgnd, incomplete},
      {"truncated wins", LF_INCOMPLETE | LF_TRUNCATED, WindowText, WindowBgnd, truncated},
      {"tagged and truncated", LF_TRUNCATED | 1, TagText, TagBgnd, truncated},
      {"no notes wanted", LF_TRUNCATED, WindowText, WindowBgnd, {}, 0},
      {"another flag of the notes' field", 0x0400, WindowText, WindowBgnd, {}},
      {"page mark", LF_PAGEMARK, WindowText, WindowBgnd, {Rule(PS_DOT, 0, 0, width_ + 1, 0)}},
  };
  for (const Case& c : cases) {
    Line(0).Lflags = c.flags;
    MainState.ShowMessages = c.showMessages;
    std::vector<std::string> expected{Fill(1, 0, 0, width_ + 2, "first", c.text, c.background)};
    expected.insert(expected.end(), c.behind.begin(), c.behind.end());
    EXPECT_EQ(Paint(), WithRest(expected)) << c.what;
  }
  EXPECT_EQ(MainState.PaintedTop, 0);
  // A note without room is not written.
  Line(0).Lflags = LF_TRUNCATED;
  MainState.ShowMessages = 1;
  viewer_.ResizePixels(5 * cw_ + 2, 6 * ch_);
  for (const std::string& call : Paint())
    EXPECT_FALSE(call.starts_with("note"));
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
  const Case cases[] = {
      {"text", 0, 0, 0, "first", 5 * cw_ + 2},
      {"at least the padded width", 0, 8, 0, "first", 8 * cw_ + 2},
      {"the padded width is scrolled too", 0, 8, 2, "rst", 6 * cw_ + 2},
      {"scrolled past the end", 0, 0, 9, "", 0},
      {"a page gap has no text width", LF_PAGEGAP, 8, 0, "first", 0},
  };
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
  const int frozen = 3 * cw_ + 3;
  const std::string rule = Rule(PS_SOLID, frozen - 1, 0, frozen - 1, 3 * ch_);
  const auto row = [&](int index, const char* left, const char* rest) {
    return std::vector{Fill(0, 0, index * ch_, frozen - 1, left, HeadingText, HeadingBgnd),
                       Fill(frozen + 1, frozen, index * ch_, width_ + 2, rest, WindowText, WindowBgnd)};
  };
  const auto rows = [&](std::initializer_list<std::vector<std::string>> parts) {
    std::vector<std::string> calls;
    for (const auto& part : parts)
      calls.insert(calls.end(), part.begin(), part.end());
    calls.push_back(rule);
    calls.push_back(Box(-1, 3 * ch_, width_ + 1, 6 * ch_ + 1));
    return calls;
  };
  EXPECT_EQ(Paint(), rows({row(0, "fir", "st"), row(1, "sec", "ond line"), row(2, "thi", "rd")}));
  MainState.HorzOffset = 4;
  EXPECT_EQ(Paint(), rows({row(0, "fir", ""), row(1, "sec", "line"), row(2, "thi", "")}));
  MainState.HorzOffset = 0;
  MainState.FrozenColumns = 200;
  const std::vector<std::string> wide = Paint();
  EXPECT_EQ(wide[0], Fill(0, 0, 0, 200 * cw_ + 2, "first", HeadingText, HeadingBgnd));
}

TEST_F(Painting, ASelectionInvertsTheRowsItMeets) {
  struct Case {
    FilePos start, end;
    std::vector<int> rows;
  };
  // Lines begin at 0, 6 and 18; the file ends at 24.
  const Case cases[] = {{0, 6, {0}},  {0, 7, {0, 1}},     {5, 6, {0}},        {6, 18, {1}},
                        {7, 8, {1}},  {17, 24, {1, 2}},   {0, 24, {0, 1, 2}}, {-1, -1, {}},
                        {24, 99, {}}, {-1, 24, {0, 1, 2}}};
  for (const auto& [start, end, rows] : cases) {
    MainState.SelStart = start;
    MainState.SelEnd = end;
    std::vector<std::string> inverted;
    for (const std::string& call : Paint())
      if (call.starts_with("invert")) inverted.push_back(call);
    std::vector<std::string> expected;
    for (const int row : rows)
      expected.push_back(Invert(row * ch_));
    EXPECT_EQ(inverted, expected) << start << " to " << end;
  }
}

TEST_F(Painting, TitlesStandAboveTheText) {
  FreezeTitles();
  MainState.HorzOffset = 2;
  const std::vector<std::string> calls = Paint();
  const std::vector<std::string> expected{
      Fill(0, 0, 0, width_ + 1, "tle", HeadingText, HeadingBgnd),
      Fill(0, 0, ch_, width_ + 1, "cond", HeadingText, HeadingBgnd),
      Rule(PS_SOLID, 0, 2 * ch_ - 1, width_, 2 * ch_ - 1),
      Fill(1, 0, 2 * ch_, width_ + 2, "rst", WindowText, WindowBgnd),
      Fill(1, 0, 3 * ch_, width_ + 2, "cond line", WindowText, WindowBgnd),
      Fill(1, 0, 4 * ch_, width_ + 2, "ird", WindowText, WindowBgnd),
      Box(-1, 5 * ch_, width_ + 1, 6 * ch_ + 1)};
  EXPECT_EQ(calls, expected);
  // They cross frozen columns, and stay without a file.
  MainState.HorzOffset = 0;
  MainState.FrozenColumns = 3;
  const std::vector<std::string> crossed = Paint();
  const int frozen = 3 * cw_ + 3;
  EXPECT_EQ(crossed[0], Fill(0, 0, 0, frozen - 1, "Tit", HeadingText, HeadingBgnd));
  EXPECT_EQ(crossed[1], Fill(frozen, frozen, 0, width_ + 1, "le", HeadingText, HeadingBgnd));
  EXPECT_EQ(crossed[4], expected[2]);
  MainState.FrozenColumns = 0;
  viewer_.Send(WM_COMMAND, 112);
  const std::vector<std::string> alone = Paint();
  ASSERT_EQ(alone.size(), 3U);
  EXPECT_EQ(alone[0], Fill(0, 0, 0, width_ + 1, "Title", HeadingText, HeadingBgnd));
  EXPECT_EQ(alone[2], expected[2]);
}

TEST_F(Painting, PixelsShowTheColors) {
  ColorTable[WindowBgnd] = RGB(250, 251, 252);
  ColorTable[Background] = RGB(10, 20, 30);
  ColorTable[WindowText] = RGB(200, 0, 0);
  MainState.SelStart = 6;
  MainState.SelEnd = 18;
  Paint();
  const platform_testing::Pixels pixels = platform_testing::ClientPixels(viewer_.Window());
  EXPECT_EQ(pixels.Get(width_ - 1, 0), RGB(250, 251, 252));
  EXPECT_EQ(pixels.Get(width_ - 1, ch_ + 1), RGB(5, 4, 3)) << "a selected row is inverted";
  EXPECT_EQ(pixels.Get(width_ / 2, 5 * ch_), RGB(10, 20, 30));
  EXPECT_EQ(pixels.Get(width_ / 2, 3 * ch_), RGB(0, 0, 0)) << "the line that marks the end of the data";
}

}  // namespace
