// What the parts of the testing library share.
#pragma once

#include <Qt>

namespace platform_testing {

// Hooks the dialogs and beeps, so that no dialog waits for a user.
void HookDialogs();
void ForgetDialogs();
// The same for dialogs of the program.
void HookProgramDialogs();
void ForgetScripts();

// MK_SHIFT, MK_CONTROL and kAlt as the toolkit has them.
Qt::KeyboardModifiers ToolkitModifiers(int keys);

}  // namespace platform_testing
