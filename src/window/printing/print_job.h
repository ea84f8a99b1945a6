// The one print job that can run at a time: its printer, its status dialog, and how it is ended. While it
// runs, the window paints and its timers tick, but the user cannot reach it. What goes onto pages is settled
// elsewhere.
#pragma once

#include <string>

#include "platform/win32.h"

// Whether a job is under way, from the choice of its printer on.
[[nodiscard]] bool PrintJobIsOn();
// Whether its printer is chosen and its status dialog there.
[[nodiscard]] bool PrintJobIsRunning();
// Whether the user, or the end of the program, wants the job to end.
[[nodiscard]] bool PrintJobIsCanceled();
// The window is to be closed: at once, which cancels the job, or when it has ended.
void CloseBehindPrintJob(bool atOnce);

// What the print dialog is opened with, and what came of it.
struct PrintQuestion {
  bool noDialog = false;  // take the printer that was chosen last, or else the default one
  DWORD flags = 0;        // PD_SELECTION, PD_PAGENUMS and PD_NOSELECTION
  WORD fromPage = 0xFFFF;
  WORD toPage = 0xFFFF;
  bool shown = false;  // answer: the dialog was there, and flags and pages are the user's
};

// Asks for the printer, begins the document and opens the status dialog. The device context, ready for pages;
// null when no job has begun, which the user knows.
[[nodiscard]] HDC StartPrintJob(const std::string& document, PrintQuestion& question);

// The page status of the status dialog. Seldom enough to be called for each page.
void ShowPageStatus(const char* what, std::int32_t page);

// Serves messages, if some time has passed since the last call.
void ServePrintJob();

// Ends the job: the document goes to the printer, or is given up. 0, or why it did not go: an SP_ number, and
// in `reason` the words for it, which may be empty.
[[nodiscard]] int EndPrintJob(bool keep, std::string& reason);

// A box over the main window with its caption, behind a beep; `icon` is that of the box and of the beep.
void ShowPrintBox(const std::string& text, UINT icon);

// Print Setup: the dialog for a printer alone.
LRESULT PrintSetupCommand(UINT id);
