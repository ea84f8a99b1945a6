#include "print/page_setup.h"

#include <algorithm>
#include <string>

#include "platform/profile_batch.h"
#include "settings/profile_values.h"

namespace {

constexpr const char* kOptionsKey = "PrintOptions";
constexpr const char* kMarginsKey = "PageMargins";

// The order of the numbers in the profile.
constexpr std::int32_t PageSetup::*kMargins[] = {&PageSetup::MarginTop, &PageSetup::MarginLeft,
                                                 &PageSetup::MarginRight, &PageSetup::MarginBottom};

std::string MarginsText(const PageSetup& setup) {
  std::string text;
  for (const auto margin : kMargins)
    text += (text.empty() ? "" : ",") + std::to_string(setup.*margin);
  return text;
}

}  // namespace

int LoadPageSetup(const char* profile, const char* section, PageSetup& setup) {
  if (ProfileHolds(profile, section, kOptionsKey)) {
    const std::int32_t options = ReadProfileInt(profile, section, kOptionsKey, 0);
    setup.PrintOptions = static_cast<std::uint32_t>(options) & kStoredPrintOptions;
  }
  if (ProfileHolds(profile, section, kMarginsKey)) {
    const auto numbers = ReadProfileNumbers(profile, section, kMarginsKey);
    for (std::size_t i = 0; i < numbers.size(); ++i)
      setup.*kMargins[i] = std::clamp(numbers[i], 0, kMostMargin);
  }
  return 1;
}

FileError SavePageSetup(const char* profile, const char* section, const PageSetup& setup) {
  return SaveProfile(profile, [&] {
    WriteProfileInt(profile, section, kOptionsKey, setup.PrintOptions);
    WriteProfileText(profile, section, kMarginsKey, MarginsText(setup));
  });
}
