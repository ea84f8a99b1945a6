#include "setups/profile_keys.h"

#include <cstdint>

#include "print/page_setup.h"
#include "print/printer_settings.h"
#include "settings/advanced_keys.h"
#include "settings/colors.h"
#include "settings/format_options.h"
#include "settings/reading_options.h"
#include "settings/recent_lists.h"

namespace {

using Keys = std::vector<ProfileKey>;

std::string Number(std::int64_t number) {
  return std::to_string(number);
}

std::string Range(std::int64_t least, std::int64_t most) {
  if (least < 0) return "0: no; else: yes";  // a switch takes any number
  return Number(least) + " to " + Number(most);
}

void AddAdvancedKeys(Keys& keys) {
  constexpr const char* kSection = "Quorl Setup";
  const AdvancedKeys initial;
  keys.push_back({kSection, "MasterProfile", "1: yes; else: no", "no"});
  for (const AdvancedKey& key : kAdvancedKeys)
    keys.push_back({kSection, key.key, Range(key.least, key.most), Number(initial.*key.field)});
  const auto most = static_cast<std::int64_t>(sizeof initial.DebugFileName) - 1;
  keys.push_back({kSection, "DebugFileName", "up to " + Number(most) + " bytes", "empty"});
  keys.push_back({kSection, "DeleteMenuN", "N from 1 to 6: up to 31 bytes", "empty"});
}

void AddFormatKeys(Keys& keys) {
  constexpr const char* kSection = "Quorl";
  FormatOptions initial;
  initial.StoredFlags[kFormatText] |= VO_FORMFEED;
  ApplyCharCode(initial);
  for (int format = 0; format < kFormats; ++format)
    keys.push_back(
        {kSection, "Options" + Number(format), "a sum of bits", Number(initial.StoredFlags[format])});
  for (const FormatNumber& number : FormatNumbers())
    keys.push_back({kSection, number.key, Range(number.least, number.most), Number(number.absent)});
  keys.push_back({kSection, "Font", "face, points from " + Range(kLeastPoints, kMostPoints),
                  std::string(initial.FontFace) + "," + Number(initial.FontPoints)});
  keys.push_back({kSection, "WindowPos", "top, left, height, width", "the desktop's choice"});
}

void AddReadingKeys(Keys& keys) {
  for (const ReadingKey& key : kReadingKeys)
    keys.push_back({kReadingSection, key.key, Range(-1, 1), Number(ReadingOptions{}.*key.field)});
}

void AddColorKeys(Keys& keys) {
  for (const ColorSlotInfo& slot : kColorSlotInfos) {
    const bool systems = slot.systemColor != kNoSystemColor;
    keys.push_back(
        {"Quorl Colors", slot.key, Range(0, kMostColor), systems ? "the desktop's" : Number(slot.value)});
  }
}

void AddPrintKeys(Keys& keys) {
  const PageSetup initial;
  keys.push_back({"Page Setup", "PrintOptions", "a sum of bits", Number(initial.PrintOptions)});
  keys.push_back({"Page Setup", "PageMargins", "top, left, right, bottom: each " + Range(0, kMostMargin),
                  Number(initial.MarginTop) + "," + Number(initial.MarginLeft) + "," +
                      Number(initial.MarginRight) + "," + Number(initial.MarginBottom)});
  for (const PrinterKey& key : PrinterKeys())
    keys.push_back({"Print Setup", key.key, key.isText ? "a name" : "a number", "the printer's own"});
}

void AddLists(Keys& keys) {
  const std::string strings = "0 to " + Number(kRecentStrings);
  const std::string longest = "up to " + Number(kSearchKeyBytes) + " bytes";
  keys.push_back({"Titles", "Titles", "0 to 15", "0"});
  keys.push_back({"Titles", "TitleN", "up to 512 characters", "empty"});
  keys.push_back({"MRU Files", "FileN", "N from 1 to " + Number(kRecentFiles) + ": a path", "none"});
  keys.push_back({"MRU Search", "Texts", strings, "0"});
  keys.push_back({"MRU Search", "TextN", longest, "empty"});
  keys.push_back({"MRU Search", "Hexs", strings, "0"});
  keys.push_back({"MRU Search", "HexN", longest + ", in hex", "empty"});
  keys.push_back({"Setup List", "SetupN", "a name of up to 56 bytes", "the list ends"});
  keys.push_back({"Setup: NAME", "SaveOptions", "a sum of bits", "all groups"});
}

}  // namespace

std::vector<ProfileKey> ProfileKeys() {
  Keys keys;
  AddAdvancedKeys(keys);
  AddFormatKeys(keys);
  AddReadingKeys(keys);
  AddColorKeys(keys);
  AddPrintKeys(keys);
  AddLists(keys);
  return keys;
}
