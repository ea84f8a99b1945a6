#include <gtest/gtest.h>

#include <algorithm>

#include "platform/dialog.h"
#include "tests/platform/test_window.h"

namespace {

using namespace platform_testing;

constexpr int kTab = 0x09;
constexpr int kEnter = 0x0D;

enum Id {
  kName = 100,
  kSample,
  kCase,
  kGray,
  kFirst,
  kSecond,
  kThird,
  kOther,
  kText,
  kKind,
  kBand,
  kMore,
  kOff,
  kNote
};

constexpr ControlTemplate kControls[] = {
    {ControlKind::group, kNoId, "Search", 4, 4, 192, 100},
    {ControlKind::label, kNoId, "&Name", 8, 12, 30, 10},
    {ControlKind::edit, kName, "", 40, 10, 60, 14},
    {ControlKind::readOnlyEdit, kSample, "", 104, 10, 80, 14},
    {ControlKind::checkBox, kCase, "&Case", 8, 28, 50, 10, kGroupStart},
    {ControlKind::threeState, kGray, "&Gray", 60, 28, 50, 10},
    {ControlKind::radio, kFirst, "&First", 8, 40, 50, 10, kGroupStart},
    {ControlKind::radio, kSecond, "&Second", 60, 40, 50, 10},
    {ControlKind::radio, kThird, "T&hird", 8, 52, 50, 10, kGroupStart},
    {ControlKind::radio, kOther, "&Other", 60, 52, 50, 10},
    {ControlKind::label, kNoId, "&Text", 8, 66, 30, 10},
    {ControlKind::comboBox, kText, "", 40, 64, 60, 60},
    {ControlKind::dropDownList, kKind, "", 104, 64, 60, 60},
    {ControlKind::ownerDrawn, kBand, "", 8, 84, 40, 10, kNoTabStop},
    {ControlKind::label, kNote, " ", 60, 84, 60, 10},
    {ControlKind::defaultButton, IDOK, "OK", 8, 110, 40, 14},
    {ControlKind::button, kMore, "&More", 52, 110, 40, 14},
    {ControlKind::button, kOff, "Of&f", 96, 110, 40, 14, kDisabled},
    {ControlKind::button, IDCANCEL, "Cancel", 140, 110, 40, 14},
};
constexpr DialogTemplate kDialog = {"Test", "Test dialog", 200, 130, kControls};

struct Command {
  int id;
  int code;
  bool operator==(const Command&) const = default;
};
void PrintTo(const Command& command, std::ostream* out) {
  *out << command.id << ':' << command.code;
}

// The dialog's procedure keeps what it is told; OK ends with 1, Cancel with 0.
class ProgramDialogs : public testing::Test {
 protected:
  ProgramDialogs() { self_ = this; }
  ~ProgramDialogs() override { self_ = nullptr; }

  INT_PTR Run(std::vector<DialogStep> steps) {
    commands_.clear();
    ScriptNextDialog(std::move(steps));
    return RunDialog(kDialog, window_.Handle(), Procedure, 77);
  }
  // What one act of the user leads to.
  std::vector<Command> CommandsOf(const DialogStep& act) {
    std::vector<Command> got;
    Run({act, [&](HWND) { got = commands_; }});
    return got;
  }

  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    ProgramDialogs& self = *self_;
    switch (message) {
      case WM_INITDIALOG:
        EXPECT_EQ(lParam, 77);
        EXPECT_EQ(reinterpret_cast<HWND>(wParam), GetDlgItem(dialog, kName));
        for (const char* row : {"one", "two", "three"}) {
          SendDlgItemMessageA(dialog, kText, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row));
          SendDlgItemMessageA(dialog, kKind, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row));
        }
        if (self.start_) self.start_(dialog);
        return TRUE;
      case WM_COMMAND:
        self.commands_.push_back({LOWORD(wParam), HIWORD(wParam)});
        if (LOWORD(wParam) != IDCANCEL || lParam != 0) {
          EXPECT_EQ(reinterpret_cast<HWND>(lParam), GetDlgItem(dialog, LOWORD(wParam)));
        }
        if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) {
          EndDialog(dialog, LOWORD(wParam) == IDOK ? 1 : 0);
          EndDialog(dialog, 9);  // the first result counts
        }
        return TRUE;
      case WM_CLOSE:
        ++self.closed_;
        PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
        return TRUE;
      default:
        return self.other_ ? self.other_(dialog, message, wParam, lParam) : FALSE;
    }
  }

  TestWindow window_;
  std::vector<Command> commands_;
  int closed_ = 0;
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

