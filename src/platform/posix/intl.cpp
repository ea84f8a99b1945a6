#include "platform/posix/intl.h"

#include <iconv.h>
#include <langinfo.h>
#include <locale.h>
#include <strings.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/posix/user_locale.h"
#include "platform/win32.h"

namespace {

constexpr std::string_view kNumericDate = "%m/%d/%y";
constexpr std::string_view kIsoDate = "%Y-%m-%d";
constexpr std::string_view kLongTime = "%H:%M:%S";
constexpr std::string_view kSuffixTime = "%I:%M:%S %p";

// A conversion of a strftime format, with the text in front of it.
struct Piece {
  char conversion = '\0';  // 0: the format ends with a text
  bool padded = true;      // with zeros to its width
  std::string before;
};

// What a conversion stands for that is short for several; empty: it is none of those.
std::string_view LongFormOf(char conversion, std::string_view withSuffix) {
  switch (conversion) {
    case 'D':
      return kNumericDate;
    case 'F':
      return kIsoDate;
    case 'T':
    case 'R':
      return kLongTime;
    case 'r':
      return withSuffix.empty() ? kSuffixTime : withSuffix;
    default:
      return {};
  }
}

void AppendPieces(std::string_view format, std::string_view withSuffix, std::vector<Piece>& pieces) {
  Piece piece;
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%') {
      piece.before += format[i];
      continue;
    }
    // Flags, a width, and the modifiers that ask for an era or for other digits.
    for (++i; i < format.size() && std::strchr("_-0^#+123456789EO", format[i]) != nullptr; ++i) {
      if (format[i] == '-' || format[i] == '_') piece.padded = false;
    }
    if (i == format.size()) break;
    const std::string_view longForm = LongFormOf(format[i], withSuffix);
    if (longForm.empty()) {
      piece.conversion = format[i];
      pieces.push_back(std::exchange(piece, {}));
    } else {
      AppendPieces(longForm, {}, pieces);
    }
  }
  pieces.push_back(piece);
}

std::vector<Piece> PiecesOf(std::string_view format, std::string_view withSuffix) {
  std::vector<Piece> pieces;
  AppendPieces(format, withSuffix, pieces);
  return pieces;
}

// The letters that a conversion is in the picture of a date; empty: it is no part of one.
std::string_view LettersOf(const Piece& piece) {
  switch (piece.conversion) {
    case 'd':
      return piece.padded ? "dd" : "d";
    case 'e':
      return "d";
    case 'm':
      return piece.padded ? "MM" : "M";
    case 'b':
    case 'B':
    case 'h':
      return "MM";
    case 'Y':
    case 'G':
      return "yyyy";
    case 'y':
    case 'g':
      return "yy";
    default:
      return {};
  }
}

// The first sign of punctuation that could part two numbers.
char SeparatorIn(std::string_view text, char otherwise) {
  const std::size_t at = text.find_first_of("./-:,;'");
  return at == std::string_view::npos ? otherwise : text[at];
}

class Locale {
 public:
  // Of one category, with the characters of that same locale.
  Locale(int mask, const char* category) {
    const std::string name(UserLocale(category));
    if (name.empty() || name == "C" || name == "POSIX" || name.starts_with("C.")) return;
    locale_ = newlocale(mask | LC_CTYPE_MASK, name.c_str(), nullptr);
  }
  ~Locale() {
    if (locale_ != nullptr) freelocale(locale_);
  }
  Locale(const Locale&) = delete;
  Locale& operator=(const Locale&) = delete;

  [[nodiscard]] bool IsThere() const { return locale_ != nullptr; }
  // A text as the locale holds it.
  [[nodiscard]] const char* Bytes(nl_item item) const { return nl_langinfo_l(item, locale_); }
  // The same in UTF-8; empty where it cannot be told.
  [[nodiscard]] std::string Text(nl_item item) const {
    std::string bytes = Bytes(item);
    const iconv_t converter = iconv_open("UTF-8", Bytes(CODESET));
    if (converter == reinterpret_cast<iconv_t>(-1)) return {};
    std::string text(bytes.size() * 4, '\0');
    char* from = bytes.data();
    char* to = text.data();
    std::size_t fromLeft = bytes.size();
    std::size_t toLeft = text.size();
    const bool converted = iconv(converter, &from, &fromLeft, &to, &toLeft) != static_cast<std::size_t>(-1);
    iconv_close(converter);
    text.resize(converted ? text.size() - toLeft : 0);
    return text;
  }

