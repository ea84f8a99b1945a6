#include "platform/win32.h"

// The toolkit delivers the moves of a pressed button to the widget it was pressed in, wherever the pointer
// goes, so there is nothing to ask of it.

namespace {

HWND capturing = nullptr;

}  // namespace

HWND SetCapture(HWND window) {
  const HWND former = capturing;
  capturing = window;
  return former;
}

BOOL ReleaseCapture() {
  capturing = nullptr;
  return TRUE;
}
