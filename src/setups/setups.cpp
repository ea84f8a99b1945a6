#include "setups/setups.h"

#include "platform/profile_batch.h"
#include "settings/colors.h"
#include "settings/profile_values.h"
#include "settings/title_group.h"
#include "setups/setup_list.h"

int LoadDefaults(Settings& settings) {
  LoadOptions("Quorl", GROUP_ALL & ~(GROUP_PAGE | GROUP_PRINTER | GROUP_COLORS | GROUP_SHADES), settings);
  LoadReading(settings.ProfilePath, settings);
  LoadWindowColors(settings.ProfilePath, "Quorl Colors");
  LoadPrintShades(settings.ProfilePath, "Quorl Colors");
  LoadPrinter(settings.ProfilePath, "Print Setup", settings);
  LoadPageSetup(settings.ProfilePath, "Page Setup", settings);
  return 1;
}

std::int32_t SetupGroups(const char* profile, const char* section) {
  const std::int32_t mask = ReadProfileInt(profile, section, "SaveOptions", 0);
  return mask == 0 ? GROUP_ALL : mask;
}

int LoadSetup(const char* section, TitleSet* titles, Settings& settings) {
  settings.SaveWhat = SetupGroups(settings.ProfilePath, section);
  return LoadGroups(section, titles, settings.SaveWhat, settings);
}

int LoadGroups(const char* section, TitleSet* titles, std::int32_t mask, Settings& settings) {
  LoadOptions(section, mask, settings);
  if ((mask & GROUP_COLORS) != 0) LoadWindowColors(settings.ProfilePath, section);
  if ((mask & GROUP_SHADES) != 0) LoadPrintShades(settings.ProfilePath, section);
  if ((mask & GROUP_TITLES) != 0 && titles != nullptr) LoadTitles(settings.ProfilePath, section, *titles);
  return 1;
}

void LoadOptions(const char* section, std::int32_t mask, Settings& settings) {
  const char* const profile = settings.ProfilePath;
  if ((mask & GROUP_PAGE) != 0) LoadPageSetup(profile, section, settings);
  if ((mask & GROUP_PRINTER) != 0) LoadPrinter(profile, section, settings);
  if ((mask & GROUP_FORMAT) != 0) LoadFormat(profile, section, settings);
  if ((mask & GROUP_WINDOW_POS) != 0) LoadWindowPos(profile, section, settings);
  if ((mask & GROUP_RECENT_FILES) != 0) LoadRecentFiles(profile, settings.MruFiles, settings);
}

FileError SaveGroups(const SaveChoice& choice, const RECT* window, const TitleSet& titles,
                     const Settings& settings) {
  static constexpr struct {
    std::int32_t groups;
    const char* section;
  } kSections[] = {{GROUP_FORMAT, "Quorl"},        {GROUP_FORMAT, kReadingSection},
                   {GROUP_TITLES, "Titles"},       {GROUP_PAGE, "Page Setup"},
                   {GROUP_PRINTER, "Print Setup"}, {GROUP_COLORS | GROUP_SHADES, "Quorl Colors"}};
  const char* const profile = settings.ProfilePath;
  return SaveProfile(profile, [&] {
    for (const auto& section : kSections) {
      if ((choice.reset & section.groups) == 0) continue;
      WritePrivateProfileStringA(section.section, nullptr, nullptr, profile);
    }
    // A save within a save has no result of its own.
    const auto save = [&choice](std::int32_t group, const auto& saveGroup) {
      if ((choice.save & group) != 0) static_cast<void>(saveGroup());
    };
    save(GROUP_FORMAT, [&] { return SaveFormat(profile, "Quorl", settings, window); });
    save(GROUP_FORMAT, [&] { return SaveReading(profile, settings); });
    save(GROUP_TITLES, [&] { return SaveTitles(profile, "Titles", &titles); });
    save(GROUP_PAGE, [&] { return SavePageSetup(profile, "Page Setup", settings); });
    save(GROUP_PRINTER, [&] { return SavePrinter(profile, "Print Setup", settings); });
    save(GROUP_COLORS, [&] { return SaveWindowColors(profile, "Quorl Colors"); });
    save(GROUP_SHADES, [&] { return SavePrintShades(profile, "Quorl Colors"); });
  });
}

FileError WriteSetup(const RECT* window, const char* section, const TitleSet& titles,
                     const Settings& settings) {
  const char* const profile = settings.ProfilePath;
  return SaveProfile(profile, [&] {
    // What is saved again keeps its place, and comments of a hand with it; all else goes.
    constexpr const char* kStale = "\x01";
    const std::vector<std::string> former = ProfileKeyNames(profile, section);
    for (const std::string& key : former)
      WriteProfileText(profile, section, key.c_str(), kStale);
    // A save within a save has no result of its own.
    const auto save = [&settings](std::int32_t group, const auto& saveGroup) {
      if ((settings.SaveWhat & group) != 0) static_cast<void>(saveGroup());
    };
    save(GROUP_FORMAT, [&] { return SaveFormat(profile, section, settings, window); });
    save(GROUP_PAGE, [&] { return SavePageSetup(profile, section, settings); });
    save(GROUP_PRINTER, [&] { return SavePrinter(profile, section, settings); });
    save(GROUP_COLORS, [&] { return SaveWindowColors(profile, section); });
    save(GROUP_SHADES, [&] { return SavePrintShades(profile, section); });
    save(GROUP_TITLES, [&] { return SaveTitles(profile, section, &titles); });
    WriteProfileInt(profile, section, "SaveOptions", settings.SaveWhat);
    for (const std::string& key : former) {
      if (ReadProfileText(profile, section, key.c_str(), "", 2) == kStale)
        DeleteProfileKey(profile, section, key.c_str());
    }
    ListSetup(profile, SetupNameOf(section));
  });
}

FileError SaveRecentLists(const Settings& settings) {
  const char* const profile = settings.ProfilePath;
  const bool files = settings.MruFiles != 0 && settings.RecentFilesTouched > 0;
  const bool searches =
      settings.MruSearch != 0 && (settings.RecentTextsTouched > 0 || settings.RecentHexTouched > 0);
  if (settings.ProfileReadOnly != 0 || (!files && !searches)) return 0;
  return SaveProfile(profile, [&] {
    if (searches) static_cast<void>(SaveRecentSearches(profile, settings));
    if (files) static_cast<void>(SaveRecentFiles(profile, settings));
  });
}
