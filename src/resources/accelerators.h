// The keys of the commands. Entries without FVIRTKEY are typed control characters, the others virtual keys.
#pragma once

#include "resources/command_ids.h"

namespace accelerators_detail {
constexpr ACCEL Typed(WORD character, UINT command) {
  return {0, character, static_cast<WORD>(command)};
}
constexpr ACCEL Key(int modifiers, int key, UINT command) {
  return {static_cast<BYTE>(FVIRTKEY | modifiers), static_cast<WORD>(key), static_cast<WORD>(command)};
}
}  // namespace accelerators_detail

inline constexpr ACCEL kAccelerators[] = {
    accelerators_detail::Typed(0x10, IDM_PRINT_PAGE),  // Ctrl+P
    accelerators_detail::Typed(0x14, IDM_TEXT),        // Ctrl+T
    accelerators_detail::Typed(0x08, IDM_HEX),         // Ctrl+H
    accelerators_detail::Typed(0x12, IDM_RAW),         // Ctrl+R
    accelerators_detail::Typed(0x17, IDM_WRAP),        // Ctrl+W
    accelerators_detail::Typed(0x0F, IDM_OPTIONS),     // Ctrl+O
    accelerators_detail::Typed(0x03, IDM_COPY),        // Ctrl+C
    accelerators_detail::Key(FCONTROL | FSHIFT, 'Z', IDM_ZOOM_IN),
    accelerators_detail::Key(FCONTROL, 'Z', IDM_ZOOM_OUT),
    accelerators_detail::Key(FCONTROL | FALT, 'Z', IDM_ZOOM_RESET),
    accelerators_detail::Key(FCONTROL, VK_INSERT, IDM_COPY),
    accelerators_detail::Key(0, VK_F1, IDM_HELP_KEYBOARD),
    accelerators_detail::Key(FCONTROL, VK_F1, IDM_HELP_CONTENTS),
    accelerators_detail::Key(0, VK_F2, IDM_MARK_NEXT),
    accelerators_detail::Key(FCONTROL, VK_F2, IDM_MARK_TOGGLE),
    accelerators_detail::Key(FCONTROL | FSHIFT, VK_F2, IDM_UNMARK_ALL),
    accelerators_detail::Key(0, VK_F3, IDM_FIND_NEXT),
    accelerators_detail::Key(FSHIFT, VK_F3, IDM_FIND_TEXT),
    accelerators_detail::Key(FCONTROL, VK_F3, IDM_FIND_HEX),
    accelerators_detail::Key(0, VK_F5, IDM_GOTO),
    accelerators_detail::Key(FCONTROL, VK_F12, IDM_OPEN),
    accelerators_detail::Key(FCONTROL | FSHIFT, VK_F12, IDM_PRINT),
    accelerators_detail::Key(0, VK_F11, IDM_MARK_TOGGLE),
};
