#include <gtest/gtest.h>

#include <algorithm>

#include "platform/dialog.h"
#include "tests/platform/test_window.h"

namespace {

using namespace platform_testing;

constexpr int kTab = 0x09;
constexpr int kEnter = 0x0D;

enum Id { kName = 100, kSample, kCase, kGray, kFirst, kSecond, kText, kKind, kBand, kMore, kOff };

constexpr ControlTemplate kControls[] = {
    {ControlKind::label, kNoId, "&Name", 8, 12, 30, 10},
    {ControlKind::edit, kName, "", 40, 10, 60, 14},
    {ControlKind::readOnlyEdit, kSample, "", 104, 10, 80, 14},
    {ControlKind::checkBox, kCase, "&Case", 8, 28, 50, 10, kGroupStart},
    {ControlKind::threeState, kGray, "&Gray", 60, 28, 50, 10},
    {ControlKind::radio, kFirst, "&First", 8, 40, 50, 10, kGroupStart},
    {ControlKind::radio, kSecond, "&Second", 60, 40, 50, 10},
    {ControlKind::label, kNoId, "&Text", 8, 66, 30, 10},
    {ControlKind::comboBox, kText, "", 40, 64, 60, 60},
    {ControlKind::dropDownList, kKind, "", 104, 64, 60, 60},
    {ControlKind::ownerDrawn, kBand, "", 8, 84, 40, 10, kNoTabStop},
    {ControlKind::defaultButton, IDOK, "OK", 8, 110, 40, 14},
    {ControlKind::button, kMore, "&More", 52, 110, 40, 14},
    {ControlKind::button, kOff, "Off", 96, 110, 40, 14, kDisabled},
    {ControlKind::button, IDCANCEL, "Cancel", 140, 110, 40, 14},
};
constexpr DialogTemplate kDialog = {"Test", "Test dialog", 200, 130, kControls};

using Commands = std::vector<std::pair<int, int>>;  // control and code
using Steps = std::vector<DialogStep>;

// The dialog's procedure keeps what it is told; OK ends with 1, Cancel with 0.
class ProgramDialogs : public testing::Test {
 protected:
  ProgramDialogs() { self_ = this; }

  INT_PTR Run(Steps steps) {
    commands_.clear();
    ScriptNextDialog(std::move(steps));
    return RunDialog(kDialog, window_.Handle(), Procedure, 77);
  }

  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    ProgramDialogs& self = *self_;
    if (message == WM_INITDIALOG) {
      EXPECT_EQ(lParam, 77);
      EXPECT_EQ(reinterpret_cast<HWND>(wParam), GetDlgItem(dialog, kName));
      for (const char* row : {"one", "two", "three"}) {
        SendDlgItemMessageA(dialog, kText, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row));
        SendDlgItemMessageA(dialog, kKind, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row));
      }
      CheckRadioButton(dialog, kFirst, kSecond, kSecond);
      if (self.start_) self.start_(dialog);
      return TRUE;
    }
    if (message == WM_COMMAND) {
      const int id = LOWORD(wParam);
      self.commands_.emplace_back(id, HIWORD(wParam));
      EXPECT_TRUE(lParam == 0 ? id == IDCANCEL : reinterpret_cast<HWND>(lParam) == GetDlgItem(dialog, id));
      if (id != IDOK && id != IDCANCEL) return TRUE;
      EndDialog(dialog, id == IDOK ? 1 : 0);
      EndDialog(dialog, 9);  // the first result counts
      return TRUE;
    }
    if (message == WM_CLOSE) PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    return self.other_ ? self.other_(dialog, message, wParam, lParam) : FALSE;
  }

  TestWindow window_;
  Commands commands_;
  std::function<void(HWND)> start_;
  std::function<INT_PTR(HWND, UINT, WPARAM, LPARAM)> other_;
  static inline ProgramDialogs* self_ = nullptr;
};

