#include "window/save_options.h"

#include "dialogs/save_options.h"
#include "settings/profile.h"
#include "window/main_window_state.h"

FileError SaveOptions(const SaveChoice& choice) {
  const MainWindowState& state = MainState;
  RECT window{};
  GetWindowRect(state.MainWindow, &window);
  return SaveGroups(choice, &window, state.Titles, state);
}

LRESULT SaveOptionsCommand(UINT /*id*/) {
  RunSaveOptions(MainState.MainWindow, ProfileFullPath(MainState), SaveOptions);
  return 1;
}
