#include "window/commands.h"

#include <string_view>

#include "dialogs/about.h"
#include "dialogs/colors.h"
#include "dialogs/format_options.h"
#include "dialogs/help.h"
#include "resources/menu.h"
#include "setups/setups.h"
#include "window/command_table.h"
#include "window/main_window_state.h"
#include "window/navigation.h"
#include "window/private_messages.h"
#include "window/scrolling.h"
#include "window/titles.h"

namespace {

constexpr bool RowsAreSound() {
  for (const Command& command : kCommands) {
    if (command.handler == nullptr) return false;
    if (std::ranges::count(kCommands, command.id, &Command::id) != 1) return false;
  }
  return true;
}
static_assert(RowsAreSound());

// No key stands for two commands, and names are unique.
constexpr bool KeysAndNamesAreUnique() {
  for (const Command& command : kCommands) {
    if (std::ranges::count(kCommands, std::string_view(command.name), &Command::name) != 1) return false;
    for (const CommandKey& key : command.keys) {
      if (key.key == 0) continue;
      std::ptrdiff_t same = 0;
      for (const Command& other : kCommands) {
        same += std::ranges::count_if(other.keys, [&key](const CommandKey& one) {
          return one.key == key.key && one.modifiers == key.modifiers;
        });
      }
      if (same != 1) return false;
    }
  }
  return true;
}
static_assert(KeysAndNamesAreUnique());

constexpr std::ptrdiff_t CountMenuItems(UINT id) {
  std::ptrdiff_t count = 0;
  for (const PullDown& menu : kMenuBar) {
    count += std::ranges::count(menu.items, id);
    for (const SubMenu& within : kSubMenus) {
      if (std::ranges::count(menu.items, within.number) > 0) count += std::ranges::count(within.items, id);
    }
  }
  return count;
}

// Each labelled command stands in the menu once, and each item is such a command.
constexpr bool MenuIsSound() {
  for (const Command& command : kCommands) {
    if (CountMenuItems(command.id) != (command.label != nullptr ? 1 : 0)) return false;
  }
  for (const PullDown& menu : kMenuBar) {
    for (const UINT id : menu.items) {
      if (std::ranges::count(kSubMenus, id, &SubMenu::number) == 0 && id != kSeparator && !IsCommand(id))
        return false;
    }
  }
  return true;
}
static_assert(MenuIsSound());

static_assert(IDM_CODE_AUTOMATIC - IDM_CODE_ANSI == kCodeAutomatic &&
              IDM_CODE_UTF16BE - IDM_CODE_ANSI == kCodeUtf16Be);

void UseCode(std::int32_t code) {
  MainState.CharCode = code;
  ApplyCharCode(MainState);
  ReformatView();
  // Behind the load, which takes notices away.
  PostMessageA(MainState.MainWindow, WM_VIEW_CODE, 0, 0);
}

}  // namespace

LRESULT RunCommand(UINT id) {
  const Command* command = FindCommand(id);
  if (command == nullptr) return 0;
  if (command->needs == Needs::file && !FileIsOpen()) return 0;
  const LRESULT result = command->handler(id);
  // A dialog may have ended by Esc.
  if (command->label != nullptr && std::string_view(command->label).ends_with("...")) NoteEscape();
  return result;
}

LRESULT ExitCommand(UINT /*id*/) {
  if (PrintJobIsRunning()) {
    CloseBehindPrintJob(false);
  } else {
    SendMessageA(MainState.MainWindow, WM_CLOSE, 0, 0);
  }
  return 0;
}

LRESULT AboutCommand(UINT /*id*/) {
  return RunAbout(MainState.MainWindow, MainState.AppIcon);
}

LRESULT HelpCommand(UINT id) {
  if (id == IDM_HELP_ON_HELP) {
    ShowHelpOnHelp();
  } else {
    ShowHelp(id == IDM_HELP_CONTENTS ? kHelpContents : kHelpKeyboard);
  }
  return 0;
}

