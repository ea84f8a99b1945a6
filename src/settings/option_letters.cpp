#include "settings/option_letters.h"

namespace {

struct FlagLetter {
  char letter;
  ViewOptions flag;
};
constexpr FlagLetter kFlagLetters[] = {
    {'W', VO_WRAP}, {'O', kUnusedOption}, {'B', VO_BACKGROUND}, {'E', VO_EXPANDTABS}, {'L', VO_FIXEDLEN}};

struct FormatLetter {
  char letter;
  std::int32_t format;
};
constexpr FormatLetter kFormatLetters[] = {{'T', kFormatText}, {'H', kFormatHex}, {'R', kFormatRaw}};

}  // namespace

void ApplyOptionLetters(const CommandLineWords& line, FormatOptions& options, AdvancedKeys& keys) {
  for (const auto& [letter, format] : kFormatLetters) {
    if (line.Letter(letter) == '\0') continue;
    options.FormatIndex = format;
    options.FormatFlags = options.StoredFlags[format];
  }
  for (const auto& [letter, flag] : kFlagLetters) {
    const char typed = line.Letter(letter);
    if (typed == letter) options.FormatFlags |= flag;
    if (typed != letter && typed != '\0') options.FormatFlags &= ~flag;
  }
  const auto setCode = [&options](std::int32_t code) {
    options.CharCode = code;
    ApplyCharCode(options);
  };
  if (line.Letter('A') != '\0') setCode(kCodeAscii);
  if (line.Letter('C') != '\0') setCode(kCodeEbcdic);
  if (line.Letter('U') != '\0') setCode(kCodeUtf8);
  if (line.Letter('Y') != '\0') options.EscExit = 1;
  if (const char recent = line.Letter('S'); recent != '\0') {
    keys.MruFiles = keys.MruSearch = recent == 'S' ? 1 : 0;
  }
}
