// Start-up as a whole: command words in, the state of the running program out.
#include "tests/window/viewer.h"
#include "window/main_window.h"

namespace {

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
