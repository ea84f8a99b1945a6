// Start-up as a whole: command words in, the state of the running program out.
#include "tests/window/viewer.h"
#include "window/main_window.h"

namespace {

TEST(StartUp, CommandWordsBecomeState) {
  struct Case {
    std::vector<std::string> words;
    std::int32_t format;
    ViewOptions flags;
    const char* section;
  };
  const Case cases[] = {{{"-WB", "-r"}, 2, 0x09, ""},
                        // Without the defaults the built-in values are in force, which are others.
                        {{"-WV"}, 0, 0x61, ""},
                        // The setup is loaded once more at the window's creation; the letters still win.
                        {{"-vmine", "-W"}, 0, 0x221, "Setup: mine"}};
  const ScratchFile file("one\ntwo\n");
  for (Case c : cases) {
    c.words.push_back(file.Path());
    Viewer viewer(c.words);
    EXPECT_EQ(MainState.FormatIndex, c.format) << c.words[0];
    EXPECT_EQ(MainState.FormatFlags, c.flags) << c.words[0];
    EXPECT_STREQ(MainState.SetupSection, c.section) << c.words[0];
    EXPECT_EQ(MainState.File.Fname, file.Path()) << c.words[0];
    EXPECT_STREQ(MainState.ProfilePath, "QUORL.INI");
  }
}

TEST(StartUp, AFileThatIsNotThereIsAskedForByItsName) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path();
  Viewer viewer({(folder / "no such file.txt").string()});
  ASSERT_EQ(platform_testing::FileDialogs().size(), 1U);
  const platform_testing::FileDialog& dialog = platform_testing::FileDialogs()[0];
  EXPECT_EQ(dialog.filterIndex, 1);
  EXPECT_EQ(std::filesystem::path(dialog.name).filename(), "no such file.txt");
  EXPECT_TRUE(std::filesystem::equivalent(dialog.directory, folder)) << dialog.directory;
  EXPECT_FALSE(viewer.Running()) << "the user gives up";
}

TEST(StartUp, AServerWithoutAFileWaits) {
  Viewer viewer({"-D"});
  EXPECT_TRUE(viewer.Running());
  EXPECT_TRUE(platform_testing::FileDialogs().empty());
  EXPECT_FALSE(FileIsOpen());
  // There is no service yet, and the user is told.
  ASSERT_EQ(platform_testing::Boxes().size(), 1U);
  EXPECT_EQ(platform_testing::Boxes()[0].text, "DDE Initialize failed.\nServer functions disabled.");
  EXPECT_EQ(MainState.DdeState, 2);
}

TEST(StartUp, ShowStatesAndEsc) {
  const ScratchFile file("text\n");
  {
    Viewer viewer({"-N", "-D"});
    EXPECT_TRUE(IsIconic(viewer.Window())) << "-N without a file stays minimized";
  }
  {
    Viewer viewer({"-N", "-X", file.Path()});
    EXPECT_FALSE(IsIconic(viewer.Window())) << "opening a file restores the window";
    EXPECT_EQ(Viewer::Text(), "text");
    viewer.Key(VK_ESCAPE);
    EXPECT_TRUE(viewer.Running());
    EXPECT_TRUE(IsIconic(viewer.Window()));
  }
  Viewer viewer({"-M", "-Y", file.Path()});
  EXPECT_EQ(MainState.AlwaysOnTop, 1);
  viewer.Key(VK_ESCAPE);
  EXPECT_FALSE(viewer.Running());
}

TEST(StartUp, ASecondClassIsRefused) {
  WNDCLASSA other{};
  other.lpfnWndProc = MainWindowProc;
  other.lpszClassName = kClassName;
  ASSERT_NE(RegisterClassA(&other), 0);
  EXPECT_EQ(StartProgram(nullptr, nullptr, "", SW_SHOWNORMAL), kExitNoClass);
  ASSERT_EQ(platform_testing::Boxes().size(), 1U);
  EXPECT_EQ(platform_testing::Boxes()[0].text, "Cannot register class");
  EXPECT_EQ(platform_testing::Beeps(), std::vector<UINT>{16});
  UnregisterClassA(kClassName, nullptr);
  DestroyIcon(MainState.AppIcon);
  MainState = MainWindowState{};
  platform_testing::ForgetRecords();
}

}  // namespace
