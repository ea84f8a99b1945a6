#include "places/goto_logic.h"

#include <algorithm>
#include <cstdio>
#include <limits>

#include "places/place.h"

namespace {

constexpr std::int64_t kValueOfBottom = 9999999;

std::string HexText(FilePos position) {
  char text[24];
  std::snprintf(text, sizeof text, "0x%llX", static_cast<unsigned long long>(position.Offset()));
  return text;
}

std::string PagesText(const GoToLimits& limits) {
  if (!GoToOffersPages(limits)) return "N/A";
  return "1 to " + std::to_string(limits.pageCount) + (limits.morePages ? " so far" : "");
}

std::int64_t NumberOf(std::string_view text) {
  bool good = false;
  return GetLongField(text, good, true);
}

}  // namespace

bool GoToOffersPages(const GoToLimits& limits) {
  return limits.pageCount >= 1;
}

GoToField GoToFieldOf(GoToChoice choice, const GoToLimits& limits) {
  switch (choice) {
    case GoToChoice::bytePosition:
      return {"0x000000", "1 to " + HexText(limits.fileLength), true};
    case GoToChoice::pageNumber:
      return {"1", PagesText(limits), true};
    default:
      return {"N/A", " ", false};
  }
}

FieldCheck GoToValidate(GoToChoice choice, std::string_view text, const GoToLimits& limits) {
  switch (choice) {
    case GoToChoice::top:
    case GoToChoice::bottom:
      return {};
    case GoToChoice::bytePosition:
      if (const auto place = ParsePlace(text)) {
        if (place->kind == Place::Kind::page)
          return GoToValidate(GoToChoice::pageNumber, text.substr(1), limits);
        if (place->kind != Place::Kind::byte || place->value <= limits.fileLength.Offset()) return {};
      }
      return ValidateLongField(text, 0, limits.fileLength.Offset(), "File Offset");
    case GoToChoice::pageNumber:
      return ValidateLongField(text, 1,
                               limits.morePages ? std::numeric_limits<std::int64_t>::max() : limits.pageCount,
                               "Page Number");
    default:
      return {false, ""};
  }
}

GoToAnswer GoToRead(GoToChoice choice, std::string_view text, FilePos fileLength) {
  switch (choice) {
    case GoToChoice::top:
      return {choice, 0};
    case GoToChoice::bottom:
      return {choice, kValueOfBottom};
    case GoToChoice::bytePosition:
      if (const auto place = ParsePlace(text)) return AnswerOf(*place, fileLength);
      [[fallthrough]];
    case GoToChoice::pageNumber:
      return {choice, NumberOf(text)};
    default:
      return {};
  }
}

GoToTarget GoToTargetOf(const GoToAnswer& answer, FilePos fileLength) {
  switch (answer.choice) {
    case GoToChoice::top:
      return {GoToMove::top};
    case GoToChoice::bottom:
      return {GoToMove::bottom};
    case GoToChoice::bytePosition:
      return {GoToMove::load, std::min(FilePos::At(answer.value), fileLength)};
    case GoToChoice::pageNumber:
      return {GoToMove::page, kNoPosition, answer.value};
    default:
      return {};
  }
}

FilePos PositionOfShare(FilePos length, std::int64_t part, std::int64_t whole) {
  const auto divisor = static_cast<std::uint64_t>(whole);
  const auto factor = static_cast<std::uint64_t>(part);
  if (factor >= divisor) return length;
  // Bit by bit: `quotient` and `rest` are those of the bits of the length seen so far, times `part`.
  const ByteCount bits = length.Offset();
  std::uint64_t quotient = 0;
  std::uint64_t rest = 0;
  for (int bit = 62; bit >= 0; --bit) {
    quotient *= 2;
    rest *= 2;
    if (rest >= divisor) rest -= divisor, ++quotient;
    if ((bits >> bit & 1) == 0) continue;
    rest += factor;
    if (rest >= divisor) rest -= divisor, ++quotient;
  }
  return FilePos::At(quotient);
}
