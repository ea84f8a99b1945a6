#include "window/printing/print_job.h"

#include <chrono>
#include <cstdio>
#include <cstring>

#include "dialogs/print_status.h"
#include "platform/printer.h"
#include "resources/command_ids.h"
#include "window/main_window_state.h"
#include "window/watch.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kServeEvery{20};
constexpr std::chrono::milliseconds kShowEvery{50};
constexpr std::chrono::duration<DWORD, std::milli> kFirstLook{60};

struct PrintJob {
  bool on = false;
  bool AbortFlag = false;
  HWND AbortDialog = nullptr;
  HDC dc = nullptr;
  bool closeAtEnd = false;
  bool exitAtEnd = false;
  Clock::time_point served;
  Clock::time_point shown;
};
PrintJob job;

// The chosen printer as the blocks that PrintDlgA takes and replaces; what came of them is kept at the end.
class PrinterBlocks {
 public:
  PrinterBlocks() {
    const ChosenPrinter& printer = MainState;
    if (printer.PrinterMode) mode = MakeBlock(&*printer.PrinterMode, sizeof(DEVMODEA));
    if (printer.PrinterNames) names = MakeBlock(&*printer.PrinterNames, sizeof(PrinterNameBlock));
  }
  ~PrinterBlocks() { Free(); }
  PrinterBlocks(const PrinterBlocks&) = delete;
  PrinterBlocks& operator=(const PrinterBlocks&) = delete;

  void Free() {
    for (HGLOBAL* const block : {&mode, &names}) {
      if (*block != nullptr) GlobalFree(*block);
      *block = nullptr;
    }
  }

  // The chosen printer becomes that of the blocks.
  void Keep() const {
    ChosenPrinter& printer = MainState;
    printer.PrinterMode.reset();
    printer.PrinterNames.reset();
    if (mode != nullptr) {
      printer.PrinterMode.emplace();
      std::memcpy(&*printer.PrinterMode, GlobalLock(mode), kDeviceModeBytes);
      GlobalUnlock(mode);
    }
    if (names != nullptr) {
      const auto* const block = static_cast<const DEVNAMES*>(GlobalLock(names));
      const auto* const bytes = reinterpret_cast<const char*>(block);
      printer.PrinterNames = MakePrinterNames(bytes + block->wDriverOffset, bytes + block->wDeviceOffset,
                                              bytes + block->wOutputOffset);
      GlobalUnlock(names);
    }
  }

  HGLOBAL mode = nullptr;
  HGLOBAL names = nullptr;

 private:
  static HGLOBAL MakeBlock(const void* bytes, std::size_t count) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, count);
    if (block == nullptr) return nullptr;
    std::memcpy(GlobalLock(block), bytes, count);
    GlobalUnlock(block);
    return block;
  }
};

std::string ErrorNumber(const char* format, DWORD error) {
  char text[160];
  std::snprintf(text, sizeof text, format, static_cast<unsigned long>(error));
  return text;
}

BOOL CALLBACK PrintAbortProc(HDC /*dc*/, int /*error*/) {
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    if (message.message == WM_QUIT) {
      job.AbortFlag = true;
      PostQuitMessage(static_cast<int>(message.wParam));
      break;
    }
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  job.served = Clock::now();
  return job.AbortFlag ? FALSE : TRUE;
}

void CancelPrintJob() {
  job.AbortFlag = true;
  job.AbortDialog = nullptr;
  GiveUpWatched();
}

PRINTDLGA DialogRecord(const PrinterBlocks& blocks, DWORD flags) {
  PRINTDLGA dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = MainState.MainWindow;
  dialog.hDevMode = blocks.mode;
  dialog.hDevNames = blocks.names;
  dialog.Flags = flags;
  dialog.nMinPage = 0;
  dialog.nMaxPage = 65535;
  return dialog;
}

