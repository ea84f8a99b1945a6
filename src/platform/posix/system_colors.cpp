#include "platform/posix/system_colors.h"

#include <cassert>

namespace {

struct SystemColor {
  int index;
  COLORREF color;
};

SystemColor systemColors[] = {
    {COLOR_BACKGROUND, RGB(128, 128, 128)}, {COLOR_MENU, RGB(239, 239, 239)},
    {COLOR_WINDOW, RGB(255, 255, 255)},     {COLOR_MENUTEXT, RGB(0, 0, 0)},
    {COLOR_WINDOWTEXT, RGB(0, 0, 0)},       {COLOR_APPWORKSPACE, RGB(171, 171, 171)},
    {COLOR_HIGHLIGHT, RGB(48, 140, 198)},   {COLOR_HIGHLIGHTTEXT, RGB(255, 255, 255)},
};

SystemColor* Find(int index) {
  for (SystemColor& entry : systemColors) {
    if (entry.index == index) {
      return &entry;
    }
  }
  return nullptr;
}

}  // namespace

void SetSystemColor(int index, COLORREF color) {
  SystemColor* const entry = Find(index);
  assert(entry != nullptr);
  entry->color = color;
}

DWORD GetSysColor(int index) {
  const SystemColor* const entry = Find(index);
  assert(entry != nullptr && "a system color that the layer does not know");
  return entry != nullptr ? entry->color : 0;
}