DialogStep Key(int key, int keys = 0) {
  return [=](HWND dialog) { PressDialogKey(dialog, key, keys); };
}
DialogStep Type(const char* text) {
  return [=](HWND dialog) { TypeText(dialog, text); };
}
DialogStep Press(int id) {
  return [=](HWND dialog) { ClickControl(dialog, id); };
}
DialogStep Choose(int id, int row) {
  return [=](HWND dialog) { ChooseRow(dialog, id, row); };
}
DialogStep Focus(int id) {
  return [=](HWND dialog) { SetFocus(GetDlgItem(dialog, id)); };
}
void PostUser(HWND dialog) {
  PostMessageA(dialog, WM_USER, 0, 0);
}

int FocusedId(HWND dialog) {
  for (const ControlTemplate& control : kControls) {
    if (control.id != kNoId && StateOfControl(dialog, control.id).focused) return control.id;
  }
  return -1;
}

TEST_F(ProgramDialogs, TabGoesThroughTheControlsInTheOrderOfTheTemplate) {
  std::vector<int> order;
  Steps steps;
  for (int i = 0; i < 11; ++i) {
    steps.push_back(Key(kTab));
    steps.emplace_back([&](HWND dialog) { order.push_back(FocusedId(dialog)); });
  }
  steps.push_back(Key(kTab, MK_SHIFT));
  steps.emplace_back([&](HWND dialog) { order.push_back(FocusedId(dialog)); });
  Run(steps);
  EXPECT_EQ(order, (std::vector<int>{kSample, kCase, kGray, kSecond, kText, kKind, IDOK, kMore, IDCANCEL,
                                     kName, kSample, kName}));
}

TEST_F(ProgramDialogs, KeysAndClicksLeadToTheirCommandsAndTheirResult) {
  struct Case {
    const char* name;
    Steps steps;
    INT_PTR result;
    Commands commands;
  };
  const DialogStep twice = [](HWND dialog) {
    ClickControl(dialog, IDOK);
    ClickControl(dialog, IDOK);
  };
  const Case cases[] = {
      {"Enter in an edit", {Key(kEnter)}, 1, {{IDOK, 0}}},
      {"Enter in a combo box", {Focus(kText), Key(kEnter)}, 1, {{IDOK, 0}}},
      {"Enter on another button", {Focus(kMore), Key(kEnter)}, 0, {{kMore, 0}, {IDCANCEL, 0}}},
      {"Esc in a combo box", {Focus(kText), Key(VK_ESCAPE)}, 0, {{IDCANCEL, 0}}},
      {"close box", {}, 0, {{IDCANCEL, 0}}},
      {"disabled button", {Press(kOff)}, 0, {{IDCANCEL, 0}}},
      {"two clicks at once", {twice}, 1, {{IDOK, 0}}},
      {"mnemonic of a box", {Key('C', kAlt)}, 0, {{kCase, 0}, {IDCANCEL, 0}}},
      {"mnemonic of a radio button", {Key('F', kAlt)}, 0, {{kFirst, 0}, {IDCANCEL, 0}}},
      {"mnemonic of a button", {Key('M', kAlt)}, 0, {{kMore, 0}, {IDCANCEL, 0}}},
      {"mnemonic of a combo box", {Key('T', kAlt), Key(VK_DOWN)}, 0, {{kText, CBN_SELCHANGE}, {IDCANCEL, 0}}},
      {"mnemonic of an edit",
       {Focus(IDOK), Key('N', kAlt), Type("x")},
       0,
       {{kName, EN_CHANGE}, {IDCANCEL, 0}}},
  };
  for (const Case& entry : cases) {
    EXPECT_EQ(Run(entry.steps), entry.result) << entry.name;
    EXPECT_EQ(commands_, entry.commands) << entry.name;
  }
}

