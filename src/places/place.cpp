#include "places/place.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kWholeShare = 100'000;

// How many bits a unit shifts; 0 for none.
int UnitOf(char letter) {
  constexpr std::string_view kUnits = "kKmMgGtT";
  const std::size_t at = kUnits.find(letter);
  return at == std::string_view::npos ? 0 : static_cast<int>(at / 2 + 1) * 10;
}

std::optional<std::int64_t> ParseBytes(std::string_view text) {
  if (text.empty()) return std::nullopt;
  // K, M, G and T are no digits in any notation.
  const int unit = UnitOf(text.back());
  if (unit != 0) text.remove_suffix(1);
  if (text.empty() || text[0] < '0' || text[0] > '9') return std::nullopt;
  bool good = false;
  const std::int64_t number = GetLongField(text, good, true);
  if (!good || number > (kMost >> unit)) return std::nullopt;
  return number << unit;
}

std::optional<std::int64_t> ParseShare(std::string_view text) {
  std::int64_t value = 0;
  int decimals = -1;
  for (const char c : text) {
    if (c == '.' && decimals < 0) {
      decimals = 0;
    } else if (c >= '0' && c <= '9' && decimals < 3 && value <= kWholeShare) {
      value = value * 10 + (c - '0');
      if (decimals >= 0) ++decimals;
    } else {
      return std::nullopt;
    }
  }
  for (; decimals < 3; decimals = std::max(decimals, 0) + 1)
    value *= 10;
  if (text.empty() || text == "." || value > kWholeShare) return std::nullopt;
  return value;
}

std::optional<Place> Make(Place::Kind kind, std::optional<std::int64_t> value) {
  if (!value) return std::nullopt;
  return Place{kind, *value};
}

}  // namespace

std::optional<Place> ParsePlace(std::string_view text) {
  if (text.empty()) return std::nullopt;
  if (text[0] == '-') return Make(Place::Kind::beforeEnd, ParseBytes(text.substr(1)));
  if (text.back() == '%') return Make(Place::Kind::share, ParseShare(text.substr(0, text.size() - 1)));
  if (text[0] == 'p' || text[0] == 'P') {
    const auto page = ParseBytes(text.substr(1));
    if (!page || *page < 1 || UnitOf(text.back()) != 0) return std::nullopt;
    return Place{Place::Kind::page, *page};
  }
  return Make(Place::Kind::byte, ParseBytes(text));
}

GoToAnswer AnswerOf(const Place& place, FilePos fileLength) {
  const std::int64_t length = fileLength.Offset();
  switch (place.kind) {
    case Place::Kind::byte:
      return {GoToChoice::bytePosition, std::min(place.value, length)};
    case Place::Kind::beforeEnd:
      return {GoToChoice::bytePosition, std::max<std::int64_t>(length - place.value, 0)};
    case Place::Kind::share:
      return {GoToChoice::bytePosition, PositionOfShare(fileLength, place.value, kWholeShare).Offset()};
    case Place::Kind::page:
      break;
  }
  return {GoToChoice::pageNumber, place.value};
}
