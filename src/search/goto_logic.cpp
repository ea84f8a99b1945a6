#include "search/goto_logic.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr FilePos kValueOfBottom = 9999999;

std::string HexText(FilePos position) {
  char text[24];
  std::snprintf(text, sizeof text, "0x%llX", static_cast<unsigned long long>(position));
  return text;
}

FilePos NumberOf(std::string_view text) {
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
      return {"1", GoToOffersPages(limits) ? "1 to " + std::to_string(limits.pageCount) : "N/A", true};
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
      return ValidateLongField(text, 0, limits.fileLength, "File Offset");
    case GoToChoice::pageNumber:
      return ValidateLongField(text, 1, limits.pageCount, "Page Number");
    default:
      return {false, ""};
  }
}

GoToAnswer GoToRead(GoToChoice choice, std::string_view text) {
  switch (choice) {
    case GoToChoice::top:
      return {choice, 0};
    case GoToChoice::bottom:
      return {choice, kValueOfBottom};
    case GoToChoice::bytePosition:
    case GoToChoice::pageNumber:
      return {choice, NumberOf(text)};
    default:
      return {};
  }
}

GoToTarget GoToTargetOf(const GoToAnswer& answer, FilePos fileLength, FileHandle index, FilePos pageCount) {
  GoToTarget target;
  switch (answer.choice) {
    case GoToChoice::top:
      target.move = GoToMove::top;
      break;
    case GoToChoice::bottom:
      target.move = GoToMove::bottom;
      break;
    case GoToChoice::bytePosition:
      target.move = GoToMove::load;
      target.position = std::min(answer.value, fileLength);
      break;
    case GoToChoice::pageNumber:
      target.position = PageIndexLookup(index, answer.value, pageCount, target.fault);
      target.move = target.position < 0 ? GoToMove::invalidPage : GoToMove::move;
      break;
    case GoToChoice::none:
      break;
  }
  return target;
}
