#include "platform/posix/oem.h"

#include <iconv.h>

#include <algorithm>
#include <cstring>

#include "platform/cells.h"
#include "platform/posix/user_locale.h"
#include "platform/posix/windows_1252.h"

namespace {

constexpr const char* kDefaultPage = "CP437";
constexpr std::uint8_t kNoStandIn = '?';

// Locales by language, or by language and country where countries differ; the longer name stands first.
struct LocalePage {
  std::string_view locale;
  const char* page;
};

constexpr LocalePage kLocalePages[] = {
    {"en_AU", "CP850"}, {"en_GB", "CP850"}, {"en_IE", "CP850"}, {"en_NZ", "CP850"}, {"en_ZA", "CP850"},
    {"en_CA", "CP850"}, {"fr_CA", "CP850"}, {"en", "CP437"},    {"de", "CP850"},    {"fr", "CP850"},
    {"es", "CP850"},    {"it", "CP850"},    {"pt", "CP850"},    {"nl", "CP850"},    {"da", "CP850"},
    {"sv", "CP850"},    {"nb", "CP850"},    {"nn", "CP850"},    {"no", "CP850"},    {"fi", "CP850"},
    {"is", "CP850"},    {"ca", "CP850"},    {"eu", "CP850"},    {"gl", "CP850"},    {"ga", "CP850"},
    {"id", "CP850"},    {"ms", "CP850"},    {"pl", "CP852"},    {"cs", "CP852"},    {"sk", "CP852"},
    {"hu", "CP852"},    {"ro", "CP852"},    {"hr", "CP852"},    {"sl", "CP852"},    {"sq", "CP852"},
    {"bs", "CP852"},    {"sr", "CP855"},    {"ru", "CP866"},    {"uk", "CP866"},    {"be", "CP866"},
    {"bg", "CP866"},    {"mk", "CP866"},    {"el", "CP737"},    {"tr", "CP857"},    {"az", "CP857"},
    {"he", "CP862"},    {"iw", "CP862"},    {"ar", "CP864"},    {"et", "CP775"},    {"lv", "CP775"},
    {"lt", "CP775"},
};

// Runs of characters with one stand-in each, from `first` on.
struct StandInRun {
  char32_t first;
  std::string_view letters;
};

constexpr StandInRun kStandInRuns[] = {
    {0x0100,
     "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIiIiJjKkkLlLlLlLlLlNnNnNnnNnOoOoOoOoRrRrRrSsSsSsSsTtTtT"
     "t"
     "UuUuUuUuUuUuWwYyYZzZzZzs"},
    {0x0388, "EHI?O?YO"},
    {0x0390, "iABGDEZHTIKLMNXOPR?STYFXPOIYaehiyabgdezhtiklmnxoprsstyfxpoiyoyo"},
    {0x0400,
     "EEDGESIIJLNCKIUDABVGDEZZIJKLMNOPRSTUFHCCSS\"Y'EUAabvgdezzijklmnoprstufhccss\"y'eua"
     "eedgesiijlnckiud"},
};

struct StandIn {
  char32_t character;
  std::uint8_t byte;
};

constexpr StandIn kStandIns[] = {
    {0x0386, 'A'},  {0x03BC, 0xB5}, {0x0490, 'G'},  {0x0491, 'g'},  {0x02C7, '^'},  {0x02D8, '^'},
    {0x02D9, 0xB7}, {0x02DB, 0xB8}, {0x02DD, '"'},  {0x2015, 0x97}, {0x2017, '='},  {0x2032, '\''},
    {0x2033, '"'},  {0x207F, 'n'},  {0x20A7, 'P'},  {0x2116, 'N'},  {0x2126, 'O'},  {0x2190, '<'},
    {0x2192, '>'},  {0x2202, 'd'},  {0x2211, 'S'},  {0x2212, '-'},  {0x2215, '/'},  {0x2219, 0xB7},
    {0x221A, 'v'},  {0x221E, '8'},  {0x2229, 'n'},  {0x2248, '~'},  {0x2260, '='},  {0x2261, '='},
    {0x2264, '<'},  {0x2265, '>'},  {0x2302, 0x7F}, {0x2310, 0xAC}, {0x2320, '('},  {0x2321, ')'},
    {0x2500, '-'},  {0x2502, '|'},  {0x2550, '='},  {0x2551, '|'},  {0x2580, 0xAF}, {0x2584, '_'},
    {0x2588, '#'},  {0x258C, '|'},  {0x2590, '|'},  {0x2591, ':'},  {0x2592, '%'},  {0x2593, '#'},
    {0x25A0, 0x95}, {0x25CA, 'o'},
};

// ASCII for the upper half of Windows-1252, from 0x80 on.
constexpr std::string_view kAsciiOfUpper =
    "E?,f\"._+^%S<O?Z?"
    "?''\"\"*--~Ts>o?zY"
    " !cLcY|\x15\"ca<--r_o+23'u\x14.,1o>___?"
    "AAAAAAACEEEEIIIIDNOOOOOxOUUUUY_saaaaaaaceeeeiiiidnooooo:ouuuuy_y";
static_assert(kAsciiOfUpper.size() == 128);

std::uint8_t StandInFor(char32_t character) {
  for (const StandIn& entry : kStandIns) {
    if (entry.character == character) {
      return entry.byte;
    }
  }
  for (const StandInRun& run : kStandInRuns) {
    if (character >= run.first && character - run.first < run.letters.size()) {
      return static_cast<std::uint8_t>(run.letters[character - run.first]);
    }
  }
  // All other lines and corners of boxes.
  return character >= 0x2500 && character <= 0x257F ? std::uint8_t{'+'} : kNoStandIn;
}

std::uint8_t Windows1252Of(char32_t character) {
  for (int byte = 0; byte < 256; ++byte) {
    if (UnicodeOfWindows1252(static_cast<std::uint8_t>(byte)) == character) {
      return static_cast<std::uint8_t>(byte);
    }
  }
  return StandInFor(character);
}

// A table that is filled on first use, for the page of the user's locale.
template <void (*Fill)(const char*, std::uint8_t (&)[256])>
const std::uint8_t* LocaleTable() {
  static std::uint8_t table[256];
  static const bool filled = [] {
    Fill(OemCodePageOf(UserLocale("LC_CTYPE")), table);
    return true;
  }();
  static_cast<void>(filled);
  return table;
}

}  // namespace

