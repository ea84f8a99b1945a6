// The service through which other programs drive a running viewer with command strings. It takes commands
// only, and answers whether it took them.
#pragma once

#include <functional>
#include <string_view>

#include "platform/win32.h"
#include "search/search_engine.h"

// What commands reach beside the window's messages.
struct DdeLinks {
  SearchState* search = nullptr;
  std::function<bool()> isBusy;                            // a dialog or a job is up
  std::function<bool(std::string_view section)> setSetup;  // false: it was refused
};

// Registers the service for `window`. Result 1, also when only the registration failed; 0 when the service
// cannot be offered. Both are told in a box.
[[nodiscard]] int DdeStart(HINSTANCE instance, HWND window, const DdeLinks& links);
void DdeStop();
