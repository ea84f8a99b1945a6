// The menu as the profile's DeleteMenu keys leave it.
#include "resources/menu.h"
#include "tests/window/viewer.h"
#include "window/command_table.h"

namespace {

using platform_testing::OpenMenu;

// The pull-down as text: the access letters of its items, and | for a separator.
std::string Letters(HWND window, int position) {
  std::string letters;
  for (const auto& item : OpenMenu(window, position)) {
    const std::size_t mark = item.text.find('&');
    letters += item.separator ? '|' : mark == std::string::npos ? '?' : item.text[mark + 1];
  }
  return letters;
}

TEST(MenuTrimming, DeletesItemsByTheirLettersAndTidiesSeparators) {
  const struct {
    const char* key;
    int position;
    const char* left;
  } cases[] = {
      {"", kEditMenu, "CSU|FHN|G"},
      {"DeleteMenu2=cs", kEditMenu, "U|FHN|G"},
      {"DeleteMenu2=CSU", kEditMenu, "FHN|G"},
      {"DeleteMenu2=FHN", kEditMenu, "CSU|G"},
      {"DeleteMenu2=g", kEditMenu, "CSU|FHN"},
      {"DeleteMenu2=csufhng", kEditMenu, ""},
      {"DeleteMenu2=1-?", kEditMenu, "CSU|FHN|G"},
      {"DeleteMenu3=R", kViewMenu, "THWCo|l|OI|Sy"},
      {"deletemenu1 = dx", kFileMenu, "OCPtrga|"},
      {"DeleteMenu5=TSRUNFCea", kMarkMenu, ""},
      {"DeleteMenu7=*", kHelpMenu, "CKH|A"},
  };
  for (const auto& c : cases) {
    Viewer viewer({"-D"}, std::string("[Quorl Setup]\n") + c.key + "\n");
    EXPECT_EQ(Letters(viewer.Window(), c.position), c.left) << c.key;
  }
}

TEST(MenuTrimming, AReadOnlyProfileGraysTheSaves) {
  for (const bool readOnly : {false, true}) {
    Viewer viewer({"-D"}, "[Quorl Setup]\nMruFiles=1\n");
    MainState.ProfileReadOnly = readOnly ? -1 : 0;
    for (const auto& item : OpenMenu(viewer.Window(), kFormatMenu)) {
      if (item.separator) continue;
      const bool saves = item.id == IDM_SAVE_OPTIONS || item.id == IDM_SAVE_SETUP;
      EXPECT_EQ(item.enabled, !(saves && readOnly)) << item.text;
    }
  }
}

}  // namespace