int FocusedId(HWND dialog) {
  for (const ControlTemplate& control : kControls) {
    if (control.id != kNoId && StateOfControl(dialog, control.id).focused) return control.id;
  }
  return -1;
}

TEST_F(ProgramDialogs, TabGoesThroughTheControlsInTheOrderOfTheTemplate) {
  start_ = [](HWND dialog) {
    CheckRadioButton(dialog, kFirst, kSecond, kFirst);
    CheckRadioButton(dialog, kThird, kOther, kOther);
  };
  std::vector<int> order;
  std::vector<DialogStep> steps;
  for (int i = 0; i < 12; ++i) {
    steps.emplace_back([&](HWND dialog) { order.push_back(FocusedId(dialog)); });
    steps.push_back(Key(kTab));
  }
  steps.emplace_back([&](HWND dialog) {
    PressDialogKey(dialog, kTab, MK_SHIFT);
    order.push_back(FocusedId(dialog));
  });
  Run(steps);
  EXPECT_EQ(order, (std::vector<int>{kName, kSample, kCase, kGray, kFirst, kOther, kText, kKind, IDOK, kMore,
                                     IDCANCEL, kName, kName}));
}

TEST_F(ProgramDialogs, TheEndOfADialogIsItsResult) {
  struct Case {
    const char* name;
    std::vector<DialogStep> steps;
    INT_PTR result;
    int closed;
    std::vector<Command> commands;
  };
  const Case cases[] = {
      {"Enter in an edit", {Key(kEnter)}, 1, 0, {{IDOK, 0}}},
      {"Enter in a combo box", {Focus(kText), Key(kEnter)}, 1, 0, {{IDOK, 0}}},
      {"Enter on a check box", {Focus(kCase), Key(kEnter)}, 1, 0, {{IDOK, 0}}},
      {"Enter on another button", {Focus(kMore), Key(kEnter)}, 0, 1, {{kMore, 0}, {IDCANCEL, 0}}},
      {"Esc in a combo box", {Focus(kText), Key(VK_ESCAPE)}, 0, 0, {{IDCANCEL, 0}}},
      {"close box", {}, 0, 1, {{IDCANCEL, 0}}},
      {"click", {Press(IDCANCEL)}, 0, 0, {{IDCANCEL, 0}}},
      {"disabled button", {Press(kOff)}, 0, 1, {{IDCANCEL, 0}}},
      {"two clicks at once",
       {[](HWND dialog) {
         ClickControl(dialog, IDOK);
         ClickControl(dialog, IDOK);
       }},
       1,
       0,
       {{IDOK, 0}}},
      {"disabled default",
       {[](HWND dialog) {
         EnableWindow(GetDlgItem(dialog, IDOK), FALSE);
         PressDialogKey(dialog, kEnter, 0);
       }},
       0,
       1,
       {{IDCANCEL, 0}}},
  };
  for (const Case& entry : cases) {
    closed_ = 0;
    EXPECT_EQ(Run(entry.steps), entry.result) << entry.name;
    EXPECT_EQ(closed_, entry.closed) << entry.name;
    EXPECT_EQ(commands_, entry.commands) << entry.name;
  }
}

TEST_F(ProgramDialogs, AMnemonicActsOnItsControl) {
  EXPECT_EQ(CommandsOf(Key('C', kAlt)), (std::vector<Command>{{kCase, BN_CLICKED}}));
  EXPECT_EQ(CommandsOf(Key('M', kAlt)), (std::vector<Command>{{kMore, BN_CLICKED}}));
  EXPECT_EQ(CommandsOf(Key('S', kAlt)), (std::vector<Command>{{kSecond, BN_CLICKED}}));
  int focused = 0;
  Run({Key('T', kAlt), [&](HWND dialog) { focused = FocusedId(dialog); }});
  EXPECT_EQ(focused, kText);
  Run({Focus(IDOK), Key('N', kAlt), [&](HWND dialog) { focused = FocusedId(dialog); }});
  EXPECT_EQ(focused, kName);
}

