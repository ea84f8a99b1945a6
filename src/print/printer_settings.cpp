#include "print/printer_settings.h"

#include <algorithm>
#include <cstring>

#include "platform/profile_batch.h"
#include "settings/profile_values.h"

namespace {

constexpr const char* kDeviceKey = "PrtDevice";
constexpr const char* kSpecVersionKey = "PrtSpecVersion";
constexpr const char* kDriverVersionKey = "PrtDriverVersion";
constexpr const char* kDriverKey = "PrtDriver";
constexpr const char* kOutputKey = "PrtOutput";

// The numbers of a record, each with the bit that tells whether it counts.
struct ModeNumber {
  const char* key;
  short DEVMODEA::*field;
  DWORD bit;
};
constexpr ModeNumber kModeNumbers[] = {
    {"PrtOrientation", &DEVMODEA::dmOrientation, DM_ORIENTATION},
    {"PrtPaperSize", &DEVMODEA::dmPaperSize, DM_PAPERSIZE},
    {"PrtPaperLength", &DEVMODEA::dmPaperLength, DM_PAPERLENGTH},
    {"PrtPaperWidth", &DEVMODEA::dmPaperWidth, DM_PAPERWIDTH},
    {"PrtScale", &DEVMODEA::dmScale, DM_SCALE},
    {"PrtCopies", &DEVMODEA::dmCopies, DM_COPIES},
    {"PrtDefaultSource", &DEVMODEA::dmDefaultSource, DM_DEFAULTSOURCE},
    {"PrtPrintQuality", &DEVMODEA::dmPrintQuality, DM_PRINTQUALITY},
    {"PrtColor", &DEVMODEA::dmColor, DM_COLOR},
    {"PrtDuplex", &DEVMODEA::dmDuplex, DM_DUPLEX},
    {"PrtYResolution", &DEVMODEA::dmYResolution, DM_YRESOLUTION},
    {"PrtTTOption", &DEVMODEA::dmTTOption, DM_TTOPTION},
};

std::string ModeDevice(const DEVMODEA& mode) {
  const auto* const name = reinterpret_cast<const char*>(mode.dmDeviceName);
  return {name, std::find(name, name + sizeof mode.dmDeviceName, '\0')};
}

bool IsEmpty(const DEVMODEA& mode) {
  const DEVMODEA empty{};
  return std::memcmp(&mode, &empty, kDeviceModeBytes) == 0;
}

void WriteMode(const char* profile, const char* section, const ChosenPrinter& printer) {
  const DEVMODEA& mode = *printer.PrinterMode;
  for (const ModeNumber& number : kModeNumbers) {
    if ((mode.dmFields & number.bit) != 0) {
      WriteProfileInt(profile, section, number.key, mode.*number.field);
    } else {
      DeleteProfileKey(profile, section, number.key);
    }
  }
  WriteProfileText(profile, section, kDeviceKey, DeviceName(printer));
  WriteProfileInt(profile, section, kSpecVersionKey, mode.dmSpecVersion);
  WriteProfileInt(profile, section, kDriverVersionKey, mode.dmDriverVersion);
}

DEVMODEA ReadMode(const char* profile, const char* section, const std::string& device) {
  DEVMODEA mode{};
  for (const ModeNumber& number : kModeNumbers) {
    mode.*number.field = static_cast<short>(ReadProfileInt(profile, section, number.key, 0));
    if (mode.*number.field != 0) mode.dmFields |= number.bit;
  }
  const std::string_view fits = WholeCharacters(device, sizeof mode.dmDeviceName - 1);
  fits.copy(reinterpret_cast<char*>(mode.dmDeviceName), fits.size());
  mode.dmSpecVersion = static_cast<WORD>(ReadProfileInt(profile, section, kSpecVersionKey, 0));
  mode.dmDriverVersion = static_cast<WORD>(ReadProfileInt(profile, section, kDriverVersionKey, 0));
  return mode;
}

}  // namespace

const char* PrinterNameBlock::At(WORD offset) const {
  if (offset < sizeof offsets || offset >= sizeof offsets + sizeof texts) return "";
  return texts + (offset - sizeof offsets);
}

PrinterNameBlock MakePrinterNames(std::string_view driver, std::string_view device, std::string_view output) {
  PrinterNameBlock block;
  std::size_t used = 0;
  const auto append = [&](std::string_view name, WORD& offset) {
    offset = static_cast<WORD>(sizeof block.offsets + used);
    const std::string_view fits = WholeCharacters(name.substr(0, name.find('\0')), kMostPrinterName);
    used += fits.copy(block.texts + used, fits.size()) + 1;
  };
  append(driver, block.offsets.wDriverOffset);
  append(device, block.offsets.wDeviceOffset);
  append(output, block.offsets.wOutputOffset);
  return block;
}

std::string DeviceName(const ChosenPrinter& printer) {
  std::string whole;
  if (printer.PrinterNames) whole = printer.PrinterNames->At(printer.PrinterNames->offsets.wDeviceOffset);
  if (!printer.PrinterMode) return whole;
  const std::string device = ModeDevice(*printer.PrinterMode);
  const bool isItsBeginning = WholeCharacters(whole, sizeof(DEVMODEA::dmDeviceName) - 1) == device;
  return device.empty() || isItsBeginning ? whole : device;
}

std::vector<PrinterKey> PrinterKeys() {
  std::vector<PrinterKey> keys;
  for (const ModeNumber& number : kModeNumbers)
    keys.push_back({number.key, false});
  for (const char* key : {kSpecVersionKey, kDriverVersionKey})
    keys.push_back({key, false});
  for (const char* key : {kDeviceKey, kDriverKey, kOutputKey})
    keys.push_back({key, true});
  return keys;
}

FileError SavePrinter(const char* profile, const char* section, const ChosenPrinter& printer) {
  return SaveProfile(profile, [&] {
    if (printer.PrinterMode) WriteMode(profile, section, printer);
    if (!printer.PrinterNames) return;
    const PrinterNameBlock& names = *printer.PrinterNames;
    WriteProfileText(profile, section, kDriverKey, names.At(names.offsets.wDriverOffset));
    WriteProfileText(profile, section, kOutputKey, names.At(names.offsets.wOutputOffset));
  });
}

int LoadPrinter(const char* profile, const char* section, ChosenPrinter& printer) {
  const auto name = [&](const char* key) {
    return ReadProfileText(profile, section, key, "", kMostPrinterName + 1);
  };
  const std::string device = name(kDeviceKey);
  printer.PrinterMode = ReadMode(profile, section, device);
  if (IsEmpty(*printer.PrinterMode)) {
    printer.PrinterMode.reset();
    return 0;
  }
  printer.PrinterMode->dmSize = kDeviceModeBytes;
  printer.PrinterNames = MakePrinterNames(name(kDriverKey), device, name(kOutputKey));
  return 1;
}
