// The help book, as commands and the Help buttons of dialogs ask for it.
#pragma once

// Contexts: places in the book.
inline constexpr int kHelpContents = 16;
inline constexpr int kHelpKeyboard = 32;
inline constexpr int kHelpColors = 128;
inline constexpr int kHelpFreezeColumns = 192;
inline constexpr int kHelpSaveOptions = 224;

// Opens the help book at a place. There is no book yet, so that it cannot start: a beep.
void ShowHelp(int context);