TEST_F(ProgramDialogs, BoxesAndRadiosTellClicksOnly) {
  std::vector<UINT> states;
  const DialogStep look = [&](HWND dialog) { states.push_back(IsDlgButtonChecked(dialog, kGray)); };
  start_ = [](HWND dialog) {
    CheckDlgButton(dialog, kCase, BST_CHECKED);
    CheckRadioButton(dialog, kFirst, kSecond, kFirst);
    CheckDlgButton(dialog, kOther, BST_CHECKED);
  };
  Run({look, Press(kGray), look, Press(kGray), look, Press(kGray), look, Press(kSecond), Press(kCase),
       [&](HWND dialog) {
         EXPECT_EQ(IsDlgButtonChecked(dialog, kCase), BST_UNCHECKED);
         EXPECT_EQ(IsDlgButtonChecked(dialog, kFirst), BST_UNCHECKED);
         EXPECT_EQ(IsDlgButtonChecked(dialog, kSecond), BST_CHECKED);
         EXPECT_EQ(IsDlgButtonChecked(dialog, kOther), BST_CHECKED);
         CheckDlgButton(dialog, kSecond, BST_UNCHECKED);
         EXPECT_EQ(IsDlgButtonChecked(dialog, kSecond), BST_UNCHECKED);
       }});
  EXPECT_EQ(states, (std::vector<UINT>{BST_UNCHECKED, BST_CHECKED, BST_INDETERMINATE, BST_UNCHECKED}));
  EXPECT_EQ(commands_, (std::vector<Command>{
                           {kGray, 0}, {kGray, 0}, {kGray, 0}, {kSecond, 0}, {kCase, 0}, {IDCANCEL, 0}}));
}

TEST_F(ProgramDialogs, AComboBoxKnowsWhetherItsTextWasChosenOrTyped) {
  struct Case {
    const char* name;
    std::vector<DialogStep> steps;
    LRESULT row;
    const char* text;
    std::vector<Command> commands;
  };
  const Command chosen{kText, CBN_SELCHANGE};
  const Command closed{kText, CBN_CLOSEUP};
  const Command typed{kText, CBN_EDITCHANGE};
  const DialogStep empty = [](HWND dialog) {
    SendDlgItemMessageA(dialog, kText, CB_SETCURSEL, WPARAM(-1), 0);
  };
  const Case cases[] = {
      {"at first", {}, 1, "two", {}},
      {"chosen", {Choose(kText, 2)}, 2, "three", {chosen, closed}},
      {"the same again", {Choose(kText, 1)}, 1, "two", {chosen, closed}},
      {"by key", {Key(VK_DOWN)}, 2, "three", {chosen}},
      {"typed", {Type("xy")}, CB_ERR, "xy", {typed, typed}},
      {"typed like a row", {Type("TWO"), Key(kTab)}, CB_ERR, "TWO", {typed, typed, typed}},
      {"typed, then chosen", {Type("x"), Choose(kText, 1)}, 1, "two", {typed, chosen, closed}},
      {"beyond the limit", {Type("123456")}, CB_ERR, "12345", {typed, typed, typed, typed, typed}},
      {"none", {empty}, CB_ERR, "", {}},
  };
  start_ = [](HWND dialog) {
    SendDlgItemMessageA(dialog, kText, CB_LIMITTEXT, 5, 0);
    SendDlgItemMessageA(dialog, kText, CB_SETCURSEL, 1, 0);
  };
  for (const Case& entry : cases) {
    std::vector<DialogStep> steps = entry.steps;
    steps.insert(steps.begin(), [](HWND dialog) {
      SetFocus(GetDlgItem(dialog, kText));
      SendDlgItemMessageA(dialog, kText, CB_SETEDITSEL, 0, MAKELPARAM(0, 0xFFFF));
    });
    steps.emplace_back([&](HWND dialog) {
      char text[20];
      EXPECT_EQ(SendDlgItemMessageA(dialog, kText, CB_GETCURSEL, 0, 0), entry.row) << entry.name;
      GetDlgItemTextA(dialog, kText, text, sizeof text);
      EXPECT_STREQ(text, entry.text) << entry.name;
      // The order of a choice and of the end of its list is open.
      EXPECT_TRUE(std::is_permutation(commands_.begin(), commands_.end(), entry.commands.begin(),
                                      entry.commands.end()))
          << entry.name << ' ' << testing::PrintToString(commands_);
    });
    Run(steps);
  }
}

TEST_F(ProgramDialogs, AListBeginsWithoutAChoice) {
  char text[20] = "";
  Run({[&](HWND dialog) {
         EXPECT_EQ(SendDlgItemMessageA(dialog, kKind, CB_GETCURSEL, 0, 0), CB_ERR);
         EXPECT_EQ(StateOfControl(dialog, kKind).text, "");
         EXPECT_EQ(SendDlgItemMessageA(dialog, kKind, CB_GETLBTEXT, 2, reinterpret_cast<LPARAM>(text)), 5);
         EXPECT_EQ(SendDlgItemMessageA(dialog, kKind, CB_GETLBTEXT, 3, reinterpret_cast<LPARAM>(text)),
                   CB_ERR);
       },
       Choose(kKind, 0),
       [&](HWND dialog) { EXPECT_EQ(SendDlgItemMessageA(dialog, kKind, CB_GETCURSEL, 0, 0), 0); }});
  EXPECT_STREQ(text, "three");
}

