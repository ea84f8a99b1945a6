#include "window/titles.h"

#include "settings/title_group.h"
#include "setups/setups.h"
#include "window/main_window_state.h"
#include "window/navigation.h"
#include "window/private_messages.h"

bool TakeTitles(bool reset) {
  if (LockTitles(MainState.Titles, reset) != 0) return true;
  MessageBeep(MB_ICONEXCLAMATION);
  MessageBoxA(MainState.MainWindow, "Cannot allocate memory for title.", kProgramName, MB_ICONEXCLAMATION);
  return false;
}

void LoadFirstTitles() {
  MainWindowState& state = MainState;
  if (!TakeTitles(true)) return;
  if (state.Letter('V') != 'V') LoadTitles(state.ProfilePath, "Titles", state.Titles);
  if (state.SetupSection[0] != '\0' &&
      (SetupGroups(state.ProfilePath, state.SetupSection) & GROUP_TITLES) != 0) {
    LoadTitles(state.ProfilePath, state.SetupSection, state.Titles);
  }
  UnlockTitles(state.Titles);
}

LRESULT FreezeTitleCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  if (state.SelStart < 0 || state.SelEnd < 0) {
    MessageBeep(MB_ICONEXCLAMATION);
    return 0;
  }
  if (!TakeTitles(true)) return 0;
  FreezeLines(state.Titles, state.Lines, state.Text, state.SelStart, state.SelEnd);
  UnlockTitles(state.Titles);
  UpdateLinesPerScreen();
  SendMessageA(state.MainWindow, WM_VIEW_UNSELECT, 0, 0);
  RepaintWindow();
  return 0;
}

LRESULT ClearTitleCommand(UINT /*id*/) {
  FreeTitles(MainState.Titles);
  UpdateLinesPerScreen();
  RepaintWindow();
  return 0;
}
