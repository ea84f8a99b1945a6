// The Display Formatting dialog: how files are shown. A font or colors that the user chooses from it are in
// force at once, and stay when it is cancelled; all else takes effect with OK or Save.
#pragma once

#include <functional>
#include <string>

#include "platform/win32.h"
#include "settings/format_options.h"
#include "settings/profile_place.h"

// What the dialog needs of the main window.
struct FormatActions {
  // The rectangle of the main window.
  std::function<RECT()> window;
  // Asks for a font; 0 when the user gave up.
  std::function<int(HWND owner)> chooseFont;
  // The font in use, in words.
  std::function<std::string()> fontInUse;
};

// Runs the dialog on the options. The word of the format in use becomes the stored one at once; the tab
// length is TextTabLength. With `showProfile` it tells where the profile is. Result 1 for OK and Save; 0 when
// the user gave up.
INT_PTR RunFormatOptions(HWND owner, FormatOptions& options, const ProfilePlace& place, bool showProfile,
                         const FormatActions& actions);
