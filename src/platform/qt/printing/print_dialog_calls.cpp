// PrintDlgA: the records of Win32, to and from the dialog.
#include <algorithm>
#include <cstring>
#include <string_view>

#include "platform/qt/base/unknown.h"
#include "platform/qt/printing/print_dialog.h"
#include "platform/qt/printing/printers.h"
#include "platform/qt/windows/modal.h"

namespace platform_qt {

using namespace platform_printing;

namespace {

constexpr int kDefaultPatienceMs = 3000;
constexpr std::size_t kModeBytes = offsetof(DEVMODEA, dmPanningWidth);

DWORD& ExtendedError() {
  static DWORD error = 0;
  return error;
}

PrinterChoice ReadNames(HGLOBAL block) {
  if (block == nullptr) {
    return {};
  }
  const auto* const names = static_cast<const DEVNAMES*>(GlobalLock(block));
  const auto* const bytes = reinterpret_cast<const char*>(names);
  const PrinterChoice choice = {bytes + names->wDriverOffset, bytes + names->wDeviceOffset,
                                bytes + names->wOutputOffset};
  GlobalUnlock(block);
  return choice;
}

DEVMODEA ReadMode(HGLOBAL block) {
  DEVMODEA mode{};
  if (block != nullptr) {
    const void* const bytes = GlobalLock(block);
    std::memcpy(&mode, bytes, kModeBytes);
    GlobalUnlock(block);
  }
  return mode;
}

void Replace(HGLOBAL& block, const void* bytes, std::size_t count) {
  if (block != nullptr) {
    GlobalFree(block);
  }
  block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, count);
  if (block != nullptr) {
    std::memcpy(GlobalLock(block), bytes, count);
    GlobalUnlock(block);
  }
}

void StorePrinter(const PrinterChoice& printer, DEVMODEA mode, PRINTDLGA& dialog) {
  // The field holds what fits of the name, whole characters.
  std::memset(mode.dmDeviceName, 0, sizeof mode.dmDeviceName);
  std::size_t length = std::min(printer.device.size(), sizeof mode.dmDeviceName - 1);
  while (length < printer.device.size() &&
         (static_cast<unsigned char>(printer.device[length]) & 0xC0) == 0x80) {
    --length;
  }
  std::memcpy(mode.dmDeviceName, printer.device.data(), length);
  mode.dmSize = kModeBytes;
  Replace(dialog.hDevMode, &mode, sizeof mode);

  DEVNAMES names{};
  std::string texts;
  const auto append = [&texts](const std::string& text) {
    const auto offset = static_cast<WORD>(sizeof(DEVNAMES) + texts.size());
    texts += text + '\0';
    return offset;
  };
  names.wDriverOffset = append(printer.driver);
  names.wDeviceOffset = append(printer.device);
  names.wOutputOffset = append(printer.output);
  std::string block(reinterpret_cast<const char*>(&names), sizeof names);
  block += texts;
  Replace(dialog.hDevNames, block.data(), block.size());
}

// The context of the printer that the record names.
HDC ContextOf(const PRINTDLGA& dialog) {
  const PrinterChoice printer = ReadNames(dialog.hDevNames);
  const DEVMODEA mode = ReadMode(dialog.hDevMode);
  return CreateDCA(printer.driver.c_str(), printer.device.c_str(), printer.output.c_str(), &mode);
}

BOOL ChooseDefault(PRINTDLGA& dialog) {
  const std::vector<PrintQueue> queues = ListPrintQueues(kDefaultPatienceMs);
  const auto queue =
      std::find_if(queues.begin(), queues.end(), [](const PrintQueue& one) { return one.isDefault; });
  if (queue == queues.end()) {
    ExtendedError() = PDERR_NODEFAULTPRN;
    return FALSE;
  }
  StorePrinter({kQueueDriver, queue->name, PrintServer()}, DEVMODEA{}, dialog);
  return TRUE;
}

void SetUpRange(PrintDialog& shown, const PRINTDLGA& dialog) {
  shown.OfferSelection((dialog.Flags & PD_NOSELECTION) == 0 && (dialog.Flags & PD_SELECTION) != 0);
  shown.SetPages(dialog.nFromPage, dialog.nToPage, dialog.nMinPage, dialog.nMaxPage);
}

void StoreRange(const PrintDialog& shown, PRINTDLGA& dialog) {
  dialog.Flags &= ~(PD_SELECTION | PD_PAGENUMS);
  if (shown.ChosenRange() == PrintDialog::Range::selection) {
    dialog.Flags |= PD_SELECTION;
  } else if (shown.ChosenRange() == PrintDialog::Range::pages) {
    dialog.Flags |= PD_PAGENUMS;
    dialog.nFromPage = static_cast<WORD>(shown.FromPage());
    dialog.nToPage = static_cast<WORD>(shown.ToPage());
  }
}

BOOL Ask(PRINTDLGA& dialog) {
  const bool ranges = (dialog.Flags & PD_PRINTSETUP) == 0;
  PrintDialog shown(ParentFor(dialog.hwndOwner), ranges);
  DEVMODEA mode = ReadMode(dialog.hDevMode);
  shown.SetMode(mode);
  shown.SetPrinter(ReadNames(dialog.hDevNames));
  if (ranges) {
    SetUpRange(shown, dialog);
  }
  RunModal(shown, dialog.hwndOwner);
  if (shown.result() != QDialog::Accepted) {
    return FALSE;
  }
  shown.TakeMode(mode);
  StorePrinter(shown.ChosenPrinter(), mode, dialog);
  if (ranges) {
    StoreRange(shown, dialog);
  }
  return TRUE;
}

}  // namespace

}  // namespace platform_qt

using namespace platform_qt;

BOOL PrintDlgA(PRINTDLGA* dialog) {
  ReportUnknownBits("PrintDlgA", dialog->Flags,
                    PD_SELECTION | PD_PAGENUMS | PD_NOSELECTION | PD_PRINTSETUP | PD_RETURNDC |
                        PD_RETURNDEFAULT | PD_USEDEVMODECOPIES);
  ExtendedError() = 0;
  const bool chosen =
      ((dialog->Flags & PD_RETURNDEFAULT) != 0 ? ChooseDefault(*dialog) : Ask(*dialog)) != FALSE;
  if (chosen && (dialog->Flags & PD_RETURNDC) != 0) {
    dialog->hDC = ContextOf(*dialog);
  }
  return chosen ? TRUE : FALSE;
}

DWORD CommDlgExtendedError() {
  return ExtendedError();
}
