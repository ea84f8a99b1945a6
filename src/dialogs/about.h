// The About box: the program's name and version, when it was built, and the libraries that it runs with.
#pragma once

#include "platform/win32.h"

// Shows it. The result of the dialog.
INT_PTR RunAbout(HWND owner, HICON icon);
