// Commands and the menu, on the running program.
#include "resources/menu.h"

#include <fstream>

#include "tests/window/viewer.h"
#include "window/command_table.h"
#include "window/menu.h"

namespace {

using Items = std::vector<platform_testing::MenuItem>;

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

TEST(Menu, ShowsTheRecentFiles) {
  const ScratchFile file("text\n");
  for (const bool wanted : {true, false}) {
    Viewer viewer({wanted ? "-S" : "-s", file.Path()});
    Items items;
    for (int opening = 0; opening < 2; ++opening)
      items = platform_testing::OpenMenu(viewer.Window(), kFileMenu);
    EXPECT_EQ(items[items.size() - (wanted ? 3 : 1)].id, IDM_EXIT);
    if (wanted) EXPECT_EQ(items.back().text, std::string("&1 ") + BaseName(file.Path().c_str()));
    EXPECT_EQ(MainState.RecentFileCount, 1) << "the list in memory follows all the same";
  }
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
  platform_testing::ClickMenu(viewer.Window(), IDM_RAW);
  viewer.Pump();
  viewer.Command(IDM_ZOOM_IN);
  viewer.Command(IDM_ON_TOP);
  EXPECT_EQ(ticked(), (std::vector<UINT>{IDM_RAW, IDM_WRAP, IDM_ZOOM_IN, IDM_ON_TOP}));
  viewer.Command(IDM_ZOOM_RESET);
  viewer.Command(IDM_TEXT);
  EXPECT_EQ(ticked(), (std::vector<UINT>{IDM_TEXT, IDM_ON_TOP}));
}

TEST(Commands, EachFormatKeepsItsOwnWord) {
  const ScratchFile file(NumberedLines(50));
  Viewer viewer({file.Path()});
  struct Case {
    char key;
    ViewOptions flags;
    const char* text;
  };
  for (const auto& [key, flags, text] :
       {Case{'W', 0x221, "line 0"}, Case{'H', 0x03, "000000"}, Case{'W', 0x02, "000000"},
        Case{'R', 0x01, "line 0"}, Case{'T', 0x221, "line 0"}, Case{'H', 0x02, "000000"}}) {
    viewer.Type(key, MK_CONTROL);
    EXPECT_EQ(MainState.FormatFlags, flags) << key;
    EXPECT_EQ(Viewer::Text().substr(0, 6), text) << key;
  }
  const std::int64_t opened = platform_testing::FilesOpened();
  viewer.Command(IDM_HEX);
  EXPECT_GT(platform_testing::FilesOpened(), opened) << "a format in force is formatted anew";
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
  viewer.Key(VK_F1);
  EXPECT_TRUE(platform_testing::Beeps().empty());
}

// What the README says of the keys is what the table holds.
TEST(Commands, TheirKeysStandInTheReadme) {
  std::ifstream file(QUORL_README);
  const std::string readme{std::istreambuf_iterator<char>(file), {}};
  for (const Command& command : kCommands) {
    if (command.keys[0].key == 0 || command.label == nullptr) continue;
    std::string label;
    for (const char* at = command.label; *at != '\0'; ++at) {
      if (*at != '&') label += *at;
    }
    if (command.handler == nullptr) label += " (to come)";
    std::string row = "| " + label + " | " + command.KeyText();
    if (command.keys[1].key != 0) row += ", " + KeyTextOf(command.keys[1]);
    EXPECT_NE(readme.find(row + " |"), std::string::npos) << row;
  }
}

}  // namespace
