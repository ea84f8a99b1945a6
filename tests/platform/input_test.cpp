#include <gtest/gtest.h>

#include "tests/platform/test_window.h"

namespace {

using namespace platform_testing;

TEST(Keys, ArriveAsVirtualKeysWithTheModifiersOfTheirMessage) {
  TestWindow window;
  std::vector<std::string> states;
  window.handle = [&](UINT message, WPARAM, LPARAM) {
    if (message == WM_KEYDOWN) {
      states.push_back(std::string(GetKeyState(VK_SHIFT) < 0 ? "S" : "") +
                       (GetKeyState(VK_CONTROL) < 0 ? "C" : "") + (GetKeyState(VK_MENU) < 0 ? "A" : ""));
    }
    return false;
  };
  PressKey(window.Handle(), VK_HOME, 0);
  PressKey(window.Handle(), VK_END, MK_CONTROL);
  PressKey(window.Handle(), VK_PRIOR, MK_SHIFT);
  PressKey(window.Handle(), VK_F1, MK_SHIFT | MK_CONTROL);
  TypeCharacter(window.Handle(), 'z', MK_CONTROL | kAlt);
  TypeCharacter(window.Handle(), '7', 0);
  TypeCharacter(window.Handle(), 'q', kAlt);  // Alt alone belongs to the menu
  PressKey(window.Handle(), VK_F2, kAlt);
  window.Pump();
  const std::vector<WPARAM> expected{VK_HOME, VK_END, VK_PRIOR, VK_F1, 'Z', '7'};
  std::vector<WPARAM> keys;
  for (const Received& received : window.log)
    if (received.message == WM_KEYDOWN) keys.push_back(received.wParam);
  EXPECT_EQ(keys, expected);
  EXPECT_EQ(states, (std::vector<std::string>{"", "C", "S", "SC", "CA", ""}));
}

TEST(Accelerators, MatchCharactersAndExactModifierSets) {
  ACCEL entries[] = {{0, 0x14, 311},
                     {0, 0x08, 312},
                     {FVIRTKEY | FSHIFT | FCONTROL, 'Z', 317},
                     {FVIRTKEY | FCONTROL, 'Z', 318},
                     {FVIRTKEY | FCONTROL | FALT | FNOINVERT, 'Z', 319},
                     {FVIRTKEY, VK_F2, 132},
                     {FVIRTKEY | FSHIFT, VK_F3, 151}};
  struct Case {
    int key, keys;
    int command;  // 0: none
  };
  const Case cases[] = {{'T', MK_CONTROL, 311},
                        {'H', MK_CONTROL, 312},
                        {VK_BACK, 0, 312},
                        {'T', 0, 0},
                        {'Z', MK_CONTROL, 318},
                        {'Z', MK_CONTROL | MK_SHIFT, 317},
                        {'Z', MK_CONTROL | kAlt, 319},
                        {'Z', MK_CONTROL | MK_SHIFT | kAlt, 0},
                        {'Z', 0, 0},
                        {VK_F2, 0, 132},
                        {VK_F2, MK_CONTROL, 0},
                        {VK_F3, MK_SHIFT, 151},
                        {VK_F3, 0, 0}};
  TestWindow window;
  window.accelerators = CreateAcceleratorTableA(entries, 7);
  for (const Case& test : cases) {
    SCOPED_TRACE(testing::Message() << test.key << ' ' << test.keys);
    window.Forget();
    PressKey(window.Handle(), test.key, test.keys);
    window.Pump();
    ASSERT_EQ(window.Count(WM_COMMAND), test.command != 0 ? 1 : 0);
    if (test.command != 0) {
      EXPECT_EQ(window.log.back(), (Received{WM_COMMAND, MAKEWPARAM(static_cast<UINT>(test.command), 1), 0}));
    }
  }
}

TEST(Accelerators, OfAMenuItemBringItsPullDownUpToDateAndRespectItsGraying) {
  const HMENU bar = CreateMenu();
  const HMENU popup = CreatePopupMenu();
  AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(CreatePopupMenu()), "&File");
  AppendMenuA(popup, MF_STRING, 132, "&Next\tF2");
  AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), "&Mark");
  TestWindow window(200, 100, bar);
  ACCEL entries[] = {{FVIRTKEY, VK_F2, 132}};
  window.accelerators = CreateAcceleratorTableA(entries, 1);
  bool gray = false;
  window.handle = [&](UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITMENUPOPUP)
      EnableMenuItem(reinterpret_cast<HMENU>(wParam), 132, gray ? MF_GRAYED : MF_ENABLED);
    return false;
  };
  PressKey(window.Handle(), VK_F2, 0);
  window.Pump();
  EXPECT_EQ(window.Messages(), (std::vector<UINT>{WM_INITMENUPOPUP, WM_COMMAND}));
  EXPECT_EQ(window.log[0].lParam, MAKELPARAM(1, 0));
  gray = true;
  PressKey(window.Handle(), VK_F2, 0);
  window.Pump();
  EXPECT_EQ(window.Count(WM_COMMAND), 1);
}

