// The program with any value that a hand may have put into its profile: every key with every number that is
// at a bound, and with what is no number.
#include <sys/resource.h>

#include <limits>
#include <set>

#include "resources/command_ids.h"
#include "resources/dialogs/save_options_dialog.h"
#include "settings/advanced_keys.h"
#include "tests/window/dialog_steps.h"
#include "tests/window/viewer.h"
#include "window/selection.h"

namespace {

using namespace dialog_steps;

// Kilobytes that one start takes at its peak. The address sanitizer (of clang) keeps what is freed.
#ifdef __has_feature
constexpr long kMostGrowth = __has_feature(address_sanitizer) ? std::numeric_limits<long>::max() : 50'000;
#else
constexpr long kMostGrowth = 50'000;
#endif

// Keys that are set together, with the bounds of one of them. In a value, % stands for the number.
struct KeyGroup {
  const char* section;
  std::vector<std::string> keys;
  std::int64_t least = 0, most = 0;
  const char* form = "%";
};

std::vector<KeyGroup> AllKeys() {
  std::vector<KeyGroup> groups;
  // Keys with the same bounds beside each other go together.
  const auto add = [&groups](const char* section, const char* key, std::int64_t least, std::int64_t most) {
    if (!groups.empty() && groups.back().least == least && groups.back().most == most) {
      groups.back().keys.emplace_back(key);
    } else {
      groups.push_back({section, {key}, least, most});
    }
  };
  for (const AdvancedKey& key : kAdvancedKeys)
    add("Quorl Setup", key.key, key.least, key.most);
  groups.push_back({"Quorl Setup", {"MasterProfile", "DeleteMenu1", "DeleteMenu4", "DebugFileName"}});
  for (const FormatNumber& number : FormatNumbers())
    add("Quorl", number.key, number.least, number.most);
  groups.push_back({"Quorl", {"Options0", "Options1", "Options2"}});
  groups.push_back({"Quorl", {"Font"}, kLeastPoints, kMostPoints, "Courier New,%"});
  for (const char* form : {"%,%,%,%", "%,%,300,400", "0,0,%,300", "0,0,300,%"})
    groups.push_back({"Quorl", {"WindowPos"}, kLeastSide, 800, form});
  KeyGroup colors{"Quorl Colors", {}, 0, kMostColor};
  for (const ColorSlotInfo& slot : kColorSlotInfos)
    colors.keys.emplace_back(slot.key);
  groups.push_back(colors);
  groups.push_back({"Titles", {"Titles", "Title1"}, 0, 15});
  groups.push_back({"MRU Search", {"Texts", "Text1", "Hexs", "Hex1"}, 0, kRecentStrings});
  groups.push_back({"MRU Files", {"File1", "File4"}});
  groups.push_back({"Page Setup", {"PrintOptions"}, 0, kStoredPrintOptions});
  groups.push_back({"Page Setup", {"PageMargins"}, 0, kMostMargin, "%,%,%,%"});
  groups.push_back({"Print Setup",
                    {"PrtCopies", "PrtPrintQuality", "PrtSpecVersion", "PrtDevice"},
                    INT16_MIN,
                    UINT16_MAX});
  return groups;
}

std::set<std::string> ValuesFor(const KeyGroup& group) {
  std::set<std::string> values = {"",
                                  "text",
                                  "9223372036854775808",
                                  "-9223372036854775809",
                                  "18446744073709551615",
                                  "99999999999999999999999999"};
  using Wide = std::numeric_limits<std::int64_t>;
  for (const std::int64_t number : {std::int64_t{0}, group.least, group.most, std::int64_t{INT32_MIN},
                                    std::int64_t{INT32_MAX}, std::int64_t{UINT32_MAX}}) {
    for (const std::int64_t step : {-1, 0, 1})
      values.insert(std::to_string(number + step));
  }
  values.insert({std::to_string(Wide::min()), std::to_string(Wide::max())});
  return values;
}

std::string ProfileWith(const KeyGroup& group, const std::string& value) {
  std::string text;
  for (const char part : std::string(group.form))
    text += part == '%' ? value : std::string(1, part);
  std::string profile = "[" + std::string(group.section) + "]\n";
  for (const std::string& key : group.keys)
    profile += key + '=' + text + '\n';
  // Fixed lengths, the background shown, the place of the window saved.
  if (group.section != std::string("Quorl")) profile += "[Quorl]\n";
  return profile + "Options0=24\nSavePos=1\n";
}

// A text with pages and a line that wraps often.
std::string Pages() {
  std::string text(100'000, 'x');
  text += '\n';
  for (int page = 0; page < 40; ++page)
    text += NumberedLines(50) + '\f';
  return text;
}

void UseAll(Viewer& viewer) {
  const HWND window = viewer.Window();
  for (const int key : {VK_NEXT, VK_NEXT, VK_END, VK_PRIOR, VK_RIGHT, VK_HOME, VK_DOWN})
    viewer.Key(key);
  viewer.Command(IDM_HEX);
  viewer.Key(VK_NEXT);
  viewer.Command(IDM_TEXT);
  platform_testing::Mouse(window, WM_LBUTTONDOWN, 2, MainState.CharHeight / 2, 0);
  viewer.Pump();
  for (const int y : {MainState.ClientHeight + 50, MainState.ClientHeight + 50, -50}) {
    platform_testing::Mouse(window, WM_MOUSEMOVE, 2, y, 0);
    viewer.Pump();
    viewer.Send(WM_TIMER, y < 0 ? kScrollUpTimer : kScrollDownTimer);
  }
  platform_testing::Mouse(window, WM_LBUTTONUP, 2, 2, 0);
  viewer.Pump();
  viewer.Command(IDM_COPY);
  RepaintWindow();
  viewer.Pump();
  viewer.Command(IDM_PAGE_SETUP);
  using namespace save_options_dialog;
  platform_testing::ScriptNextDialog(
      {Click(kPage), Click(kPage), Click(kPrinter), Click(kPrinter), Click(IDOK)});
  viewer.Command(IDM_SAVE_OPTIONS);
}

// Hundreds of saves are brought to the disk, which is not what this is about.
class SettingsInMemory {
 public:
  SettingsInMemory() {
    if (std::filesystem::is_directory("/dev/shm")) {
      setenv("XDG_CONFIG_HOME", ("/dev/shm/quorl settings " + std::to_string(getpid())).c_str(), 1);
    }
  }
  ~SettingsInMemory() {
    std::filesystem::remove_all(std::getenv("XDG_CONFIG_HOME"));
    setenv("XDG_CONFIG_HOME", former_.c_str(), 1);
  }
  SettingsInMemory(const SettingsInMemory&) = delete;
  SettingsInMemory& operator=(const SettingsInMemory&) = delete;

 private:
  std::string former_ = std::getenv("XDG_CONFIG_HOME");
};

long PeakKilobytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

TEST(ProfileBounds, NoValueOfAKeyDoesHarm) {
  const SettingsInMemory settings;
  const ScratchFile file(Pages());
  long peak = PeakKilobytes();
  for (const KeyGroup& group : AllKeys()) {
    for (const std::string& value : ValuesFor(group)) {
      SCOPED_TRACE(group.keys[0] + '=' + group.form + " with " + value);
      {
        Viewer viewer({file.Path()}, ProfileWith(group, value), false);
        RECT place{};
        GetWindowRect(viewer.Window(), &place);
        EXPECT_GE(place.right - place.left, kLeastSide);
        EXPECT_GE(place.bottom - place.top, kLeastSide);
        EXPECT_LE(place.right, GetSystemMetrics(SM_CXVIRTUALSCREEN));
        EXPECT_LE(place.bottom, GetSystemMetrics(SM_CYVIRTUALSCREEN));
        EXPECT_GE(std::min(place.left, place.top), 0);
        const auto margins = std::minmax(
            {MainState.MarginTop, MainState.MarginLeft, MainState.MarginRight, MainState.MarginBottom});
        EXPECT_GE(margins.first, 0);
        EXPECT_LE(margins.second, kMostMargin);
        UseAll(viewer);
        EXPECT_TRUE(platform_testing::Boxes().empty());
        EXPECT_EQ(Viewer::Profile().find("WindowPos=") != std::string::npos, MainState.SavePos != 0);
      }
      const long now = PeakKilobytes();
      EXPECT_LT(now - peak, kMostGrowth);
      peak = now;
    }
  }
}

// As much as a profile may hold, of what takes longest to look through: with a loop in a loop this test would
// not come to its end.
TEST(ProfileBounds, AFullProfileStartsAtOnce) {
  const ScratchFile file("text\n");
  for (const char* const line : {"\n", "a\n", "a=\n", "[a]\n", "[Quorl]\n"}) {
    for (const std::size_t size : {std::size_t{1'000'000}, std::size_t{16'000'000}}) {
      std::string profile = "[Quorl Setup]\n";
      while (profile.size() < size)
        profile += line;
      Viewer viewer({"-s", file.Path()}, profile);
      EXPECT_EQ(Viewer::Text(), "text");
    }
  }
}

}  // namespace
