// The table behind GetSysColor. It holds a plain light scheme until the toolkit, when it comes up, fills it
// from the desktop's palette; so the libraries without a toolkit have colors too.
#pragma once

#include "platform/win32.h"

void SetSystemColor(int index, COLORREF color);