// Opens the dialog, or asks for the default printer, and keeps the blocks that come of it.
bool RunDialogOver(PrinterBlocks& blocks, PRINTDLGA& dialog) {
  const bool chosen = PrintDlgA(&dialog) != FALSE;
  blocks.mode = dialog.hDevMode;
  blocks.names = dialog.hDevNames;
  return chosen;
}

HDC StoredPrinter() {
  const ChosenPrinter& printer = MainState;
  if (!printer.PrinterMode || !printer.PrinterNames) return nullptr;
  const PrinterNameBlock& names = *printer.PrinterNames;
  return CreateDCA(names.At(names.offsets.wDriverOffset), names.At(names.offsets.wDeviceOffset),
                   names.At(names.offsets.wOutputOffset), &*printer.PrinterMode);
}

HDC DefaultPrinter() {
  PrinterBlocks blocks;
  blocks.Free();
  PRINTDLGA dialog = DialogRecord(blocks, PD_RETURNDC | PD_RETURNDEFAULT);
  if (!RunDialogOver(blocks, dialog)) return nullptr;
  blocks.Keep();
  return dialog.hDC;
}

// A command that says itself what it prints asks for the printer alone.
HDC AskForPrinter(PrintQuestion& question) {
  PrinterBlocks blocks;
  const DWORD range = question.noDialog ? PD_PRINTSETUP : question.flags;
  PRINTDLGA dialog = DialogRecord(blocks, range | PD_RETURNDC | PD_USEDEVMODECOPIES);
  dialog.nFromPage = question.fromPage;
  dialog.nToPage = question.toPage;
  if (!RunDialogOver(blocks, dialog)) {
    if (const DWORD error = CommDlgExtendedError(); error != 0) {
      ShowPrintBox(ErrorNumber("A printer definition changed or is invalid [%lX].\n\n"
                               "Use File/Print Setup to pick a new printer.",
                               error),
                   MB_ICONHAND);
    }
    return nullptr;
  }
  blocks.Keep();
  if (!question.noDialog) {
    question.shown = true;
    question.flags = dialog.Flags;
    question.fromPage = dialog.nFromPage;
    question.toPage = dialog.nToPage;
  }
  return dialog.hDC;
}

std::string PrinterText() {
  const ChosenPrinter& printer = MainState;
  if (!printer.PrinterNames) return "on the (unknown printer) on (unknown)";
  const PrinterNameBlock& names = *printer.PrinterNames;
  return std::string("on the ") + names.At(names.offsets.wDeviceOffset) + " on " +
         names.At(names.offsets.wOutputOffset);
}

// The printer may not answer for a while, so that the status dialog would stand there empty.
void ShowDialogAtOnce() {
  const Clock::time_point until = Clock::now() + kFirstLook;
  while (Clock::now() < until && PrintAbortProc(job.dc, 0) != FALSE) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, kFirstLook.count() / 4, QS_ALLINPUT);
  }
}

// The job's status dialog and document. 1, or the number of the failure.
int BeginDocument(const std::string& document) {
  DOCINFOA info{};
  info.cbSize = sizeof info;
  info.lpszDocName = document.c_str();
  const int begun = StartDocA(job.dc, &info);
  return job.AbortFlag && begun <= 0 ? SP_USERABORT : begun;
}

// Ends a job that has not begun its pages, and tells why.
HDC Refuse(const char* text) {
  std::string reason;
  static_cast<void>(EndPrintJob(false, reason));
  ShowPrintBox(reason.empty() ? text : std::string(text) + "\n\n" + reason, MB_ICONHAND);
  return nullptr;
}

}  // namespace

bool PrintJobIsOn() {
  return job.on;
}

bool PrintJobIsRunning() {
  return job.dc != nullptr;
}

bool PrintJobIsCanceled() {
  return job.AbortFlag;
}

void CloseBehindPrintJob(bool atOnce) {
  (atOnce ? job.closeAtEnd : job.exitAtEnd) = true;
  const HWND dialog = job.AbortDialog;
  if (!atOnce) return;
  CancelPrintJob();
  if (dialog != nullptr) DestroyWindow(dialog);
}