TEST_F(ProgramDialogs, BoxesRadiosAndFieldsTellWhatTheUserDoesOnly) {
  std::vector<UINT> states;
  const DialogStep look = [&](HWND dialog) {
    for (const int id : {kGray, kFirst, kSecond})
      states.push_back(IsDlgButtonChecked(dialog, id));
  };
  start_ = [](HWND dialog) { SendDlgItemMessageA(dialog, kName, EM_LIMITTEXT, 1, 0); };
  Run({Type("ab"), Press(kGray), look, Press(kGray), Press(kFirst), look, Press(kGray), look,
       [](HWND dialog) {
         EXPECT_EQ(StateOfControl(dialog, kName).text, "a");
         SetDlgItemTextA(dialog, kName, "\xC3\xBC longer than the limit");
         char text[8];
         EXPECT_EQ(GetDlgItemTextA(dialog, kName, text, sizeof text), 7U);
         EXPECT_STREQ(text, "\xC3\xBC long");
         EXPECT_EQ(GetDlgItemTextA(dialog, kName, text, 2), 0U) << "no half characters";
       }});
  EXPECT_EQ(states, (std::vector<UINT>{1, 0, 1, 2, 1, 0, 0, 1, 0}));
  EXPECT_EQ(commands_,
            (Commands{{kName, EN_CHANGE}, {kGray, 0}, {kGray, 0}, {kFirst, 0}, {kGray, 0}, {IDCANCEL, 0}}));
}

TEST_F(ProgramDialogs, AComboBoxKnowsWhetherItsTextWasChosenOrTyped) {
  struct Case {
    const char* name;
    Steps steps;
    LRESULT row;
    const char* text;
    Commands commands;
  };
  const std::pair chosen(+kText, CBN_SELCHANGE);
  const std::pair closed(+kText, CBN_CLOSEUP);
  const std::pair typed(+kText, CBN_EDITCHANGE);
  const Case cases[] = {
      {"chosen", {Choose(kText, 2)}, 2, "three", {chosen, closed}},
      {"by key", {Key(VK_DOWN)}, 2, "three", {chosen}},
      {"typed like a row", {Type("TWO"), Key(kTab)}, CB_ERR, "TWO", {typed, typed, typed}},
      {"typed, then chosen", {Type("x"), Choose(kText, 1)}, 1, "two", {typed, chosen, closed}},
      {"beyond the limit", {Type("1234")}, CB_ERR, "123", {typed, typed, typed}},
  };
  start_ = [](HWND dialog) {
    EXPECT_EQ(SendDlgItemMessageA(dialog, kKind, CB_GETCURSEL, 0, 0), CB_ERR)
        << "a list begins without a choice";
    SendDlgItemMessageA(dialog, kText, CB_LIMITTEXT, 3, 0);
    SendDlgItemMessageA(dialog, kText, CB_SETCURSEL, 1, 0);
    SendDlgItemMessageA(dialog, kText, CB_SETEDITSEL, 0, MAKELPARAM(0, 0xFFFF));
  };
  for (const Case& entry : cases) {
    Steps steps = entry.steps;
    steps.insert(steps.begin(), Focus(kText));
    steps.emplace_back([&](HWND dialog) {
      EXPECT_EQ(SendDlgItemMessageA(dialog, kText, CB_GETCURSEL, 0, 0), entry.row) << entry.name;
      EXPECT_EQ(StateOfControl(dialog, kText).text, entry.text) << entry.name;
      // The order of a choice and of the end of its list is open.
      EXPECT_TRUE(std::is_permutation(commands_.begin(), commands_.end(), entry.commands.begin(),
                                      entry.commands.end()))
          << entry.name << ' ' << testing::PrintToString(commands_);
    });
    Run(steps);
  }
}

// Posts a message before the control acts.
WNDPROC former = nullptr;
LRESULT CALLBACK InFront(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_LBUTTONDOWN || message == WM_KEYDOWN) PostUser(GetParent(control));
  return CallWindowProcA(former, control, message, wParam, lParam);
}

