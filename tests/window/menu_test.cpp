// Commands and the menu, on the running program.
#include "resources/menu.h"

#include "tests/window/viewer.h"
#include "window/command_table.h"
#include "window/menu.h"

namespace {

TEST(Menu, ShowsWhichRecentFileIsWhich) {
  RecentFileList recent;
  recent.RecentFileCount = 3;
  const std::string umlauts = [] {
    std::string text;
    for (int i = 0; i < 80; ++i)
      text += "\xC3\xBC";
    return text;
  }();
  std::snprintf(recent.RecentFiles[0], kPathBytes, "/x/a&b.txt");
  std::snprintf(recent.RecentFiles[1], kPathBytes, "/y/a&b.txt");
  std::snprintf(recent.RecentFiles[2], kPathBytes, "/x/%s", umlauts.c_str());
  EXPECT_EQ(RecentItemText(recent, 1), "&1 a&&b.txt - /x/");
  EXPECT_EQ(RecentItemText(recent, 2), "&2 a&&b.txt - /y/");
  EXPECT_EQ(RecentItemText(recent, 3), "&3 " + umlauts.substr(0, 60) + "..." + umlauts.substr(0, 54));
}

TEST(Commands, UnknownOnesAndThoseThatNeedAFileDoNothing) {
  Viewer viewer({"-D"});
  platform_testing::ForgetRecords();
  for (UINT id = 0; id < 700; ++id) {
    const Command* command = FindCommand(id);
    if (command != nullptr && command->needs == Needs::nothing) continue;
    EXPECT_EQ(SendMessageA(viewer.Window(), WM_COMMAND, id, 0), 0) << id;
  }
  EXPECT_TRUE(platform_testing::Boxes().empty());
}

}  // namespace