 private:
  locale_t locale_ = nullptr;
};

std::optional<std::string> NumberSetting() {
  const Locale locale(LC_NUMERIC_MASK, "LC_NUMERIC");
  if (!locale.IsThere()) return std::nullopt;
  return locale.Text(RADIXCHAR);
}

std::optional<std::string> MeasureSetting() {
  constexpr char kMetric = 1;
  const Locale locale(LC_MEASUREMENT_MASK, "LC_MEASUREMENT");
  if (!locale.IsThere()) return std::nullopt;
  return *locale.Bytes(_NL_MEASUREMENT_MEASUREMENT) == kMetric ? "0" : "1";
}

std::optional<std::string> ClockSetting(const Locale& locale, std::string_view key) {
  const auto form = ClockFormOf(locale.Text(T_FMT), locale.Text(T_FMT_AMPM));
  if (!form) return std::nullopt;
  if (key == "sTime") return std::string(1, form->separator);
  return (key == "iTime" ? form->hour24 : form->leadingZero) ? "1" : "0";
}

std::optional<std::string> TimeSetting(std::string_view key) {
  const Locale locale(LC_TIME_MASK, "LC_TIME");
  if (!locale.IsThere()) return std::nullopt;
  if (key == "sShortDate") return DatePictureOf(locale.Text(D_FMT));
  if (key == "s1159") return locale.Text(AM_STR);
  if (key == "s2359") return locale.Text(PM_STR);
  return ClockSetting(locale, key);
}

std::optional<std::string> SettingOf(LPCSTR section, LPCSTR key) {
  return strcasecmp(section, "intl") == 0 ? IntlSetting(key) : std::nullopt;
}

}  // namespace

std::string DatePictureOf(std::string_view format) {
  std::string picture;
  std::string between;  // behind the last part of the date
  char separator = '\0';
  for (const Piece& piece : PiecesOf(format, {})) {
    between += piece.before;
    const std::string_view letters = LettersOf(piece);
    if (letters.empty() || picture.find(letters.front()) != std::string::npos) continue;
    if (!picture.empty()) {
      if (separator == '\0') separator = SeparatorIn(between, '/');
      picture += separator;
    }
    picture += letters;
    between.clear();
  }
  const bool whole = std::ranges::all_of(
      std::string_view("dMy"), [&picture](char letter) { return picture.find(letter) != std::string::npos; });
  return whole ? picture : "";
}

std::optional<ClockForm> ClockFormOf(std::string_view format, std::string_view withSuffix) {
  const std::vector<Piece> pieces = PiecesOf(format, withSuffix);
  const auto hour = std::ranges::find_if(pieces, [](const Piece& piece) {
    return piece.conversion != '\0' && std::strchr("HIkl", piece.conversion) != nullptr;
  });
  if (hour == pieces.end()) return std::nullopt;
  ClockForm form;
  form.hour24 = hour->conversion == 'H' || hour->conversion == 'k';
  form.leadingZero = hour->padded && (hour->conversion == 'H' || hour->conversion == 'I');
  form.separator = SeparatorIn(std::next(hour)->before, form.separator);
  return form;
}

std::optional<std::string> IntlSetting(std::string_view key) {
  constexpr std::string_view kTimeKeys[] = {"sShortDate", "iTime", "iTLzero", "sTime", "s1159", "s2359"};
  std::optional<std::string> value;
  if (key == "sDecimal") {
    value = NumberSetting();
  } else if (key == "iMeasure") {
    value = MeasureSetting();
  } else if (std::ranges::count(kTimeKeys, key) > 0) {
    value = TimeSetting(key);
  }
  return value && value->empty() ? std::nullopt : value;
}

UINT GetProfileIntA(LPCSTR section, LPCSTR key, INT fallback) {
  const auto value = SettingOf(section, key);
  if (!value) return static_cast<UINT>(fallback);
  UINT number = 0;
  std::from_chars(value->data(), value->data() + value->size(), number);
  return number;
}

DWORD GetProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR buffer, DWORD size) {
  if (buffer == nullptr || size == 0) return 0;
  const std::string value = SettingOf(section, key).value_or(fallback != nullptr ? fallback : "");
  const std::size_t length = value.copy(buffer, size - 1);
  buffer[length] = '\0';
  return static_cast<DWORD>(length);
}
