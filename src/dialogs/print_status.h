// The status dialog of a print job, beside the window: what is printed where, how far the job is, and a
// button that ends it.
#pragma once

#include <string>

#include "platform/win32.h"

// Called when the user ends the job; the dialog goes then by itself.
using PrintCanceled = void (*)();

// Null when the dialog could not be made. Texts are UTF-8.
[[nodiscard]] HWND StartPrintStatus(HWND owner, const std::string& document, const std::string& printer,
                                    PrintCanceled canceled);

void ShowPrintStatus(HWND dialog, const std::string& status);