void ShowPrintBox(const std::string& text, UINT icon) {
  char caption[kPathBytes + 64];
  GetWindowTextA(MainState.MainWindow, caption, static_cast<int>(sizeof caption));
  MessageBeep(icon);
  MessageBoxA(MainState.MainWindow, text.c_str(), caption, MB_OK | icon);
}

HDC StartPrintJob(const std::string& document, PrintQuestion& question) {
  job = {};
  job.on = true;
  if (question.noDialog) {
    job.dc = StoredPrinter();
    if (job.dc == nullptr) job.dc = DefaultPrinter();
  }
  if (job.dc == nullptr) job.dc = AskForPrinter(question);
  if (job.dc == nullptr) {
    job.on = false;
    return nullptr;
  }
  // The dialog comes in front of the document, so that the wait for a printer can be ended by it.
  if (SetAbortProc(job.dc, PrintAbortProc) < 1) return Refuse("Cannot set abort procedure!");
  job.AbortDialog =
      StartPrintStatus(MainState.MainWindow, "Printing " + document, PrinterText(), CancelPrintJob);
  if (job.AbortDialog == nullptr) return Refuse("Cannot create information window!");
  EnableWindow(MainState.MainWindow, FALSE);
  ShowDialogAtOnce();
  const int begun = BeginDocument(document);
  if (begun == SP_USERABORT) {
    std::string reason;
    static_cast<void>(EndPrintJob(false, reason));
    return nullptr;
  }
  return begun > 0 ? job.dc : Refuse("Cannot initialize document printing!");
}

void ShowPageStatus(const char* what, std::int32_t page) {
  const Clock::time_point now = Clock::now();
  if (job.AbortDialog == nullptr || now - job.shown < kShowEvery) return;
  job.shown = now;
  ShowPrintStatus(job.AbortDialog, std::string(what) + " page " + std::to_string(page));
}

void ServePrintJob() {
  if (Clock::now() - job.served >= kServeEvery) PrintAbortProc(job.dc, 0);
}

int EndPrintJob(bool keep, std::string& reason) {
  const int ended = job.dc == nullptr ? 1 : keep ? EndDoc(job.dc) : AbortDoc(job.dc);
  reason = PrinterErrorText(job.dc);
  EnableWindow(MainState.MainWindow, TRUE);
  DeleteDC(job.dc);
  if (job.AbortDialog != nullptr) DestroyWindow(job.AbortDialog);
  SetFocus(MainState.MainWindow);
  const PrintJob over = job;
  job = {};
  if (over.exitAtEnd) PostMessageA(MainState.MainWindow, WM_COMMAND, IDM_EXIT, 0);
  if (over.closeAtEnd) PostMessageA(MainState.MainWindow, WM_CLOSE, 0, 0);
  return ended > 0 || over.AbortFlag ? 0 : ended;
}

LRESULT PrintSetupCommand(UINT /*id*/) {
  if (PrintJobIsOn()) return 0;
  PrinterBlocks blocks;
  const bool stored = blocks.mode != nullptr || blocks.names != nullptr;
  PRINTDLGA dialog = DialogRecord(blocks, PD_PRINTSETUP | PD_USEDEVMODECOPIES);
  bool chosen = RunDialogOver(blocks, dialog);
  if (!chosen && CommDlgExtendedError() != 0 && stored) {
    blocks.Free();
    dialog = DialogRecord(blocks, PD_PRINTSETUP | PD_USEDEVMODECOPIES);
    chosen = RunDialogOver(blocks, dialog);
    blocks.Keep();
  }
  if (chosen) {
    blocks.Keep();
  } else if (const DWORD error = CommDlgExtendedError(); error != 0) {
    ShowPrintBox(ErrorNumber("Common dialog error: 0x%lX", error), MB_ICONHAND);
  }
  return chosen ? 1 : 0;
}
