// The Print Shade Selection dialog: the shades of printed lines as numbers.
#pragma once

#include "platform/win32.h"
#include "settings/profile_place.h"

// Runs it on the print shades of ColorTable, which it changes on OK and Save; Save then writes them to the
// profile at `place`. Where that fails the dialog stays, and the shades are in force all the same. The result
// of the dialog: 1 when it was left by OK or Save.
INT_PTR RunPrintShades(HWND owner, const ProfilePlace& place);
