// Commands and the menu, on the running program.
#include <algorithm>

#include "resources/menu.h"
#include "tests/window/viewer.h"
#include "window/command_table.h"

namespace {

using Items = std::vector<platform_testing::MenuItem>;

const platform_testing::MenuItem& Item(const Items& items, UINT id) {
  const auto found = std::ranges::find(items, id, &platform_testing::MenuItem::id);
  EXPECT_NE(found, items.end()) << id;
  static const platform_testing::MenuItem none;
  return found == items.end() ? none : *found;
}

TEST(Menu, GraysWhatHasNoFileAndWhatIsNotBuilt) {
  const ScratchFile file("text\n");
  for (const bool open : {false, true}) {
    Viewer viewer(open ? std::vector<std::string>{file.Path()} : std::vector<std::string>{"-D"});
    for (int position = 0; position < static_cast<int>(std::size(kMenuBar)); ++position) {
      for (const auto& item : platform_testing::OpenMenu(viewer.Window(), position)) {
        if (item.separator) continue;
        const Command* command = FindCommand(item.id);
        ASSERT_NE(command, nullptr) << item.text;
        const bool needsFile =
            command->needs == Needs::file || item.id == IDM_CLEAR_COLUMNS || item.id == IDM_FREEZE_COLUMNS;
        const bool ready = (open || !needsFile) && item.id != IDM_FIND_NEXT;  // there is no key yet
        EXPECT_EQ(item.enabled, command->handler != nullptr && ready) << item.text;
      }
    }
  }
}

TEST(Menu, LabelsCarryTheirKeys) {
  Viewer viewer({"-D"});
  EXPECT_EQ(Item(platform_testing::OpenMenu(viewer.Window(), kFileMenu), IDM_OPEN).text,
            "&Open...\tCtrl+F12");
  EXPECT_EQ(Item(platform_testing::OpenMenu(viewer.Window(), kFileMenu), IDM_EXIT).text, "E&xit");
}

TEST(Menu, ShowsTheRecentFiles) {
  const ScratchFile first("text\n");
  const ScratchFile second("text\n");
  Viewer viewer({first.Path()});
  const std::size_t before = platform_testing::OpenMenu(viewer.Window(), kFileMenu).size();
  viewer.Send(WM_FILE_OPEN, 0, reinterpret_cast<LPARAM>(second.Path().c_str()));
  for (int opening = 0; opening < 2; ++opening) {
    const Items items = platform_testing::OpenMenu(viewer.Window(), kFileMenu);
    EXPECT_EQ(items.size(), before + 1);
    EXPECT_EQ(items[items.size() - 2].text, std::string("&1 ") + BaseName(second.Path().c_str()));
    EXPECT_EQ(items.back().text, std::string("&2 ") + BaseName(first.Path().c_str()));
    EXPECT_TRUE(items[items.size() - 3].separator);
  }
  platform_testing::ClickMenu(viewer.Window(), IDM_RECENT2);
  viewer.Pump();
  EXPECT_EQ(MainState.File.Fname, first.Path());
  EXPECT_EQ(RecentItemText(3, "/x/a&b.txt"), "&3 a&&b.txt");
}

TEST(Menu, WithoutRecentFilesThereIsNoSeparatorForThem) {
  const ScratchFile file("text\n");
  Viewer viewer({"-s", file.Path()});
  const Items items = platform_testing::OpenMenu(viewer.Window(), kFileMenu);
  EXPECT_EQ(items.back().id, IDM_EXIT);
  EXPECT_EQ(MainState.RecentFileCount, 1) << "the list in memory follows all the same";
}

TEST(Menu, TicksWhatIsInForce) {
  const ScratchFile file("text\n");
  Viewer viewer({file.Path()});
  const auto ticked = [&viewer] {
    std::vector<UINT> ids;
    for (const auto& item : platform_testing::OpenMenu(viewer.Window(), kViewMenu)) {
      if (item.checked) ids.push_back(item.id);
    }
    return ids;
  };
  EXPECT_EQ(ticked(), std::vector<UINT>{IDM_TEXT});
  platform_testing::ClickMenu(viewer.Window(), IDM_RAW);
  viewer.Pump();
  EXPECT_EQ(ticked(), (std::vector<UINT>{IDM_RAW, IDM_WRAP}));
  viewer.Command(IDM_ZOOM_IN);
  viewer.Command(IDM_ON_TOP);
  EXPECT_EQ(ticked(), (std::vector<UINT>{IDM_RAW, IDM_WRAP, IDM_ZOOM_IN, IDM_ON_TOP}));
  viewer.Command(IDM_ZOOM_RESET);
  viewer.Command(IDM_ZOOM_OUT);
  viewer.Command(IDM_ON_TOP);
  EXPECT_EQ(ticked(), (std::vector<UINT>{IDM_RAW, IDM_WRAP, IDM_ZOOM_OUT}));
  EXPECT_TRUE(Item(platform_testing::OpenMenu(viewer.Window(), kFileMenu), IDM_IGNORE_DDE).checked);
}

TEST(Commands, EachFormatKeepsItsOwnWord) {
  const ScratchFile file(NumberedLines(50));
  Viewer viewer({file.Path()});
  viewer.Type('W', MK_CONTROL);
  EXPECT_EQ(MainState.FormatFlags, 0x221U);
  viewer.Type('H', MK_CONTROL);
  EXPECT_EQ(MainState.FormatIndex, 1);
  EXPECT_EQ(MainState.FormatFlags, 0x03U);
  EXPECT_EQ(Viewer::Text().substr(0, 6), "000000");
  viewer.Type('W', MK_CONTROL);
  EXPECT_EQ(MainState.FormatFlags, 0x02U);
  viewer.Type('R', MK_CONTROL);
  EXPECT_EQ(Viewer::Text().substr(0, 7), "line 0\xB7");
  viewer.Type('T', MK_CONTROL);
  EXPECT_EQ(MainState.FormatFlags, 0x221U);
  EXPECT_EQ(Viewer::Text(), "line 0");
  viewer.Command(IDM_HEX);
  EXPECT_EQ(MainState.FormatFlags, 0x02U);
}

TEST(Commands, AFormatInForceIsFormattedAnew) {
  const ScratchFile file("text\n");
  Viewer viewer({file.Path()});
  const std::int64_t opened = platform_testing::FilesOpened();
  viewer.Command(IDM_TEXT);
  EXPECT_GT(platform_testing::FilesOpened(), opened);
}

TEST(Commands, UnknownAndUnbuiltOnesDoNothing) {
  Viewer viewer({"-D"});
  platform_testing::ForgetRecords();
  for (UINT id = 0; id < 700; ++id) {
    const Command* command = FindCommand(id);
    if (command != nullptr && command->handler != nullptr && command->needs == Needs::nothing) continue;
    EXPECT_EQ(SendMessageA(viewer.Window(), WM_COMMAND, id, 0), 0) << id;
  }
  EXPECT_TRUE(platform_testing::Boxes().empty());
  EXPECT_TRUE(platform_testing::Beeps().empty());
}

TEST(Commands, HelpBeepsAsLongAsThereIsNone) {
  const ScratchFile file("text\n");
  Viewer viewer({file.Path()});
  viewer.Key(VK_F1);
  viewer.Key(VK_F1, MK_CONTROL);
  EXPECT_EQ(platform_testing::Beeps(), (std::vector<UINT>{48, 48}));
}

}  // namespace
