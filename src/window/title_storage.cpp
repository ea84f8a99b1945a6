#include "window/title_storage.h"

#include "window/main_window_state.h"

bool TakeTitles(bool reset) {
  if (LockTitles(MainState.Titles, reset) != 0) return true;
  MessageBeep(MB_ICONEXCLAMATION);
  MessageBoxA(MainState.MainWindow, "Cannot allocate memory for title.", kProgramName, MB_ICONEXCLAMATION);
  return false;
}
