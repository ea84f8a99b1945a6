// What the parts of the testing library share.
#pragma once

namespace platform_testing {

// Hooks the dialogs and beeps, so that no dialog waits for a user.
void HookDialogs();
void ForgetDialogs();

}  // namespace platform_testing
