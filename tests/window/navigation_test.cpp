// Moves of the view on real files: where the top line ends up, what is loaded for it, and the laws that
// hold for every file and format.
#include <algorithm>
#include <random>

#include "resources/command_ids.h"
#include "tests/window/viewer.h"
#include "window/navigation.h"

namespace {

struct LawCase {
  const char* name;
  std::vector<std::string> words;
  std::string content;
  std::int32_t lineLength;  // with the letter L
};

std::string LongLines(int count, std::size_t length) {
  std::string text;
  for (int i = 0; i < count; ++i)
    text += std::to_string(i) + std::string(length + static_cast<std::size_t>(i % 7) * 10, 'm') + "\n";
  return text;
}

std::string RandomBytes(std::size_t count) {
  std::mt19937 random(11);
  std::string bytes(count, '\0');
  for (char& byte : bytes)
    byte = static_cast<char>(random());
  return bytes;
}

const std::string kOneLongLine = LongLines(3, 100) + std::string(400000, 'q') + "\n" + NumberedLines(99);

const LawCase kLawCases[] = {{"short lines", {}, NumberedLines(5000), 0},
                             {"wrapped", {"-W"}, NumberedLines(300) + LongLines(200, 900), 0},
                             {"hex", {"-H"}, RandomBytes(90001), 0},
                             {"raw", {"-R"}, RandomBytes(90001), 0},
                             {"random bytes as text", {}, RandomBytes(200000), 0},
                             {"one line a run", {"-L"}, LongLines(120, 26000), 32000},
                             {"lines cut by the slice", {}, LongLines(60, 20000), 0},
                             {"a line longer than a slice", {}, kOneLongLine, 0},
                             {"the same, wrapped", {"-W"}, kOneLongLine, 0}};

class NavigationLaws : public testing::TestWithParam<LawCase> {
 protected:
  NavigationLaws() : file_(GetParam().content) {
    std::vector<std::string> words = GetParam().words;
    words.push_back(file_.Path());
    viewer_ = std::make_unique<Viewer>(words);
    if (GetParam().lineLength == 0) return;
    MainState.LineLength = GetParam().lineLength;
    ReformatView();
    viewer_->Pump();
  }
  void ExpectReturn(int there, int back, std::size_t most) {
    std::vector<FilePos> tops;
    while (tops.size() < most && (tops.empty() || Viewer::Top() > tops.back())) {
      tops.push_back(Viewer::Top());
      viewer_->Key(there);
      ASSERT_FALSE(Viewer::ErrorPage());
    }
    ASSERT_GT(tops.size(), 3U);
    // The last step may have been shortened by the end of the file; from where it began all are whole.
    tops.pop_back();
    viewer_->MoveTo(tops.back());
    for (; !tops.empty(); tops.pop_back()) {
      ASSERT_EQ(Viewer::Top(), tops.back());
      viewer_->Key(back);
    }
  }

  ScratchFile file_;
  std::unique_ptr<Viewer> viewer_;
};

TEST_P(NavigationLaws, LinesAndPagesDownAndUpReturn) {
  ExpectReturn(VK_DOWN, VK_UP, 260);
  viewer_->Key(VK_HOME);
  ExpectReturn(VK_NEXT, VK_PRIOR, 60);
}

TEST_P(NavigationLaws, APageIsItsRowsAndTheEndsAreTheLastLineAndTheFirst) {
  viewer_->Key(VK_NEXT);
  const FilePos page = Viewer::Top();
  viewer_->Key(VK_HOME);
  viewer_->Key(VK_DOWN, 0, MainState.LinesPerScreen);
  EXPECT_EQ(Viewer::Top(), page);
  viewer_->Key(VK_END);
  EXPECT_EQ(MainState.Lines.Aline[MainState.Lines.Acur + 1].Lpos, MainState.File.Flen);
  const FilePos bottom = Viewer::Top();
  viewer_->Key(VK_NEXT);
  EXPECT_EQ(Viewer::Top(), bottom);
  viewer_->Key(VK_UP);
  EXPECT_LT(Viewer::Top(), bottom);
  viewer_->Key(VK_HOME);
  EXPECT_EQ(Viewer::Top(), 0);
  viewer_->Key(VK_PRIOR);
  EXPECT_EQ(Viewer::Top(), 0);
}

TEST_P(NavigationLaws, AJumpShowsItsTargetOnTheTopLine) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 60; ++i) {
    const auto target = static_cast<FilePos>(random() % static_cast<std::uint64_t>(MainState.File.Flen));
    viewer_->MoveTo(target);
    ASSERT_FALSE(Viewer::ErrorPage());
    EXPECT_LE(Viewer::Top(), target);
    EXPECT_GT(Viewer::Entry(1).Lpos, target);
    if (i % 3 == 0) viewer_->MoveLines(static_cast<int>(random() % 61) - 30);
  }
}

// The window's image after each move must be what a full repaint would give.
TEST_P(NavigationLaws, ScrollingTheImageIsRepaintingIt) {
  viewer_->Resize(24, Viewer::kRows);  // less to compare
  std::mt19937 random(17);
  for (int i = 0; i < 40; ++i) {
    const int lines[] = {1, 1, 1, -1, -1, MainState.LinesPerScreen, -MainState.LinesPerScreen};
    if (i % 13 == 12) {
      viewer_->MoveTo(static_cast<FilePos>(random()) % MainState.File.Flen);
    } else {
      viewer_->MoveLines(lines[random() % std::size(lines)]);
    }
    const platform_testing::Pixels scrolled = platform_testing::ClientPixels(viewer_->Window());
    InvalidateRect(viewer_->Window(), nullptr, FALSE);
    viewer_->Pump();
    ASSERT_EQ(scrolled, platform_testing::ClientPixels(viewer_->Window())) << "move " << i;
  }
}