TEST_F(ProgramDialogs, AProcedureInFrontOfAControlSeesClicksAndKeysFirst) {
  std::vector<LRESULT> carets;
  start_ = [](HWND dialog) {
    SetDlgItemTextA(dialog, kSample, "....+....1");
    former = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(GetDlgItem(dialog, kSample), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(InFront)));
  };
  other_ = [&](HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message == WM_USER) carets.push_back(SendDlgItemMessageA(dialog, kSample, EM_GETSEL, 0, 0));
    return INT_PTR{0};
  };
  Run({[](HWND dialog) { ClickInControl(dialog, kSample, 1, 8); }, Key(VK_RIGHT), Key(VK_END), Key(VK_LEFT),
       Key(kTab), [](HWND dialog) { EXPECT_EQ(FocusedId(dialog), kCase); }});
  EXPECT_EQ(carets, (std::vector<LRESULT>{0, MAKELPARAM(1, 1), MAKELPARAM(10, 10), MAKELPARAM(9, 9)}));
}

TEST_F(ProgramDialogs, TheProgramDrawsItsButtons) {
  COLORREF color = kRed;
  other_ = [&](HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_DRAWITEM) return INT_PTR{FALSE};
    const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    EXPECT_EQ(wParam, static_cast<WPARAM>(kBand));
    EXPECT_EQ(item.hwndItem, GetDlgItem(dialog, kBand));
    FillWith(item.hDC, item.rcItem, color);
    return INT_PTR{TRUE};
  };
  const DialogStep look = [&](HWND dialog) {
    const std::vector<COLORREF> pixels = ControlPixels(dialog, kBand).at;
    EXPECT_EQ(pixels, std::vector<COLORREF>(std::max<std::size_t>(pixels.size(), 100), color));
    color = kBlue;
    InvalidateRect(dialog, nullptr, FALSE);
  };
  Run({look, look, Press(kBand)});
  EXPECT_EQ(commands_, (Commands{{kBand, BN_CLICKED}, {IDCANCEL, 0}}));
}

TEST_F(ProgramDialogs, TheQueueIsServedBehindADialogAndADialogMayOpenOverIt) {
  window_.paint = [](HDC, const PAINTSTRUCT&) {};
  INT_PTR inner = 0;
  other_ = [&](HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message == WM_USER) inner = RunDialog(kDialog, dialog, Procedure, 77);
    return INT_PTR{0};
  };
  ScriptNextDialog({PostUser, Key(VK_ESCAPE)});
  ScriptNextDialog({[&](HWND) {
                      PostMessageA(window_.Handle(), WM_TIMER, 5, 0);
                      InvalidateRect(window_.Handle(), nullptr, FALSE);
                    },
                    [&](HWND) {
                      EXPECT_EQ(window_.Messages(), (std::vector<UINT>{WM_TIMER, WM_PAINT}));
                    },
                    Key(kEnter)});
  EXPECT_EQ(RunDialog(kDialog, window_.Handle(), Procedure, 77), 0);
  EXPECT_EQ(inner, 1);
}

// What a setup has: a list, two of whose rows move, in a frame whose mnemonic leads to it.
constexpr int kList = 200;
constexpr ControlTemplate kSetupControls[] = {
    {ControlKind::group, kNoId, "&Rows", 4, 4, 92, 60},
    {ControlKind::listBox, kList, "", 8, 16, 80, 40},
    {ControlKind::threeState, kGray, "&Gray", 8, 70, 50, 10},
    {ControlKind::button, IDCANCEL, "Close", 60, 84, 40, 14},
};
constexpr DialogTemplate kSetup = {"Setup", "Setup", 110, 104, kSetupControls};