const char* OemCodePageOf(std::string_view locale) {
  const std::string_view name = locale.substr(0, locale.find_first_of(".@"));
  for (const LocalePage& entry : kLocalePages) {
    const std::string_view rest = name.substr(std::min(name.size(), entry.locale.size()));
    if (name.starts_with(entry.locale) && (rest.empty() || rest.front() == '_')) {
      return entry.page;
    }
  }
  return kDefaultPage;
}

void FillOemTable(const char* codePage, std::uint8_t (&table)[256]) {
  for (int byte = 0; byte < 256; ++byte) {
    table[byte] = static_cast<std::uint8_t>(byte);
  }
  const iconv_t converter = iconv_open("UTF-32LE", codePage);
  if (converter == reinterpret_cast<iconv_t>(-1)) {
    // A system without this page shows the bytes as they are.
    return;
  }
  for (int byte = 32; byte < 256; ++byte) {
    char source = static_cast<char>(byte);
    char32_t character = 0;
    char* from = &source;
    char* to = reinterpret_cast<char*>(&character);
    std::size_t fromLeft = 1;
    std::size_t toLeft = sizeof character;
    const bool converted =
        iconv(converter, &from, &fromLeft, &to, &toLeft) != static_cast<std::size_t>(-1) && toLeft == 0;
    table[byte] = converted ? Windows1252Of(character) : kNoStandIn;
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
  }
  iconv_close(converter);
}

void FillAnsiTable(const char* codePage, std::uint8_t (&table)[256]) {
  for (int byte = 0; byte < 256; ++byte) {
    table[byte] = static_cast<std::uint8_t>(byte);
  }
  const iconv_t converter = iconv_open(codePage, "UTF-32LE");
  if (converter == reinterpret_cast<iconv_t>(-1)) {
    return;
  }
  for (int byte = 128; byte < 256; ++byte) {
    char32_t character = UnicodeOfWindows1252(static_cast<std::uint8_t>(byte));
    char* from = reinterpret_cast<char*>(&character);
    char* to = reinterpret_cast<char*>(&table[byte]);
    std::size_t fromLeft = sizeof character;
    std::size_t toLeft = 1;
    if (iconv(converter, &from, &fromLeft, &to, &toLeft) == static_cast<std::size_t>(-1) || toLeft != 0) {
      table[byte] = static_cast<std::uint8_t>(kAsciiOfUpper[static_cast<std::size_t>(byte) - 128]);
    }
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
  }
  iconv_close(converter);
}

const std::uint8_t* OemCellCodes() {
  return LocaleTable<FillOemTable>();
}

const std::uint8_t* OemBytes() {
  return LocaleTable<FillAnsiTable>();
}
