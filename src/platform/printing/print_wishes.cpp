#include <array>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <utility>

#include "platform/printing/print_service.h"

namespace platform_printing {

namespace {

// Keywords in the order of the values of each wish; the first, "unset", has none.
constexpr std::array kSides = {"", "one-sided", "two-sided-long-edge", "two-sided-short-edge"};
constexpr std::array kTurns = {"", "3", "4"};
constexpr std::array kQualities = {"", "3", "4", "5"};
constexpr std::array kInks = {"", "monochrome", "color"};

// Width and height in hundredths of a millimetre, which stand at the end of a PWG name: "na_letter_8.5x11in".
std::optional<std::pair<int, int>> SizeOfMedia(const std::string& media) {
  constexpr double kPerMillimetre = 100;
  constexpr double kPerInch = 2540;
  const std::size_t mark = media.rfind('_');
  if (mark == std::string::npos) return std::nullopt;
  char* end = nullptr;
  const double width = std::strtod(media.c_str() + mark + 1, &end);
  if (*end != 'x') return std::nullopt;
  const double height = std::strtod(end + 1, &end);
  const std::string unit = end;
  if (!(width > 0) || !(height > 0) || (unit != "mm" && unit != "in")) return std::nullopt;
  const double scale = unit == "mm" ? kPerMillimetre : kPerInch;
  return std::pair{static_cast<int>(std::lround(width * scale)),
                   static_cast<int>(std::lround(height * scale))};
}

// A source is named together with the size, in one collection; media may not stand beside it then.
std::string MediaCollection(const PrintWishes& wishes) {
  std::string collection = "{media-source=" + wishes.mediaSource;
  if (const auto size = SizeOfMedia(wishes.media)) {
    collection += " media-size={x-dimension=" + std::to_string(size->first) +
                  " y-dimension=" + std::to_string(size->second) + "}";
  }
  return collection + "}";
}

}  // namespace

std::vector<PrintAttribute> AttributesOf(const PrintWishes& wishes) {
  std::vector<PrintAttribute> attributes;
  const auto add = [&attributes](const char* name, const std::string& value) {
    if (!value.empty()) attributes.push_back({name, value});
  };
  add("copies", wishes.copies > 1 ? std::to_string(wishes.copies) : "");
  add("sides", kSides[static_cast<std::size_t>(wishes.sides)]);
  add("orientation-requested", kTurns[static_cast<std::size_t>(wishes.turn)]);
  add("print-quality", kQualities[static_cast<std::size_t>(wishes.quality)]);
  add("print-color-mode", kInks[static_cast<std::size_t>(wishes.ink)]);
  add("printer-resolution", wishes.dotsPerInch > 0 ? std::to_string(wishes.dotsPerInch) + "dpi" : "");
  if (wishes.mediaSource.empty()) {
    add("media", wishes.media);
  } else {
    add("media-col", MediaCollection(wishes));
  }
  return attributes;
}

}  // namespace platform_printing
