// The Color Selection dialog: a list of the window colors, the system's color dialog behind a button, and a
// small picture of the view that shows at once what was chosen. Works on a copy of the table; OK makes the
// copy the table, and who asked repaints.
#pragma once

#include "platform/win32.h"

// Runs the dialog. Result 1 for OK, 0 for Cancel.
INT_PTR RunColorDialog(HWND owner);
