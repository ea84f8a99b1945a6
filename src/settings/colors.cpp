#include "settings/colors.h"

#include <span>

#include "platform/profile_batch.h"
#include "settings/profile_values.h"

COLORREF ColorTable[kColorSlots] = {};

namespace {

// The order of the keys in the file.
constexpr ColorSlot kWindowOrder[] = {MessageBgnd, MessageText, TagBgnd,    TagText,      Background,
                                      HeadingText, HeadingBgnd, WindowBgnd, WindowText,   CommentText,
                                      CommentBgnd, HitText,     HitBgnd,    OtherHitText, OtherHitBgnd};
constexpr ColorSlot kPrintOrder[] = {PrintText,  PrintTextB, PrintTag,   PrintTagB, PrintHead,
                                     PrintHeadB, PrintCmnt,  PrintCmntB, PrintBgnd};
static_assert(std::size(kWindowOrder) == kWindowColors);
static_assert(std::size(kPrintOrder) == kColorSlots - kWindowColors);

int LoadColors(const char* profile, const char* section, int group, std::span<const ColorSlot> order) {
  COLORREF defaults[kColorSlots] = {};
  ResetColors(group, defaults);
  for (const ColorSlot slot : order) {
    const auto absent = static_cast<std::int32_t>(defaults[slot]);
    const std::int32_t value = ReadProfileInt(profile, section, kColorSlotInfos[slot].key, absent);
    ColorTable[slot] = static_cast<COLORREF>(value) & kMostColor;
  }
  return 1;
}

FileError SaveColors(const char* profile, const char* section, int group, std::span<const ColorSlot> order) {
  COLORREF defaults[kColorSlots] = {};
  ResetColors(group, defaults);
  return SaveProfile(profile, [&] {
    for (const ColorSlot slot : order) {
      const char* const key = kColorSlotInfos[slot].key;
      if (ColorTable[slot] != defaults[slot]) {
        WriteProfileInt(profile, section, key, static_cast<std::int32_t>(ColorTable[slot]));
      } else {
        DeleteProfileKey(profile, section, key);
      }
    }
  });
}

}  // namespace

int ResetColors(int selector, COLORREF* table) {
  const int first = selector == COLORS_WINDOW ? 0 : selector == COLORS_PRINT ? kWindowColors : selector;
  const int end = selector == COLORS_WINDOW  ? kWindowColors
                  : selector == COLORS_PRINT ? kColorSlots
                                             : first + 1;
  for (int slot = first; slot < end; ++slot) {
    const ColorSlotInfo& info = kColorSlotInfos[slot];
    table[slot] = info.systemColor == kNoSystemColor ? info.value : GetSysColor(info.systemColor);
  }
  return 1;
}

void FollowDesktopColors(COLORREF* table, COLORREF* defaults) {
  COLORREF now[kColorSlots] = {};
  ResetColors(COLORS_WINDOW, now);
  for (int slot = 0; slot < kWindowColors; ++slot) {
    if (table[slot] == defaults[slot]) table[slot] = now[slot];
    defaults[slot] = now[slot];
  }
}

int LoadWindowColors(const char* profile, const char* section) {
  return LoadColors(profile, section, COLORS_WINDOW, kWindowOrder);
}

int LoadPrintShades(const char* profile, const char* section) {
  return LoadColors(profile, section, COLORS_PRINT, kPrintOrder);
}

FileError SaveWindowColors(const char* profile, const char* section) {
  return SaveColors(profile, section, COLORS_WINDOW, kWindowOrder);
}

FileError SavePrintShades(const char* profile, const char* section) {
  return SaveColors(profile, section, COLORS_PRINT, kPrintOrder);
}
