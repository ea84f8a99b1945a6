// The titles' storage as the window's commands use it: a failure is shown to the user.
#pragma once

// Begins a use of the titles' storage; false when there is no memory for it, after the user has been told.
// Ends with UnlockTitles.
[[nodiscard]] bool TakeTitles(bool reset);
