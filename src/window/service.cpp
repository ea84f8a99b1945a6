#include "window/service.h"

#include "dde/service.h"
#include "window/main_window_state.h"

void StartService() {
  MainWindowState& state = MainState;
  if (DdeStart(state.AppInstance, state.MainWindow) != 0) {
    state.DdeState = kDdeServing;
    return;
  }
  MessageBeep(MB_ICONEXCLAMATION);
  MessageBoxA(state.MainWindow, "DDE Initialize failed.\nServer functions disabled.", kProgramName,
              MB_ICONEXCLAMATION);
}

LRESULT IgnoreDdeCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  if (state.DdeState == kDdeIgnoring) {
    StartService();
  } else {
    DdeStop();
    state.DdeState = kDdeIgnoring;
  }
  return 0;
}