LRESULT OptionsCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  const auto window = [] {
    RECT rectangle{};
    GetWindowRect(MainState.MainWindow, &rectangle);
    return rectangle;
  };
  const INT_PTR result = RunFormatOptions(state.MainWindow, state, state, state.DiagMode != 0,
                                          {window, ChooseViewFont, FontInUse});
  state.FormatWidth = -1;
  SendMessageA(state.MainWindow, WM_VIEW_FONT, 0, 0);
  PostMessageA(state.MainWindow, WM_VIEW_LAYOUT, 0, 0);
  RepaintWindow();
  return result;
}

LRESULT ColorsCommand(UINT /*id*/) {
  const INT_PTR result = RunColorDialog(MainState.MainWindow);
  RepaintWindow();
  return result;
}

LRESULT FormatCommand(UINT id) {
  MainWindowState& state = MainState;
  state.StoredFlags[state.FormatIndex] = state.FormatFlags;
  state.FormatIndex = static_cast<std::int32_t>(id - IDM_TEXT);
  state.FormatFlags = state.StoredFlags[state.FormatIndex];
  ReformatView();
  return 0;
}

LRESULT WrapCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  state.FormatFlags ^= VO_WRAP;
  state.StoredFlags[state.FormatIndex] = state.FormatFlags;
  ReformatView();
  return 0;
}

LRESULT NextCodeCommand(UINT /*id*/) {
  const auto* const code = std::ranges::find(kCodeOrder, MainState.CharCode);
  UseCode(kCodeOrder[(code - kCodeOrder + 1) % kCodes]);
  return 0;
}

LRESULT CodeCommand(UINT id) {
  UseCode(static_cast<std::int32_t>(id - IDM_CODE_ANSI));
  return 0;
}

LRESULT ReloadCommand(UINT /*id*/) {
  MainState.File.Fcode = VO_AUTOCODE;
  PostMessageA(MainState.MainWindow, WM_VIEW_LOAD, 0, kNoPosition.Offset());
  return 0;
}

LRESULT OnTopCommand(UINT id) {
  MainState.AlwaysOnTop = id == IDM_ON_TOP_SET || MainState.AlwaysOnTop == 0 ? 1 : 0;
  const HWND after = MainState.AlwaysOnTop != 0 ? HWND_TOPMOST : HWND_NOTOPMOST;
  if (!SetWindowPos(MainState.MainWindow, after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE)) {
    MessageBeep(MB_ICONEXCLAMATION);
  }
  return 0;
}

bool FileIsOpen() {
  return MainState.File.Fname[0] != '\0';
}

bool SearchCanGoOn() {
  return FileIsOpen() && SearchIsDefined(MainState.Search);
}

bool TagsAreSet() {
  return FileIsOpen() && MainState.Tags.count > 0;
}

bool ProfileMayBeWritten() {
  return MainState.ProfileReadOnly == 0;
}

bool IgnoresDde() {
  return MainState.DdeState != kDdeServing;
}

bool ShowsText() {
  return MainState.FormatIndex == kFormatText;
}

bool ShowsHex() {
  return MainState.FormatIndex == kFormatHex;
}

bool ShowsRaw() {
  return MainState.FormatIndex == kFormatRaw;
}

bool Wraps() {
  return (MainState.FormatFlags & VO_WRAP) != 0;
}

bool UsesAutomatic() {
  return MainState.CharCode == kCodeAutomatic;
}

bool UsesAnsi() {
  return MainState.CharCode == kCodeAnsi;
}

bool UsesAscii() {
  return MainState.CharCode == kCodeAscii;
}

bool UsesEbcdic() {
  return MainState.CharCode == kCodeEbcdic;
}

bool UsesUtf8() {
  return MainState.CharCode == kCodeUtf8;
}

bool UsesUtf16Le() {
  return MainState.CharCode == kCodeUtf16Le;
}

bool UsesUtf16Be() {
  return MainState.CharCode == kCodeUtf16Be;
}

bool StaysOnTop() {
  return MainState.AlwaysOnTop != 0;
}

bool IsLarger() {
  return MainState.ZoomLevel > 0;
}

bool IsSmaller() {
  return MainState.ZoomLevel < 0;
}
