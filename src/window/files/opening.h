// The roads by which a file comes into the window, and the one by which it leaves. All of them end in
// OpenFileInView, which puts the window in order for the file; the bytes are read later, by the loads that
// it posts.
#pragma once

#include <string>

#include "platform/win32.h"

// WM_FILE_START: opens the first file, or asks; ends the program when the user gives up. Result 1 or 0.
LRESULT StartWithFile(const char* name);

// WM_FILE_TRY: opens the file that `name` means, if it can be found; else asks, if `ask`. Result 1 when a
// file was opened or chosen.
LRESULT TryFile(const char* name, bool ask);

// WM_FILE_OPEN: makes `name` the file of the view. It is not tested whether it can be read: if it cannot,
// the load shows the error page. Result 0.
LRESULT OpenFileInView(const char* name);

// WM_DROPFILES: opens the first of the files that were dropped on the window. Result 0.
LRESULT OpenDropped(HDROP drop);

// The commands. The Open dialog's result is 1 when it was accepted.
LRESULT OpenDialogCommand(UINT id);
LRESULT OpenRecentCommand(UINT id);
LRESULT CloseFileCommand(UINT id);

// The filters of the Open dialog: every file, and the pattern `base`; pairs of name and pattern, each ended
// by a NUL, and one more NUL.
[[nodiscard]] std::string OpenFilters(const char* base);
