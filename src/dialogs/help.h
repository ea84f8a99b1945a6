// The help book, as commands and the Help buttons of dialogs ask for it.
#pragma once

// Contexts: places in the book.
inline constexpr int kHelpContents = 16;
inline constexpr int kHelpKeyboard = 32;
inline constexpr int kHelpFormatOptions = 96;
inline constexpr int kHelpPageSetup = 112;  // and the shades
inline constexpr int kHelpColors = 128;
inline constexpr int kHelpFreezeColumns = 192;
inline constexpr int kHelpSaveOptions = 224;

// Opens the help book at a place; a beep when it cannot be opened.
void ShowHelp(int context);

// Opens it at the page that tells how to use it.
void ShowHelpOnHelp();

// Puts it away.
void CloseHelp();