TEST_F(ProgramDialogs, FieldsHoldTextsAndNumbers) {
  start_ = [](HWND dialog) { SendDlgItemMessageA(dialog, kName, EM_LIMITTEXT, 4, 0); };
  Run({Type("abcdef"), [&](HWND dialog) {
         EXPECT_EQ(StateOfControl(dialog, kName).text, "abcd");
         EXPECT_EQ(commands_, (std::vector<Command>(4, {kName, EN_CHANGE})));
         SetDlgItemTextA(dialog, kName, "\xC3\xBC longer than the limit");
         char text[8];
         EXPECT_EQ(GetDlgItemTextA(dialog, kName, text, sizeof text), 7U);
         EXPECT_STREQ(text, "\xC3\xBC long");
         EXPECT_EQ(GetDlgItemTextA(dialog, kName, text, 2), 0U);  // no half characters
         SetDlgItemInt(dialog, kName, static_cast<UINT>(-5), TRUE);
         EXPECT_EQ(StateOfControl(dialog, kName).text, "-5");
         SendDlgItemMessageA(dialog, kName, EM_SETSEL, 0, -1);
         EXPECT_EQ(StateOfControl(dialog, kName).selected, "-5");
         EXPECT_TRUE(EnableWindow(GetDlgItem(dialog, kOff), TRUE));
         EXPECT_FALSE(EnableWindow(GetDlgItem(dialog, kOff), FALSE));
         EXPECT_EQ(GetDlgItem(dialog, 9999), nullptr);
         EXPECT_EQ(commands_.size(), 4U) << "the program's own changes are not told";
       }});
}

// Posts a message before the control acts, and counts what it saw.
WNDPROC former = nullptr;
int seen = 0;
LRESULT CALLBACK InFront(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_LBUTTONDOWN || message == WM_KEYDOWN) {
    ++seen;
    PostMessageA(GetParent(control), WM_USER, reinterpret_cast<WPARAM>(control), 0);
  }
  return CallWindowProcA(former, control, message, wParam, lParam);
}

TEST_F(ProgramDialogs, AProcedureInFrontOfAControlSeesClicksAndKeysFirst) {
  seen = 0;
  std::vector<LRESULT> carets;
  start_ = [](HWND dialog) {
    SetDlgItemTextA(dialog, kSample, "....+....1");
    former = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(GetDlgItem(dialog, kSample), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(InFront)));
  };
  other_ = [&](HWND, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_USER) {
      carets.push_back(SendMessageA(reinterpret_cast<HWND>(wParam), EM_GETSEL, 0, 0));
    }
    return INT_PTR{0};
  };
  Run({[](HWND dialog) { ClickInControl(dialog, kSample, 1, 8); }, Key(VK_RIGHT), Key(VK_END), Key(VK_LEFT),
       [](HWND dialog) { EXPECT_EQ(FocusedId(dialog), kSample); }, Key(kTab),
       [](HWND dialog) { EXPECT_EQ(FocusedId(dialog), kCase); }});
  EXPECT_EQ(carets, (std::vector<LRESULT>{0, MAKELPARAM(1, 1), MAKELPARAM(10, 10), MAKELPARAM(9, 9)}));
  EXPECT_EQ(seen, 4);
}

TEST_F(ProgramDialogs, TheProgramDrawsItsButtons) {
  COLORREF color = kRed;
  other_ = [&](HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_DRAWITEM) return INT_PTR{FALSE};
    const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    EXPECT_EQ(wParam, static_cast<WPARAM>(kBand));
    EXPECT_EQ(item.CtlType, ODT_BUTTON);
    EXPECT_EQ(item.hwndItem, GetDlgItem(dialog, kBand));
    const HBRUSH brush = CreateSolidBrush(color);
    const HGDIOBJ other = SelectObject(item.hDC, brush);
    Rectangle(item.hDC, -1, -1, item.rcItem.right + 1, item.rcItem.bottom + 1);
    SelectObject(item.hDC, other);
    DeleteObject(brush);
    return INT_PTR{TRUE};
  };
  const auto expectAll = [](HWND dialog, COLORREF expected) {
    const Pixels pixels = ControlPixels(dialog, kBand);
    EXPECT_GT(pixels.at.size(), 100U);
    EXPECT_TRUE(std::all_of(pixels.at.begin(), pixels.at.end(), [=](COLORREF at) { return at == expected; }));
  };
  Run({[&](HWND dialog) {
         expectAll(dialog, kRed);
         color = kBlue;
         InvalidateRect(dialog, nullptr, FALSE);
       },
       [&](HWND dialog) { expectAll(dialog, kBlue); }, Press(kBand)});
  EXPECT_EQ(commands_, (std::vector<Command>{{kBand, BN_CLICKED}, {IDCANCEL, 0}}));
}