TEST(MouseInput, CarriesSignedPositionsAndKeys) {
  TestWindow window(200, 100);
  Mouse(window.Handle(), WM_LBUTTONDOWN, 10, 20, MK_SHIFT);
  Mouse(window.Handle(), WM_MOUSEMOVE, -7, -300, 0);
  Mouse(window.Handle(), WM_LBUTTONUP, 5000, 20, MK_CONTROL);
  Mouse(window.Handle(), WM_LBUTTONDBLCLK, 1, 2, 0);
  Mouse(window.Handle(), WM_LBUTTONUP, 1, 2, 0);
  Mouse(window.Handle(), WM_RBUTTONDOWN, 199, 99, 0);
  window.Pump();
  constexpr WPARAM kLeft = 1;
  constexpr WPARAM kRight = 2;
  EXPECT_EQ(window.log, (std::vector<Received>{
                            {WM_LBUTTONDOWN, kLeft | MK_SHIFT, MAKELPARAM(10, 20)},
                            {WM_MOUSEMOVE, kLeft, MAKELPARAM(static_cast<WORD>(-7), static_cast<WORD>(-300))},
                            {WM_LBUTTONUP, MK_CONTROL, MAKELPARAM(5000, 20)},
                            {WM_LBUTTONDBLCLK, kLeft, MAKELPARAM(1, 2)},
                            {WM_LBUTTONUP, 0, MAKELPARAM(1, 2)},
                            {WM_RBUTTONDOWN, kRight, MAKELPARAM(199, 99)},
                        }));
}

TEST(MouseInput, TheWheelTellsItsTurnAndItsKeys) {
  TestWindow window;
  Wheel(window.Handle(), -120, false, 0);
  Wheel(window.Handle(), 15, false, MK_CONTROL);
  Wheel(window.Handle(), 120, true, MK_SHIFT);
  window.Pump();
  ASSERT_EQ(window.Messages(), (std::vector<UINT>{WM_MOUSEWHEEL, WM_MOUSEWHEEL, WM_MOUSEHWHEEL}));
  const auto turn = [&](std::size_t i) { return static_cast<std::int16_t>(HIWORD(window.log[i].wParam)); };
  EXPECT_EQ(turn(0), -120);
  EXPECT_EQ(turn(1), 15);
  EXPECT_EQ(LOWORD(window.log[1].wParam), MK_CONTROL);
  EXPECT_EQ(turn(2), 120);
  EXPECT_EQ(LOWORD(window.log[2].wParam), MK_SHIFT);
  int lines = 0;
  EXPECT_TRUE(SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0));
  EXPECT_GE(lines, 1);
}

TEST(Cursors, ClassAndCurrentCursorComeBack) {
  TestWindow window;
  const HCURSOR wait = LoadCursorA(nullptr, IDC_WAIT);
  const ULONG_PTR formerClass =
      SetClassLongPtrA(window.Handle(), GCLP_HCURSOR, reinterpret_cast<LONG_PTR>(wait));
  const HCURSOR former = SetCursor(wait);
  EXPECT_TRUE(WaitCursorShown(window.Handle()));
  EXPECT_EQ(reinterpret_cast<HCURSOR>(formerClass), LoadCursorA(nullptr, IDC_ARROW));
  EXPECT_EQ(SetClassLongPtrA(window.Handle(), GCLP_HCURSOR, static_cast<LONG_PTR>(formerClass)),
            reinterpret_cast<ULONG_PTR>(wait));
  EXPECT_EQ(SetCursor(former), wait);
  EXPECT_FALSE(WaitCursorShown(window.Handle()));
}

}  // namespace
