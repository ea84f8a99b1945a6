#include "window/printing/page_setup.h"

#include "dialogs/page_setup.h"
#include "window/main_window_state.h"

LRESULT PageSetupCommand(UINT /*id*/) {
  PageSetup& setup = MainState;
  const auto chosen = RunPageSetup(MainState.MainWindow, setup, MainState);
  if (chosen) setup = *chosen;
  return chosen ? 1 : 0;
}
