#include "window/start_up.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "places/place.h"
#include "platform/paths.h"
#include "platform/program.h"
#include "platform/spool.h"
#include "resources/command_ids.h"
#include "resources/icon.h"
#include "settings/option_letters.h"
#include "settings/profile.h"
#include "setups/setups.h"
#include "window/main_window.h"
#include "window/main_window_state.h"
#include "window/menu.h"
#include "window/private_messages.h"
#include "window/service/dde_service.h"
#include "window/service/service.h"
#include "window/setups.h"
#include "window/watch.h"

namespace {

// Puts the profile's name in the place of the program's in the program's own path.
void FindProfile() {
  MainWindowState& state = MainState;
  GetModuleFileNameA(nullptr, state.ProfilePath, sizeof state.ProfilePath);
  char* name = state.ProfilePath + (BaseName(state.ProfilePath) - state.ProfilePath);
  std::snprintf(name, sizeof state.ProfilePath - static_cast<std::size_t>(name - state.ProfilePath), "%s",
                kProfileName);
  state.ProfileReadOnly = LocateProfile(state.ProfilePath, sizeof state.ProfilePath);
}

void ReadCommandLine(const char* commandLine) {
  const int words = CommandWordCount();
  if (words == 0) ParseCommandLine(commandLine, MainState);
  for (int i = 0; i < words; ++i)
    TakeCommandWord(CommandWord(i), MainState);
  FinishCommandLine(MainState);
}

// What is wrong with the words of the command line, or with standard input; empty: nothing.
std::string CommandFault() {
  MainWindowState& state = MainState;
  if (state.CommandFault.empty() && !state.AskedPlace.empty() && !ParsePlace(state.AskedPlace)) {
    state.CommandFault = "not a place in a file: " + state.AskedPlace;
  }
  if (state.CommandFault.empty() && state.InputIsFile) {
    const FileError error = SpoolInput(state.CommandFile, sizeof state.CommandFile);
    if (error != 0) state.CommandFault = "standard input: " + FileErrorText(error);
  }
  return state.CommandFault;
}

// Each step overlays the ones before it, so that the command line wins.
void SettleOptions(const char* commandLine) {
  MainWindowState& state = MainState;
  FindProfile();
  ReadAdvancedKeys(state.ProfilePath, state);
  ReadCommandLine(commandLine);
  ResetColors(COLORS_WINDOW, ColorTable);
  ResetColors(COLORS_WINDOW, state.DesktopColors);
  ResetColors(COLORS_PRINT, ColorTable);
  if (state.Letter('V') != 'V') LoadDefaults(state);
  if (!state.RefusedSetup.empty()) {
    std::fprintf(stderr, "quorl: the setup name \"%s\" is too long\n", state.RefusedSetup.c_str());
  }
  TellOfUnknownSetup();
  if (state.SetupSection[0] != '\0') LoadSetup(state.SetupSection, nullptr, state);
  ApplyOptionLetters(state, state, state);
}

// The screens may be others than those that the rectangle was saved on.
void FitWindow() {
  const int x = GetSystemMetrics(SM_XVIRTUALSCREEN);
  const int y = GetSystemMetrics(SM_YVIRTUALSCREEN);
  const int width = GetSystemMetrics(SM_CXVIRTUALSCREEN);
  const int height = GetSystemMetrics(SM_CYVIRTUALSCREEN);
  FitWindowTo({x, y, x + width, y + height}, MainState);
}

std::optional<int> Refuse(const char* text, int exitCode) {
  MessageBeep(MB_ICONHAND);
  MessageBoxA(nullptr, text, nullptr, MB_ICONHAND);
  return exitCode;
}

bool RegisterMainClass() {
  MainWindowState& state = MainState;
  state.AppIcon = MakeProgramIcon(state.AppInstance);
  WNDCLASSA windowClass{};
  windowClass.style = CS_DBLCLKS;
  windowClass.lpfnWndProc = MainWindowProc;
  windowClass.hInstance = state.AppInstance;
  windowClass.hIcon = state.AppIcon;
  windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  windowClass.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<ULONG_PTR>(COLOR_BACKGROUND + 1));
  windowClass.lpszClassName = kClassName;
  return RegisterClassA(&windowClass) != 0;
}

int ShowState(int show) {
  if (MainState.Letter('X') != '\0') show = SW_MAXIMIZE;
  if (MainState.Letter('N') != '\0') show = SW_SHOWMINIMIZED;
  return show;
}

}  // namespace

std::optional<int> StartProgram(HINSTANCE instance, HINSTANCE previous, const char* commandLine, int show) {
  MainWindowState& state = MainState;
  state.AppInstance = instance;
  state.WaitCursor = LoadCursorA(nullptr, IDC_WAIT);
  SettleOptions(commandLine);
  if (const std::string fault = CommandFault(); !fault.empty()) {
    std::fprintf(stderr, "quorl: %s\n", fault.c_str());
    return kExitBadWords;
  }
  if (previous == nullptr && !RegisterMainClass()) return Refuse("Cannot register class", kExitNoClass);
  FitWindow();
  constexpr DWORD style = WS_OVERLAPPEDWINDOW | WS_VSCROLL | WS_HSCROLL | WS_CLIPCHILDREN;
  const HWND window =
      CreateWindowExA(0, kClassName, kProgramName, style, state.WindowX, state.WindowY, state.WindowW,
                      state.WindowH, nullptr, BuildMenuBar(), instance, nullptr);
  if (window == nullptr) return Refuse("Cannot create window", kExitNoWindow);
  if (!state.StartsHidden) ShowWindow(window, ShowState(show));
  state.AccelTable = BuildAccelerators();

  const bool serve = state.Letter('D') != '\0';
  if (serve) StartService();
  // A server without a plain file waits for its client, where a plain start asks for a file.
  if (!serve || std::strpbrk(state.CommandFile, "*?") == nullptr) {
    PostMessageA(window, WM_FILE_START, 0, reinterpret_cast<LPARAM>(state.CommandFile));
  }
  if (state.Letter('M') != '\0') PostMessageA(window, WM_COMMAND, IDM_ON_TOP_SET, 0);
  return std::nullopt;
}

int RunMessageLoop() {
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    if (TranslateAcceleratorA(MainState.MainWindow, MainState.AccelTable, &message) != 0) continue;
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  return static_cast<int>(message.wParam);
}

void StopProgram() {
  MainWindowState& state = MainState;
  if (state.DdeState != kDdeIgnoring) DdeStop();
  StopReader();
  UnregisterClassA(kClassName, state.AppInstance);
  if (state.AccelTable != nullptr) DestroyAcceleratorTable(state.AccelTable);
  if (state.AppIcon != nullptr) DestroyIcon(state.AppIcon);
  state.AccelTable = nullptr;
  state.AppIcon = nullptr;
}

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int show) {
  if (const std::optional<int> refused = StartProgram(instance, previous, commandLine, show)) {
    return *refused;
  }
  const int exitCode = RunMessageLoop();
  StopProgram();
  return exitCode;
}
