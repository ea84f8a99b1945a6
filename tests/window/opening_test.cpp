// The roads by which a file comes into the window, and the one by which it leaves.
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
  EXPECT_EQ(MainState.File.Fname, second.Path());
  EXPECT_EQ(MainState.File.Flen, 12);
  EXPECT_EQ(Viewer::Text(), "second file");
  EXPECT_EQ(MainState.HorzOffset, 0);
  EXPECT_EQ(MainState.SelStart, kNoPosition);
  EXPECT_EQ(MainState.Tags.count, 0);
  EXPECT_EQ(platform_testing::Caption(viewer.Window()),
            "Quorl - " + std::filesystem::path(second.Path()).filename().string());
  EXPECT_EQ(MainState.RecentFileCount, 2);
  EXPECT_EQ(MainState.RecentFiles[0], second.Path());
  viewer.Command(IDM_RECENT2);
  EXPECT_EQ(Viewer::Text(), "line 0");
  EXPECT_EQ(MainState.RecentFileCount, 2);
  EXPECT_EQ(MainState.RecentFiles[0], first.Path());
  viewer.Command(IDM_RECENT4);
  EXPECT_EQ(MainState.File.Fname, first.Path()) << "an empty entry opens nothing";
}

TEST(Opening, TryOpensOrAsksOrDoesNothing) {
  const ScratchFile file("text\n");
  const ScratchFile chosen("chosen\n");
  Viewer viewer({file.Path()});
  const auto tryFile = [&viewer](const char* name, WPARAM ask) {
    const LRESULT result = SendMessageA(viewer.Window(), WM_FILE_TRY, ask, reinterpret_cast<LPARAM>(name));
    viewer.Pump();
    return result;
  };
  EXPECT_EQ(tryFile("/no/such/file", 0), 0);
  EXPECT_TRUE(platform_testing::FileDialogs().empty());
  EXPECT_TRUE(platform_testing::Beeps().empty());
  EXPECT_EQ(tryFile("/no/such/file", 1), 0) << "the dialog is cancelled";
  EXPECT_EQ(platform_testing::FileDialogs().size(), 1U);
  EXPECT_EQ(Viewer::Text(), "text") << "the old file stays";
  platform_testing::AnswerNextFileDialog(chosen.Path());
  EXPECT_EQ(tryFile("/no/such/file", 1), 1);
  EXPECT_EQ(Viewer::Text(), "chosen");
  EXPECT_EQ(tryFile(file.Path().c_str(), 0), 1);
  EXPECT_EQ(Viewer::Text(), "text");
}

TEST(Opening, TheDirectoryOfThePatternServesOnce) {
  const std::string folder = std::filesystem::temp_directory_path().string() + "/";
  const ScratchFile chosen("chosen\n");
  platform_testing::AnswerNextFileDialog(chosen.Path());
  Viewer viewer({folder + "*.log"});
  viewer.Command(IDM_OPEN);
  ASSERT_EQ(platform_testing::FileDialogs().size(), 2U);
  const platform_testing::FileDialog& first = platform_testing::FileDialogs()[0];
  const platform_testing::FileDialog& second = platform_testing::FileDialogs()[1];
  EXPECT_EQ(std::filesystem::path(first.directory) / "", std::filesystem::path(folder));
  EXPECT_EQ(first.filterIndex, 2);
  EXPECT_EQ(second.filterIndex, 2);
  EXPECT_EQ(first.filters, second.filters);
  EXPECT_STREQ(MainState.CommandFile, "*.log");
  constexpr char filters[] = "Any File (*.*)\0*.*\0Default (a`b*.txt)\0a`b*.txt\0";
  EXPECT_EQ(OpenFilters("a`b*.txt"), std::string(filters, sizeof filters - 1));
}

TEST(Opening, NamesOfAnyKind) {
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("quorl names " + std::to_string(std::random_device()()));
  std::filesystem::create_directory(folder);
  for (const std::string& name :
       {std::string("with some blanks.txt"), std::string("stra\xC3\x9F\x65 \xE2\x82\xAC.txt"),
        std::string("-dash"), std::string("a&b.txt"), std::string(255, 'n')}) {
    std::filesystem::path path = folder / name;
    if (name.size() == 255) {  // a path of more than 260 bytes
      path = folder / std::string(200, 'd') / name;
      std::filesystem::create_directory(path.parent_path());
    }
    std::ofstream(path) << "content\n";
    Viewer viewer({path.string()});
    EXPECT_EQ(MainState.File.Fname, path.string());
    EXPECT_EQ(Viewer::Text(), "content");
    EXPECT_EQ(platform_testing::Caption(viewer.Window()), "Quorl - " + name);
  }
  std::filesystem::remove_all(folder);
}

TEST(Opening, CloseLeavesAnEmptyWindowAndExitNone) {
  const ScratchFile file(NumberedLines(300));
  Viewer viewer({file.Path()});
  viewer.Key(VK_NEXT);
  viewer.Command(IDM_CLOSE);
  EXPECT_FALSE(FileIsOpen());
  EXPECT_EQ(platform_testing::Caption(viewer.Window()), "Quorl");
  EXPECT_EQ(MainState.RecentFileCount, 1);
  EXPECT_FALSE(platform_testing::ScrollBarOf(viewer.Window(), SB_VERT).visible);
  const platform_testing::Pixels pixels = platform_testing::ClientPixels(viewer.Window());
  EXPECT_EQ(std::count(pixels.at.begin(), pixels.at.end(), pixels.at[0]),
            static_cast<std::ptrdiff_t>(pixels.at.size()))
      << "nothing but the class background";
  for (const int key : {VK_HOME, VK_NEXT, VK_END})
    viewer.Key(key);
  viewer.Command(IDM_CLOSE);
  EXPECT_FALSE(FileIsOpen());
  viewer.Command(IDM_RECENT1);
  EXPECT_EQ(Viewer::Text(), "line 0");
  for (int step = 0; step < 3; ++step)
    viewer.Send(WM_TIMER, 3);
  EXPECT_FALSE(platform_testing::TimerIsSet(viewer.Window(), 3)) << "the index timer ends itself";
  viewer.Command(IDM_EXIT);
  EXPECT_FALSE(viewer.Running());
}

}  // namespace
