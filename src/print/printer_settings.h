// The printer that the user chose, and how it is to print: the records of Win32 by value, each of which may
// be absent, and their keys in the profile. What a driver keeps beyond them is not stored. Nothing here asks
// whether there is such a printer.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file.h"
#include "platform/win32.h"

// Bytes of the form of DEVMODEA that is stored, its dmSize.
inline constexpr std::size_t kDeviceModeBytes = 148;
static_assert(offsetof(DEVMODEA, dmPanningWidth) == kDeviceModeBytes);

inline constexpr std::size_t kMostPrinterName = 1023;  // bytes of each of the three names

// The names of a printer: a DEVNAMES with room for its texts behind it.
struct PrinterNameBlock {
  DEVNAMES offsets{};
  char texts[3 * (kMostPrinterName + 1)] = {};

  // The zero-terminated text at one of the offsets; empty for an offset outside the block.
  [[nodiscard]] const char* At(WORD offset) const;
};
static_assert(offsetof(PrinterNameBlock, texts) == sizeof(DEVNAMES));

// The block of three names, each cut behind a whole character where it does not fit.
[[nodiscard]] PrinterNameBlock MakePrinterNames(std::string_view driver, std::string_view device,
                                                std::string_view output);

// Without both, the system's default printer is meant.
struct ChosenPrinter {
  std::optional<DEVMODEA> PrinterMode;
  std::optional<PrinterNameBlock> PrinterNames;
};

// The whole name of the printer, UTF-8. dmDeviceName holds 31 bytes of it at most; where that is the
// beginning of the device name of PrinterNames, this is what counts.
[[nodiscard]] std::string DeviceName(const ChosenPrinter& printer);

// The profile keys of the group.
struct PrinterKey {
  const char* key;
  bool isText;
};
[[nodiscard]] std::vector<PrinterKey> PrinterKeys();

// Writes what there is of the printer. The key of a field whose bit in dmFields is clear is deleted. 0, or
// why it failed; without a printer nothing is written, which is no failure.
[[nodiscard]] FileError SavePrinter(const char* profile, const char* section, const ChosenPrinter& printer);

// Reads the printer. 1; or 0 when the section names none: then there is no PrinterMode, and PrinterNames are
// left alone. A field that is 0 or absent has no bit in dmFields.
int LoadPrinter(const char* profile, const char* section, ChosenPrinter& printer);
