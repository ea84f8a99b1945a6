// The roads by which a file comes into the window, and the one by which it leaves.
#include <chrono>
#include <thread>

#include "window/opening.h"

#include <filesystem>

#include "resources/command_ids.h"
#include "tests/window/viewer.h"

namespace {

TEST(Opening, PutsTheWindowInOrder) {
  const ScratchFile first(NumberedLines(300));
  const ScratchFile second("second file\n");
  Viewer viewer({first.Path()});
  viewer.Key(VK_END);
  MainState.HorzOffset = 3;
  MainState.SelStart = 5;
  MainState.SelEnd = 9;
  MainState.Tags.count = 1;
  viewer.Send(WM_FILE_OPEN, 0, reinterpret_cast<LPARAM>(second.Path().c_str()));
  EXPECT_EQ(MainState.File.Flen, 12);
  EXPECT_EQ(Viewer::Text(), "second file");
  EXPECT_EQ(MainState.HorzOffset, 0);
  EXPECT_EQ(MainState.SelStart, kNoPosition);
  EXPECT_EQ(MainState.Tags.count, 0);
  viewer.Command(IDM_RECENT2);
  EXPECT_EQ(Viewer::Text(), "line 0");
  EXPECT_EQ(MainState.RecentFiles[0], first.Path());
  viewer.Command(IDM_RECENT4);
  EXPECT_EQ(MainState.File.Fname, first.Path()) << "an empty entry opens nothing";
  EXPECT_EQ(SendMessageA(viewer.Window(), WM_FILE_TRY, 1, reinterpret_cast<LPARAM>("/no/such/file")), 0);
  EXPECT_EQ(platform_testing::FileDialogs().size(), 1U);
  EXPECT_EQ(Viewer::Text(), "line 0") << "the dialog is cancelled: the old file stays";
}

TEST(Opening, TheDirectoryOfThePatternServesOnce) {
  const ScratchFile chosen("chosen\n");
  platform_testing::AnswerNextFileDialog(chosen.Path());
  Viewer viewer({std::filesystem::temp_directory_path().string() + "/*.log"});
  viewer.Command(IDM_OPEN);
  ASSERT_EQ(platform_testing::FileDialogs().size(), 2U);
  const platform_testing::FileDialog& first = platform_testing::FileDialogs()[0];
  EXPECT_EQ(std::filesystem::path(first.directory) / "", std::filesystem::temp_directory_path() / "");
  EXPECT_EQ(first.filterIndex, 2);
  EXPECT_STREQ(MainState.CommandFile, "*.log");
  constexpr char filters[] = "Any File (*.*)\0*.*\0Default (a`b*.txt)\0a`b*.txt\0";
  EXPECT_EQ(OpenFilters("a`b*.txt"), std::string(filters, sizeof filters - 1));
}

TEST(Opening, NamesOfAnyKind) {
  const ScratchFolder folder;
  // The last one makes a path of more than 260 bytes.
  for (const std::string& name :
       {std::string("with some blanks.txt"), std::string("stra\xC3\x9F\x65 \xE2\x82\xAC.txt"),
        std::string("-dash"), std::string("a&b.txt"), std::string(200, 'd') + "/" + std::string(255, 'n')}) {
    const std::string path = folder.Write("files/" + name, "content\n");
    setenv("XDG_CONFIG_HOME", folder.Path("settings").c_str(), 1);
    Viewer viewer({path});
    EXPECT_EQ(MainState.File.Fname, path);
    EXPECT_EQ(Viewer::Text(), "content");
    EXPECT_EQ(platform_testing::Caption(viewer.Window()), "Quorl - " + name.substr(name.find('/') + 1));
  }
}

TEST(Opening, CloseLeavesAnEmptyWindowAndExitNone) {
  const ScratchFile file(NumberedLines(300));
  Viewer viewer({file.Path()});
  viewer.Command(IDM_CLOSE);
  EXPECT_FALSE(FileIsOpen());
  EXPECT_EQ(platform_testing::Caption(viewer.Window()), "Quorl");
  EXPECT_FALSE(platform_testing::ScrollBarOf(viewer.Window(), SB_VERT).visible);
  const platform_testing::Pixels pixels = platform_testing::ClientPixels(viewer.Window());
  EXPECT_EQ(std::count(pixels.at.begin(), pixels.at.end(), pixels.at[0]),
            static_cast<std::ptrdiff_t>(pixels.at.size()))
      << "nothing but the class background";
  viewer.Key(VK_END);
  viewer.Command(IDM_RECENT1);
  EXPECT_EQ(Viewer::Text(), "line 0");
  for (int step = 0; step < 2000 && platform_testing::TimerIsSet(viewer.Window(), 3); ++step) {
    viewer.Send(WM_TIMER, 3);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  EXPECT_FALSE(platform_testing::TimerIsSet(viewer.Window(), 3)) << "the index timer ends itself";
  viewer.Command(IDM_EXIT);
  EXPECT_FALSE(viewer.Running());
}

}  // namespace
