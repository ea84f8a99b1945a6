// What is behind the opening of a file and a user does not see at once.
#include <chrono>
#include <thread>

#include "window/files/opening.h"

#include <filesystem>

#include "resources/command_ids.h"
#include "tests/window/viewer.h"

namespace {

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

TEST(Opening, TheFilterOfAPatternHoldsItAsItIs) {
  constexpr char filters[] = "Any File (*.*)\0*.*\0Default (a`b*.txt)\0a`b*.txt\0";
  EXPECT_EQ(OpenFilters("a`b*.txt"), std::string(filters, sizeof filters - 1));
}

TEST(Opening, TheIndexTimerEndsItself) {
  const ScratchFile file(NumberedLines(300));
  Viewer viewer({file.Path()});
  EXPECT_TRUE(platform_testing::TimerIsSet(viewer.Window(), 3));
  for (int step = 0; step < 2000 && platform_testing::TimerIsSet(viewer.Window(), 3); ++step) {
    viewer.Send(WM_TIMER, 3);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  EXPECT_FALSE(platform_testing::TimerIsSet(viewer.Window(), 3));
  viewer.Command(IDM_EXIT);
  EXPECT_FALSE(viewer.Running());
}

}  // namespace
