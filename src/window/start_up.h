// The program from its entry to its end: the options in their fixed order, the one window, the message loop,
// and the way down. The parts can be run one by one, so that a test or a tool can drive the loop itself.
#pragma once

#include <optional>

#include "platform/win32.h"

inline constexpr int kExitNoClass = -1;
inline constexpr int kExitNoWindow = -2;
inline constexpr int kExitBadWords = 2;

// Everything up to the first message of the loop. `commandLine` counts only where the system hands over no
// words of its own. The exit code when the program cannot start, after the user has been told.
std::optional<int> StartProgram(HINSTANCE instance, HINSTANCE previous, const char* commandLine, int show);

// Runs until WM_QUIT. Result: its exit code.
int RunMessageLoop();

// What remains to be done after the loop.
void StopProgram();

// The program's entry: all three. Declared by the system's header where that has one.
int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int show);
