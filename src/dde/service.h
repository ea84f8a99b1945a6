// The service through which other programs drive a running viewer with command strings. It is not built
// yet: starting it fails, which the user is told, and the viewer runs on without it.
#pragma once

#include "platform/win32.h"

// Values of DdeState.
inline constexpr int kDdeServing = 0;
inline constexpr int kDdeIgnoring = 2;

// Registers the service for `window`. Result 1; 0 when it cannot be offered.
[[nodiscard]] int DdeStart(HINSTANCE instance, HWND window);
void DdeStop();
