// The boxes that stand for groups of options, in the dialogs that save them.
#pragma once

#include "resources/dialogs/save_options_dialog.h"
#include "setups/setups.h"

struct GroupBox {
  int id;
  std::int32_t groups;
};
inline constexpr GroupBox kGroupBoxes[] = {
    {save_options_dialog::kFormat, GROUP_FORMAT},
    {save_options_dialog::kTitles, GROUP_TITLES},
    {save_options_dialog::kColors, GROUP_COLORS | GROUP_SHADES},
    {save_options_dialog::kPage, GROUP_PAGE},
    {save_options_dialog::kPrinter, GROUP_PRINTER},
};
