#include "window/service/service.h"

#include <cstdio>
#include <string>
#include <utility>

#include "platform/bus.h"
#include "window/command_table.h"
#include "window/main_window_state.h"
#include "window/printing/print_job.h"
#include "window/private_messages.h"
#include "window/service/dde_service.h"
#include "window/service/requests.h"
#include "window/setups.h"
#include "window/watch.h"

namespace {

bool IsBusy() {
  return WatchIsOn() || PrintJobIsOn() || !IsWindowEnabled(MainState.MainWindow);
}

BusState StateForBus() {
  const MainWindowState& state = MainState;
  BusState told{state.File.Fname, 0, 0, kFormatNames[state.FormatIndex], IsBusy()};
  if (FileIsOpen()) {
    told.length = state.File.Flen.Offset();
    told.position = LineAt(state.Lines.Acur).Lpos.Offset();
  }
  return told;
}

void BringToFront() {
  const HWND window = MainState.MainWindow;
  if (std::exchange(MainState.StartsHidden, false)) ShowWindow(window, SW_SHOWNORMAL);
  if (IsIconic(window)) ShowWindow(window, SW_RESTORE);
  SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  SetFocus(window);
}

void OpenForBus(const std::string& path) {
  std::snprintf(MainState.DialogFile, sizeof MainState.DialogFile, "%s", path.c_str());
  PostMessageA(MainState.MainWindow, WM_FILE_OPEN, 0, reinterpret_cast<LPARAM>(MainState.DialogFile));
}

bool RunAction(const std::string& name) {
  const auto* const command = std::ranges::find(kCommands, name, &Command::name);
  if (command == std::end(kCommands)) return false;
  PostMessageA(MainState.MainWindow, WM_COMMAND, command->id, 0);
  return true;
}

}  // namespace

void StartService() {
  MainWindowState& state = MainState;
  OfferOnBus({StateForBus, BringToFront, OpenForBus, RunAction, FindForBus, GoToForBus, RowsForBus,
              CopyForBus, GiveUpWatched});
  const DdeLinks links{&state.Search, IsBusy, NameSetup};
  if (DdeStart(state.AppInstance, state.MainWindow, links) != 0) state.DdeState = kDdeServing;
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
