// Modal dialogs. The toolkit shows them, but the loop behind them is the layer's own, so that posted
// messages, paints and timers of the program go on being served. What they ask is not known here.
#pragma once

#include <QDialog>

#include "platform/win32.h"

namespace platform_qt {

// The widget that a dialog of `owner` (may be null) belongs to.
[[nodiscard]] QWidget* ParentFor(HWND owner);

// Shows the dialog and runs the message loop until it has ended; the answer stands in its result(). A quit
// message ends it as rejected and goes on to the loop outside. `self` is the dialog's own handle, if it has
// one.
void RunModal(QDialog& dialog, HWND owner, HWND self = nullptr);

// Whether a dialog that this one owns, or that nobody owns, keeps the user from it.
[[nodiscard]] bool HasModalOver(HWND dialog);

// Ends the dialogs of a window that is about to go.
void EndModalsOf(HWND owner);

}  // namespace platform_qt
