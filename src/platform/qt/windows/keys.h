// Turns what the toolkit says of keys into virtual keys and modifiers, and knows nothing of who gets them.
#pragma once

#include <QKeyEvent>

#include "platform/win32.h"

namespace platform_qt {

// The bits kShiftDown, kControlDown, kAltDown of queue.h.
[[nodiscard]] int ModifiersOf(Qt::KeyboardModifiers modifiers);
// MK_SHIFT and MK_CONTROL, and the buttons that are down.
[[nodiscard]] UINT MouseKeysOf(Qt::KeyboardModifiers modifiers, Qt::MouseButtons buttons);

// The virtual key of a key event, 0 when it has none that the program could ask for. Letters and digits go
// by what stands on the key; on a keyboard without Latin letters by the key's place.
[[nodiscard]] int VirtualKeyOf(const QKeyEvent& event);
// The toolkit's key of a virtual key, for the testing library.
[[nodiscard]] int ToolkitKeyOf(int virtualKey);

// Whether the event types a character by way of AltGr, which some servers report as Ctrl+Alt.
[[nodiscard]] bool IsAltGrText(const QKeyEvent& event);

}  // namespace platform_qt
