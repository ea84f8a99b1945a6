#include "window/setups.h"

#include <cstdio>

#include "dialogs/load_setup.h"
#include "dialogs/save_options.h"
#include "dialogs/save_setup.h"
#include "resources/command_ids.h"
#include "settings/profile.h"
#include "setups/setup_list.h"
#include "window/main_window_state.h"
#include "window/navigation.h"
#include "window/private_messages.h"
#include "window/titles.h"

namespace {

RECT WindowRectangle() {
  RECT window{};
  GetWindowRect(MainState.MainWindow, &window);
  return window;
}

void SetCurrentSetup(std::string_view section) {
  std::snprintf(MainState.SetupSection, sizeof MainState.SetupSection, "%s", std::string(section).c_str());
}

FileError SaveSetup(const std::string& section, std::int32_t groups) {
  MainWindowState& state = MainState;
  const RECT window = WindowRectangle();
  const std::int32_t former = state.SaveWhat;
  state.SaveWhat = groups;
  const FileError error = WriteSetup(&window, section.c_str(), state.Titles, state);
  if (error == 0) {
    SetCurrentSetup(section);
  } else {
    state.SaveWhat = former;
  }
  return error;
}

// Lets the user choose the current setup. False when there is none to load.
bool ChooseSetup() {
  std::string current = MainState.SetupSection;
  const auto chosen = RunLoadSetup(MainState.MainWindow, MainState, current);
  SetCurrentSetup(chosen.value_or(current));
  return chosen.has_value();
}

}  // namespace

bool NameSetup(std::string_view section) {
  if (section.size() >= kSetupSectionBytes) return false;
  SetCurrentSetup(section);
  TellOfUnknownSetup();
  return true;
}

void TellOfUnknownSetup() {
  const MainWindowState& state = MainState;
  if (state.SetupSection[0] == '\0' || SetupExists(state.ProfilePath, state.SetupSection)) return;
  std::fprintf(stderr, "quorl: there is no setup \"%s\" in %s\n",
               std::string(SetupNameOf(state.SetupSection)).c_str(), ProfileFullPath(state).c_str());
}

FileError SaveOptions(const SaveChoice& choice) {
  const RECT window = WindowRectangle();
  return SaveGroups(choice, &window, MainState.Titles, MainState);
}

LRESULT SaveOptionsCommand(UINT /*id*/) {
  RunSaveOptions(MainState.MainWindow, ProfileFullPath(MainState), SaveOptions);
  return 1;
}

LRESULT SaveSetupCommand(UINT /*id*/) {
  RunSaveSetup(MainState.MainWindow, MainState, MainState.SetupSection, MainState.SaveWhat, SaveSetup);
  return 1;
}

LRESULT LoadSetupCommand(UINT id) {
  MainWindowState& state = MainState;
  if (!TakeTitles(false)) return 0;
  const bool load = id == IDM_RELOAD_SETUP || ChooseSetup();
  if (load) LoadSetup(state.SetupSection, &state.Titles, state);
  UnlockTitles(state.Titles);
  SendMessageA(state.MainWindow, WM_VIEW_FONT, 0, 0);
  ReformatView();
  RepaintWindow();
  return load ? 1 : 0;
}
