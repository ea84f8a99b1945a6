// Moves of the view in the window: what they read and paint. Where they lead is a matter of the engine.
#include <algorithm>
#include <random>

#include "resources/command_ids.h"
#include "tests/window/viewer.h"
#include "window/navigation.h"

namespace {

std::string LongLines(int count, std::size_t length) {
  std::string text;
  for (int i = 0; i < count; ++i)
    text += std::to_string(i) + std::string(length + static_cast<std::size_t>(i % 7) * 10, 'm') + "\n";
  return text;
}

// The window's image after each move must be what a full repaint would give.
TEST(Navigation, ScrollingTheImageIsRepaintingIt) {
  const ScratchFile file(NumberedLines(900) + LongLines(40, 900) + std::string(100000, 'q') + "\n" +
                         NumberedLines(99));
  for (const char* letter : {"-T", "-W", "-H", "-R"}) {
    Viewer viewer({letter, file.Path()});
    viewer.Resize(24, Viewer::kRows);  // less to compare
    std::mt19937 random(17);
    for (int i = 0; i < 40; ++i) {
      const int lines[] = {1, 1, 1, -1, -1, MainState.LinesPerScreen, -MainState.LinesPerScreen};
      if (i % 13 == 12) {
        viewer.MoveTo(FilePos::At(static_cast<ByteCount>(random()) % MainState.File.Flen.Offset()));
      } else {
        viewer.MoveLines(lines[random() % std::size(lines)]);
      }
      const platform_testing::Pixels scrolled = platform_testing::ClientPixels(viewer.Window());
      InvalidateRect(viewer.Window(), nullptr, FALSE);
      viewer.Pump();
      ASSERT_EQ(scrolled, platform_testing::ClientPixels(viewer.Window())) << letter << " move " << i;
    }
  }
}

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

TEST(Layout, ResizingBackAndForthDoesNotMoveTheView) {
  const ScratchFile file(LongLines(400, 250));
  for (const char* letter : {"-W", "-R", "-H", "-T"}) {
    Viewer viewer({letter, "-W", file.Path()});
    for (const FilePos target : {FilePos::At(30000), FilePos::At(61234), FilePos::At(100)}) {
      viewer.MoveTo(target);
      viewer.MoveLines(3);
      const FilePos top = Viewer::Top();
      for (const int columns : {79, 120, 61, 33, 200, 44, 80})
        viewer.Resize(columns, Viewer::kRows);
      EXPECT_EQ(Viewer::Top(), top) << letter;
    }
  }
}

}  // namespace
