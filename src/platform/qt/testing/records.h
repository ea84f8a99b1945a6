// What the parts of the testing library share.
#pragma once

#include <Qt>

namespace platform_qt {
class ProgramDialog;
}

namespace platform_testing {

// Hooks the dialogs and beeps, so that no dialog waits for a user.
void HookDialogs();
void ForgetDialogs();
// Begins the script of a dialog of the program.
void RunScript(platform_qt::ProgramDialog& dialog);
void ForgetScripts();
void ForgetDrawing();

// MK_SHIFT, MK_CONTROL and kAlt as the toolkit has them.
Qt::KeyboardModifiers ToolkitModifiers(int keys);

}  // namespace platform_testing