INSTANTIATE_TEST_SUITE_P(Files, NavigationLaws, testing::ValuesIn(kLawCases), [](const auto& law) {
  std::string name = law.param.name;
  std::ranges::replace_if(
      name, [](char c) { return c == ' ' || c == ','; }, '_');
  return name;
});

TEST(Navigation, AStepInsideTheRunOpensNoFileAndPaintsOneRow) {
  const ScratchFile file(NumberedLines(5000));
  Viewer viewer({file.Path()});
  viewer.Key(VK_NEXT, 0, 3);
  const std::int64_t opened = platform_testing::FilesOpened();
  for (const int key : {VK_DOWN, VK_UP, VK_NEXT, VK_PRIOR})
    viewer.Key(key);
  platform_testing::ForgetRecords();
  platform_testing::LogDrawing(true);
  viewer.Key(VK_DOWN);
  EXPECT_EQ(platform_testing::FilesOpened(), opened);
  const auto drawn = [](platform_testing::DrawCall::Kind kind) {
    return std::ranges::count(platform_testing::DrawingLog(), kind, &platform_testing::DrawCall::kind);
  };
  EXPECT_EQ(drawn(platform_testing::DrawCall::Kind::scroll), 1);
  EXPECT_EQ(drawn(platform_testing::DrawCall::Kind::fillText), 1);
}

TEST(Navigation, MovesOfAnyLengthGoOnToTheEnds) {
  const ScratchFile file(NumberedLines(20000));
  Viewer viewer({file.Path()});
  for (const auto& [lines, line] :
       {std::pair{-30000, 0}, {12345, 12345}, {-12000, 345}, {30000, 19999}, {1, 19999}}) {
    viewer.MoveLines(lines);
    EXPECT_EQ(std::stoi(Viewer::Text().substr(5)), line);
  }
}

TEST(Layout, DecidesWhenToReformat) {
  struct Case {
    const char* what;
    ViewOptions flags;
    std::int32_t former;  // FormatWidth
    bool resized;
    std::int32_t width;  // FormatWidth afterwards
    bool load;
  };
  const Case cases[] = {{"three screens and a character each", 0, 1, true, 243, true},
                        {"wrapped: the screen", VO_WRAP, 1, true, 80, true},
                        {"the same width", 0, 243, true, 243, false},
                        {"the same, not by size", VO_WRAP, 80, false, 80, true},
                        {"twice as long as needed", 0, 487, true, 487, false},
                        {"more than twice", 0, 488, true, 243, true},
                        {"narrower, wrapped", VO_WRAP, 81, true, 80, true},
                        {"fixed", VO_FIXEDLEN, 50, true, 100, true},
                        {"forced", 0, -1, false, 243, true}};
  const ScratchFile file("text\n");
  Viewer viewer({file.Path()});
  MainState.LineLength = 100;
  for (const Case& c : cases) {
    viewer.Resize(80, 20);
    MainState.FormatFlags = c.flags;
    MainState.FormatWidth = c.former;
    EXPECT_EQ(LayoutView(c.resized), c.load ? 1 : 0) << c.what;
    EXPECT_EQ(MainState.FormatWidth, c.width) << c.what;
    viewer.Pump();
  }
  viewer.Key(VK_RIGHT, MK_CONTROL);
  viewer.Command(IDM_WRAP);
  EXPECT_EQ(MainState.HorzOffset, 0) << "wrap gives up the sideways offset";
}

TEST(Layout, ResizingBackAndForthDoesNotMoveTheView) {
  const ScratchFile file(LongLines(400, 250));
  for (const char* letter : {"-W", "-R", "-H", "-T"}) {
    Viewer viewer({letter, "-W", file.Path()});
    for (const FilePos target : {FilePos{30000}, FilePos{61234}, FilePos{100}}) {
      viewer.MoveTo(target);
      viewer.MoveLines(3);
      const FilePos top = Viewer::Top();
      for (const int columns : {79, 120, 61, 33, 200, 44, 80})
        viewer.Resize(columns, Viewer::kRows);
      EXPECT_EQ(Viewer::Top(), top) << letter;
    }
  }
}

TEST(PagePadding, EveryPageOfTheViewHasItsRows) {
  std::string text;
  for (int page = 0; page < 300; ++page)
    text += "\fpage\n1\n2\n3\n4\n";
  const ScratchFile file(text);
  Viewer viewer({file.Path()});
  MainState.PadPageLength = 12;
  viewer.Send(WM_VIEW_LOAD, 0, 2000);
  const LineArray& lines = MainState.Lines;
  int pages = 0;
  for (int line = lines.Afirst; line + 12 < lines.Alast; ++line) {
    if ((lines.Aline[line].Lflags & LF_PAGEMARK) == 0) continue;
    EXPECT_NE(lines.Aline[line + 12].Lflags & LF_PAGEMARK, 0U);
    ++pages;
  }
  EXPECT_GT(pages, 3);
}

}  // namespace
