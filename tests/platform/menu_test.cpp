#include <gtest/gtest.h>

#include "tests/platform/test_window.h"

namespace {

using namespace platform_testing;

struct TestMenu {
  HMENU bar = CreateMenu();
  HMENU file = CreatePopupMenu();
  HMENU view = CreatePopupMenu();
  TestMenu() {
    AppendMenuA(file, MF_STRING, 101, "&Open...\tCtrl+F12");
    AppendMenuA(file, MF_SEPARATOR, 0, nullptr);
    AppendMenuA(file, MF_STRING, 108, "E&xit");
    AppendMenuA(view, MF_STRING, 314, "&Wrap\tCtrl+W");
    AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), "&File");
    AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(view), "&View");
  }
};

TEST(Menus, StateIsKeptByCommandAndByPosition) {
  TestMenu menu;
  TestWindow window(200, 100, menu.bar);
  EXPECT_EQ(GetMenu(window.Handle()), menu.bar);
  EXPECT_EQ(GetSubMenu(menu.bar, 1), menu.view);
  EXPECT_EQ(GetSubMenu(menu.bar, 2), nullptr);
  EXPECT_EQ(GetMenuItemCount(menu.file), 3);
  // By command the whole tree is searched; the former state comes back.
  EXPECT_EQ(CheckMenuItem(menu.bar, 314, MF_BYCOMMAND | MF_CHECKED), MF_UNCHECKED);
  EXPECT_EQ(CheckMenuItem(menu.view, 0, MF_BYPOSITION | MF_CHECKED), MF_CHECKED);
  EXPECT_EQ(EnableMenuItem(menu.bar, 101, MF_GRAYED), static_cast<BOOL>(MF_ENABLED));
  EXPECT_EQ(EnableMenuItem(menu.bar, 101, MF_GRAYED), static_cast<BOOL>(MF_GRAYED));
  EXPECT_EQ(CheckMenuItem(menu.bar, 999, MF_CHECKED), static_cast<DWORD>(-1));
  EXPECT_EQ(EnableMenuItem(menu.bar, 999, MF_GRAYED), -1);
  const std::vector<MenuItem> file = OpenMenu(window.Handle(), 0);
  ASSERT_EQ(file.size(), 3U);
  EXPECT_EQ(file[0].text, "&Open...\tCtrl+F12");
  EXPECT_FALSE(file[0].enabled);
  EXPECT_TRUE(file[1].separator);
  EXPECT_TRUE(file[2].enabled);
  EXPECT_TRUE(OpenMenu(window.Handle(), 1)[0].checked);
  window.Forget();
  ClickMenu(window.Handle(), 101);  // grayed
  ClickMenu(window.Handle(), 314);
  window.Pump();
  EXPECT_EQ(window.Count(WM_COMMAND), 1);
  EXPECT_EQ(window.log.back().wParam, 314U);
}

TEST(Menus, APullDownShowsWhatItsOpeningChanged) {
  TestMenu menu;
  TestWindow window(200, 100, menu.bar);
  window.handle = [&](UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITMENUPOPUP) {
      EXPECT_EQ(reinterpret_cast<HMENU>(wParam), lParam == 0 ? menu.file : menu.view);
      if (lParam == 0) {
        DeleteMenu(menu.file, 201, MF_BYCOMMAND);
        AppendMenuA(menu.file, MF_STRING, 201, "&1 report.txt");
      }
    }
    return false;
  };
  for (int i = 0; i < 2; ++i) {
    const std::vector<MenuItem> items = OpenMenu(window.Handle(), 0);
    ASSERT_EQ(items.size(), 4U);
    EXPECT_EQ(items[3].id, 201U);
  }
  window.Forget();
  ClickMenu(window.Handle(), 201);
  window.Pump();
  EXPECT_EQ(window.Messages(), (std::vector<UINT>{WM_INITMENUPOPUP, WM_COMMAND}));
  EXPECT_EQ(window.log[1], (Received{WM_COMMAND, 201, 0}));
}

TEST(Menus, ItemsAndPullDownsCanBeTakenAway) {
  TestMenu menu;
  TestWindow window(200, 100, menu.bar);
  EXPECT_TRUE(DeleteMenu(menu.bar, 108, MF_BYCOMMAND));
  EXPECT_FALSE(DeleteMenu(menu.bar, 108, MF_BYCOMMAND));
  EXPECT_TRUE(DeleteMenu(menu.file, 1, MF_BYPOSITION));
  EXPECT_EQ(GetMenuItemCount(menu.file), 1);
  EXPECT_TRUE(DeleteMenu(menu.bar, 0, MF_BYPOSITION));
  EXPECT_FALSE(DeleteMenu(menu.bar, 1, MF_BYPOSITION));
  EXPECT_EQ(OpenMenu(window.Handle(), 0)[0].id, 314U);
}

}  // namespace
