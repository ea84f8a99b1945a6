#include "settings/format_options.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

#include "engine/text_format.h"
#include "platform/profile_batch.h"
#include "settings/profile_values.h"

namespace {

constexpr std::size_t kLongestText = 255;

std::string WordKey(int format) {
  return "Options" + std::to_string(format);
}

void LoadWord(const char* profile, const char* section, int format, FormatOptions& options) {
  const std::string key = WordKey(format);
  if (!ProfileHolds(profile, section, key.c_str())) return;
  options.StoredFlags[format] = static_cast<ViewOptions>(ReadProfileInt(profile, section, key.c_str(), 0));
}

using Reading = FormatNumber::Reading;
constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

// How a number stands in a field of the record.
template <auto Field>
std::int32_t Get(const FormatOptions& options) {
  return options.*Field;
}
template <auto Field>
void Set(FormatOptions& options, std::int32_t value) {
  options.*Field = static_cast<std::remove_reference_t<decltype(options.*Field)>>(value);
}
using Options = FormatOptions;

constexpr FormatNumber kNumbers[] = {
    {"Format", kFormatText, 0, kFormats - 1, Reading::negativeIsLarge, Get<&Options::FormatIndex>,
     Set<&Options::FormatIndex>},
    {"CharCode", kCodeAutomatic, 0, kCodes - 1, Reading::elseAbsent, Get<&Options::CharCode>,
     Set<&Options::CharCode>},
    {"LineLength", 127, 8, kLongestLine, Reading::nearest, Get<&Options::LineLength>,
     Set<&Options::LineLength>},
    {"TabLength", 8, 1, 255, Reading::nearest, [](const Options&) { return TextTabLength; },
     [](Options&, std::int32_t value) { TextTabLength = value; }},
    {"VertScroll", kBarWhenNeeded, kBarNever, kBarWhenNeeded, Reading::lowByte, Get<&Options::VertScroll>,
     Set<&Options::VertScroll>},
    {"HorzScroll", kBarNever, kBarNever, kBarWhenNeeded, Reading::lowByte, Get<&Options::HorzScroll>,
     Set<&Options::HorzScroll>},
    {"EscExit", 0, kLowest, kHighest, Reading::nearest, Get<&Options::EscExit>, Set<&Options::EscExit>},
    {"SavePos", 0, kLowest, kHighest, Reading::nearest, Get<&Options::SavePos>, Set<&Options::SavePos>},
    // The font's text has its place here.
    {"FontWeight", 0, 0, 900, Reading::nearest,
     [](const Options& options) { return static_cast<std::int32_t>(options.ViewLogFont.lfWeight); },
     [](Options& options, std::int32_t value) { options.ViewLogFont.lfWeight = value; }},
    {"FontItalic", 0, -128, 127, Reading::lowByte,
     [](const Options& options) { return std::int32_t{options.ViewLogFont.lfItalic}; },
     [](Options& options, std::int32_t value) { options.ViewLogFont.lfItalic = static_cast<BYTE>(value); }},
    {"FreezeColumns", 0, 0, kMostFrozen, Reading::nearest, Get<&Options::FrozenColumns>,
     Set<&Options::FrozenColumns>},
};
constexpr const char* kNumberBehindFont = "FontWeight";

std::int32_t Bounded(const FormatNumber& number, std::int32_t value) {
  if (number.reading == Reading::lowByte) value = ((value & 0xFF) ^ 0x80) - 0x80;
  if (number.reading == Reading::negativeIsLarge && value < 0) return number.most;
  if (number.reading == Reading::elseAbsent && (value < number.least || value > number.most))
    return number.absent;
  return std::clamp(value, number.least, number.most);
}

// Splits "face,points". The face ends at the first comma.
void LoadFont(const char* profile, const char* section, FormatOptions& options) {
  const std::string text = ReadProfileText(profile, section, "Font", "Courier New,10", kLongestText);
  const std::string_view face = std::string_view(text).substr(0, text.find(','));
  std::fill(std::begin(options.FontFace), std::end(options.FontFace), '\0');
  WholeCharacters(face, sizeof options.FontFace - 1).copy(options.FontFace, sizeof options.FontFace - 1);

  if (face.size() < text.size()) {
    std::size_t digits = 0;
    const std::int32_t points = LeadingNumber(text.substr(face.size() + 1), &digits);
    if (digits > 0) options.FontPoints = std::clamp(points, kLeastPoints, kMostPoints);
  }
  std::copy(std::begin(options.FontFace), std::end(options.FontFace), options.ViewLogFont.lfFaceName);
  options.ViewLogFont.lfHeight = options.FontPoints;
}

void WriteFont(const char* profile, const char* section, const FormatOptions& options) {
  WriteProfileText(profile, section, "Font",
                   std::string(options.FontFace) + ',' + std::to_string(options.FontPoints));
}

void WriteFormat(const char* profile, const char* section, const FormatOptions& options, const RECT* window) {
  for (int format = 0; format < kFormats; ++format)
    WriteProfileInt(profile, section, WordKey(format).c_str(), options.StoredFlags[format]);
  for (const FormatNumber& number : kNumbers) {
    if (std::string_view(number.key) == kNumberBehindFont) WriteFont(profile, section, options);
    WriteProfileInt(profile, section, number.key, number.get(options));
  }
  if (options.SavePos != 0 && window != nullptr) {
    const std::string height = std::to_string(window->bottom - window->top);
    const std::string width = std::to_string(window->right - window->left);
    WriteProfileText(
        profile, section, "WindowPos",
        std::to_string(window->top) + ',' + std::to_string(window->left) + ',' + height + ',' + width);
  }
}

// One side of a rectangle, fitted into the screen's.
void FitSide(LONG from, LONG to, std::int32_t& start, std::int32_t& size) {
  const std::int64_t room = std::max<std::int64_t>(std::int64_t{to} - from, 1);
  const std::int64_t fits = std::min<std::int64_t>(std::max(size, kLeastSide), room);
  start = static_cast<std::int32_t>(std::clamp<std::int64_t>(start, from, from + room - fits));
  size = static_cast<std::int32_t>(fits);
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

ViewOptions OptionsFor(const FormatOptions& options, ViewOptions fileCode) {
  const ViewOptions code = options.CharCode == kCodeAutomatic ? fileCode
                           : options.CharCode == kCodeUtf8    ? VO_UTF8
                           : options.CharCode == kCodeUtf16Le ? VO_UTF16LE
                           : options.CharCode == kCodeUtf16Be ? VO_UTF16BE
                                                              : 0;
  return (options.FormatFlags & ~(VO_UNICODE | VO_AUTOCODE)) | code;
}

std::int32_t CodeInUse(ViewOptions options) {
  switch (options & VO_UNICODE) {
    case VO_UTF8:
      return kCodeUtf8;
    case VO_UTF16LE:
      return kCodeUtf16Le;
    case VO_UTF16BE:
      return kCodeUtf16Be;
    default:
      return (options & VO_EBCDIC) != 0 ? kCodeEbcdic : (options & VO_ASCII) != 0 ? kCodeAscii : kCodeAnsi;
  }
}

std::span<const FormatNumber> FormatNumbers() {
  return kNumbers;
}

void LoadFormat(const char* profile, const char* section, FormatOptions& options) {
  for (int format = 0; format < kFormats; ++format)
    LoadWord(profile, section, format, options);
  options.StoredFlags[kFormatText] |= VO_FORMFEED;
  LoadFont(profile, section, options);
  for (const FormatNumber& number : kNumbers)
    number.set(options, Bounded(number, ReadProfileInt(profile, section, number.key, number.absent)));
  options.FormatFlags = options.StoredFlags[options.FormatIndex];
  ApplyCharCode(options);
}

void LoadWindowPos(const char* profile, const char* section, FormatOptions& options) {
  const auto numbers = ReadProfileNumbers(profile, section, "WindowPos");
  options.WindowY = numbers[0];
  options.WindowX = numbers[1];
  options.WindowH = numbers[2];
  options.WindowW = numbers[3];
  if (options.WindowW > 0 && options.WindowH > 0) return;
  options.WindowX = options.WindowY = options.WindowW = options.WindowH = CW_USEDEFAULT;
}

void FitWindowTo(const RECT& screen, FormatOptions& options) {
  if (options.WindowW == CW_USEDEFAULT) return;
  FitSide(screen.left, screen.right, options.WindowX, options.WindowW);
  FitSide(screen.top, screen.bottom, options.WindowY, options.WindowH);
}

FileError SaveFormat(const char* profile, const char* section, const FormatOptions& options,
                     const RECT* window) {
  return SaveProfile(profile, [&] { WriteFormat(profile, section, options, window); });
}