TEST_F(ProgramDialogs, TheQueueIsServedBehindADialog) {
  window_.paint = [](HDC, const PAINTSTRUCT&) {};
  int posted = 0;
  other_ = [&](HWND, UINT message, WPARAM, LPARAM) {
    posted += message == WM_USER ? 1 : 0;
    return INT_PTR{0};
  };
  Run({[&](HWND dialog) {
         PostMessageA(window_.Handle(), WM_TIMER, 5, 0);
         PostMessageA(dialog, WM_USER, 0, 0);
         InvalidateRect(window_.Handle(), nullptr, FALSE);
       },
       [&](HWND) {
         EXPECT_EQ(window_.Count(WM_TIMER), 1);
         EXPECT_EQ(window_.Count(WM_PAINT), 1);
         EXPECT_EQ(posted, 1);
       }});
}

TEST_F(ProgramDialogs, ABoxOverADialogIsAnsweredFirst) {
  other_ = [](HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message == WM_USER) {
      MessageBoxA(dialog, "Bad", "Box", MB_ICONHAND);
      SetFocus(GetDlgItem(dialog, kCase));
    }
    return INT_PTR{0};
  };
  EXPECT_EQ(Run({[](HWND dialog) { PostMessageA(dialog, WM_USER, 0, 0); },
                 [](HWND dialog) { EXPECT_EQ(FocusedId(dialog), kCase); }, Key(kEnter)}),
            1);
  EXPECT_EQ(Boxes().size(), 1U);
}

TEST_F(ProgramDialogs, ADialogMayOpenOverADialog) {
  INT_PTR inner = 0;
  other_ = [&](HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message == WM_USER) inner = RunDialog(kDialog, dialog, Procedure, 77);
    return INT_PTR{0};
  };
  ScriptNextDialog({[](HWND dialog) { PostMessageA(dialog, WM_USER, 0, 0); }, Key(VK_ESCAPE)});
  ScriptNextDialog({Key(kEnter)});
  EXPECT_EQ(RunDialog(kDialog, window_.Handle(), Procedure, 77), 0);
  EXPECT_EQ(inner, 1);
}

TEST_F(ProgramDialogs, EndsBeforeItIsShown) {
  start_ = [](HWND dialog) { EndDialog(dialog, 5); };
  EXPECT_EQ(Run({}), 5);
  ForgetRecords();
}

TEST_F(ProgramDialogs, AQuitEndsADialogAndGoesOnToTheLoopOutside) {
  EXPECT_EQ(Run({[](HWND) { PostQuitMessage(3); }}), -1);
  EXPECT_FALSE(window_.Pump());
}

TEST_F(ProgramDialogs, GoWithTheWindowThatOwnsThem) {
  other_ = [](HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message == WM_USER) MessageBoxA(dialog, "over the dialog", "Box", MB_OK);
    return INT_PTR{0};
  };
  EXPECT_EQ(Run({[&](HWND dialog) {
              PostMessageA(dialog, WM_USER, 0, 0);
              PostMessageA(window_.Handle(), WM_CLOSE, 0, 0);
            }}),
            -1);
}

TEST(ColorDialogs, GiveTheChosenColorAndKeepCustomOnes) {
  TestWindow window;
  COLORREF custom[16];
  std::fill(std::begin(custom), std::end(custom), 0xFFFFFFFF);
  custom[3] = kGreen;
  CHOOSECOLORA choose{};
  choose.lStructSize = sizeof choose;
  choose.hwndOwner = window.Handle();
  choose.rgbResult = kRed;
  choose.lpCustColors = custom;
  choose.Flags = CC_RGBINIT;
  AnswerNextColorDialog(std::nullopt);
  EXPECT_FALSE(ChooseColorA(&choose));
  EXPECT_EQ(choose.rgbResult, kRed);
  AnswerNextColorDialog(RGB(1, 2, 3));
  EXPECT_TRUE(ChooseColorA(&choose));
  EXPECT_EQ(choose.rgbResult, RGB(1, 2, 3));
  EXPECT_EQ(custom[3], kGreen);
  EXPECT_EQ(custom[0], 0xFFFFFFFF);
}

}  // namespace
