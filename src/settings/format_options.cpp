#include "settings/format_options.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "engine/text_format.h"
#include "platform/profile_batch.h"
#include "settings/profile_values.h"

namespace {

constexpr std::size_t kLongestText = 255;
// A code that is none of the three, and sets no bit.
constexpr std::int32_t kNoCode = 3;

std::string WordKey(int format) {
  return "Options" + std::to_string(format);
}

void LoadWord(const char* profile, const char* section, int format, FormatOptions& options) {
  const std::string key = WordKey(format);
  if (ReadProfileText(profile, section, key.c_str(), "", kLongestText).empty()) return;
  options.StoredFlags[format] = static_cast<ViewOptions>(ReadProfileInt(profile, section, key.c_str(), 0));
}

// A negative number counts as a large one.
std::int32_t BoundUnsigned(std::int32_t value, std::int32_t most) {
  return value < 0 ? most : std::min(value, most);
}

std::int8_t BarMode(std::int32_t value) {
  return std::clamp(static_cast<std::int8_t>(value), kBarNever, kBarWhenNeeded);
}

// Splits "face,points". The face ends at the first comma or at a byte outside ASCII.
void LoadFont(const char* profile, const char* section, FormatOptions& options) {
  const std::string text = ReadProfileText(profile, section, "Font", "Courier New,10", kLongestText);
  std::size_t end = 0;
  while (end < text.size() && text[end] != ',' && static_cast<unsigned char>(text[end]) < 128)
    ++end;
  std::fill(std::begin(options.FontFace), std::end(options.FontFace), '\0');
  text.copy(options.FontFace, std::min(end, sizeof options.FontFace - 1));

  const std::size_t comma = text.find(',', end);
  if (comma != std::string::npos) {
    std::size_t digits = 0;
    const std::int32_t points = LeadingNumber(text.substr(comma + 1), &digits);
    if (digits > 0) options.FontPoints = std::clamp(points, 1, 240);
  }
  std::copy(std::begin(options.FontFace), std::end(options.FontFace), options.ViewLogFont.lfFaceName);
  options.ViewLogFont.lfHeight = options.FontPoints;
}

}  // namespace

void ApplyCharCode(FormatOptions& options) {
  const ViewOptions code = options.CharCode == kCodeAscii    ? VO_ASCII
                           : options.CharCode == kCodeEbcdic ? VO_EBCDIC
                                                             : 0;
  const auto apply = [code](ViewOptions& word) { word = (word & ~(VO_ASCII | VO_EBCDIC)) | code; };
  std::for_each(std::begin(options.StoredFlags), std::end(options.StoredFlags), apply);
  apply(options.FormatFlags);
}

void LoadFormat(const char* profile, const char* section, FormatOptions& options) {
  const auto number = [profile, section](const char* key, std::int32_t absent) {
    return ReadProfileInt(profile, section, key, absent);
  };
  for (int format = 0; format < kFormats; ++format)
    LoadWord(profile, section, format, options);
  options.StoredFlags[kFormatText] |= VO_FORMFEED;
  options.FormatIndex = BoundUnsigned(number("Format", kFormatText), kFormats - 1);
  options.FormatFlags = options.StoredFlags[options.FormatIndex];

  options.CharCode = BoundUnsigned(number("CharCode", kCodeAnsi), kNoCode);
  options.LineLength = std::max(number("LineLength", 127), 8);
  TextTabLength = std::clamp(number("TabLength", 8), 1, 255);
  options.VertScroll = BarMode(number("VertScroll", kBarWhenNeeded));
  options.HorzScroll = BarMode(number("HorzScroll", kBarNever));

  LoadFont(profile, section, options);
  options.ViewLogFont.lfWeight = std::clamp(number("FontWeight", 0), 0, 900);
  options.ViewLogFont.lfItalic = static_cast<BYTE>(number("FontItalic", 0) & 0xFF);

  options.EscExit = number("EscExit", 0);
  options.SavePos = number("SavePos", 0);
  options.FrozenColumns = number("FreezeColumns", 0);
  ApplyCharCode(options);
}

void LoadWindowPos(const char* profile, const char* section, FormatOptions& options) {
  const std::string one = std::to_string(CW_USEDEFAULT);
  const std::string absent = one + ',' + one + ',' + one + ',' + one;
  std::string rest = ReadProfileText(profile, section, "WindowPos", absent.c_str(), kLongestText);
  for (std::int32_t* const field : {&options.WindowY, &options.WindowX, &options.WindowH, &options.WindowW}) {
    *field = LeadingNumber(rest);
    const std::size_t comma = rest.find(',');
    rest = comma == std::string::npos ? "" : rest.substr(comma + 1);
  }
}

void WriteFormat(const char* profile, const char* section, const FormatOptions& options, const RECT* window) {
  const auto write = [profile, section](const char* key, std::int64_t value) {
    WriteProfileInt(profile, section, key, value);
  };
  for (int format = 0; format < kFormats; ++format) {
    write(WordKey(format).c_str(), options.StoredFlags[format]);
  }
  write("Format", options.FormatIndex);
  write("CharCode", options.CharCode);
  write("LineLength", options.LineLength);
  write("TabLength", TextTabLength);
  write("VertScroll", options.VertScroll);
  write("HorzScroll", options.HorzScroll);
  write("EscExit", options.EscExit);
  write("SavePos", options.SavePos);
  WriteProfileText(profile, section, "Font",
                   std::string(options.FontFace) + ',' + std::to_string(options.FontPoints));
  write("FontWeight", options.ViewLogFont.lfWeight);
  write("FontItalic", options.ViewLogFont.lfItalic);
  write("FreezeColumns", options.FrozenColumns);
  if (options.SavePos != 0 && window != nullptr) {
    const std::string height = std::to_string(window->bottom - window->top);
    const std::string width = std::to_string(window->right - window->left);
    WriteProfileText(
        profile, section, "WindowPos",
        std::to_string(window->top) + ',' + std::to_string(window->left) + ',' + height + ',' + width);
  }
}

FileError SaveFormat(const char* profile, const char* section, const FormatOptions& options,
                     const RECT* window) {
  return SaveProfile(profile, [&] { WriteFormat(profile, section, options, window); });
}