TEST_F(ProgramDialogs, AListInADialogThatIsNotModalTellsWhatTheUserChooses) {
  static std::vector<UINT> log;
  log.clear();
  const DLGPROC procedure = [](HWND dialog, UINT message, WPARAM wParam, LPARAM) -> INT_PTR {
    log.push_back(message != WM_COMMAND ? message : static_cast<UINT>(wParam));
    if (wParam == IDCANCEL) DestroyWindow(dialog);
    return FALSE;
  };
  HWND dialog = StartDialog(kSetup, window_.Handle(), procedure, 0);
  const auto list = [&](UINT message, WPARAM wParam = 0, const char* text = nullptr) {
    return SendDlgItemMessageA(dialog, kList, message, wParam, reinterpret_cast<LPARAM>(text));
  };
  for (const char* row : {"one", "\xC3\xBC two", "three", "four"})
    list(LB_ADDSTRING, 0, row);
  EXPECT_EQ(list(LB_GETCURSEL), LB_ERR);
  EXPECT_EQ(list(LB_SETCURSEL, 2), 2);
  EXPECT_EQ(list(LB_DELETESTRING, 0), 3);
  EXPECT_EQ(list(LB_GETCURSEL), 1) << "the choice goes with its row";
  EXPECT_EQ(list(LB_DELETESTRING, 1), 2);
  EXPECT_EQ(list(LB_GETCURSEL), LB_ERR);
  EXPECT_EQ(list(LB_SETCURSEL, 7), LB_ERR);
  window_.Pump();
  EXPECT_EQ(log, std::vector<UINT>{WM_INITDIALOG}) << "only the user is told of";
  PressDialogKey(dialog, 'R', kAlt);
  window_.Pump();
  EXPECT_TRUE(StateOfControl(dialog, kList).focused);
  EXPECT_EQ(list(LB_GETCURSEL), LB_ERR) << "the focus chooses nothing";
  ChooseRow(dialog, kList, 1);
  window_.Pump();
  PressDialogKey(dialog, VK_UP, 0);
  DoubleClickRow(dialog, kList, 1);
  EXPECT_EQ(StateOfControl(dialog, kList).rows, (std::vector<std::string>{"\xC3\xBC two", "four"}));
  std::vector<UINT> states;
  for (int i = 0; i < 4; ++i) {
    states.push_back(IsDlgButtonChecked(dialog, kGray));
    PressDialogKey(dialog, kTab, 0);  // back and forth
    PressDialogKey(dialog, kTab, MK_SHIFT);
    ClickControl(dialog, kGray);
  }
  EXPECT_EQ(states, (std::vector<UINT>{0, 1, 2, 0}));
  PressKey(window_.Handle(), VK_DOWN, 0);  // the owner takes keys all the while
  window_.Pump();
  EXPECT_EQ(window_.Count(WM_KEYDOWN), 1);
  PressDialogKey(dialog, VK_ESCAPE, 0);
  window_.Pump();
  const auto told = [](UINT code) { return static_cast<UINT>(MAKEWPARAM(kList, code)); };
  EXPECT_EQ(log,
            (std::vector<UINT>{WM_INITDIALOG, told(LBN_SELCHANGE), told(LBN_SELCHANGE), told(LBN_SELCHANGE),
                               told(LBN_DBLCLK), kGray, kGray, kGray, kGray, IDCANCEL, WM_DESTROY}));
  EXPECT_FALSE(SetWindowTextA(dialog, "gone"));
  log.clear();
  dialog = StartDialog(kSetup, window_.Handle(), procedure, 0);
  DestroyWindow(window_.Handle());
  EXPECT_EQ(log, (std::vector<UINT>{WM_INITDIALOG, WM_DESTROY})) << "it goes with its owner";
  EXPECT_FALSE(PostMessageA(dialog, WM_USER, 0, 0));
}

TEST_F(ProgramDialogs, EndBeforeTheyAreShownWithAQuitAndWithTheirOwner) {
  start_ = [](HWND dialog) { EndDialog(dialog, 5); };
  EXPECT_EQ(Run({}), 5);
  ForgetRecords();
  start_ = nullptr;
  EXPECT_EQ(Run({[](HWND) { PostQuitMessage(3); }}), -1);
  EXPECT_FALSE(window_.Pump()) << "the quit goes on to the loop outside";
  other_ = [](HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message == WM_USER) MessageBoxA(dialog, "over the dialog", "Box", MB_OK);
    return INT_PTR{0};
  };
  EXPECT_EQ(Run({[&](HWND dialog) {
              PostUser(dialog);
              PostMessageA(window_.Handle(), WM_CLOSE, 0, 0);
            }}),
            -1);
}

}  // namespace
