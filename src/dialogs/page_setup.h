// The Page Setup dialog: what stands on a printed page, and its margins in the unit of the user's country.
#pragma once

#include <optional>

#include "platform/win32.h"
#include "print/page_setup.h"
#include "settings/profile_place.h"

// Asks for a page setup, beginning with `setup`; Save also writes it to the profile at `place`. None: the
// user canceled, or the dialog could not be shown. The shades that the user chose from here are in force at
// once.
std::optional<PageSetup> RunPageSetup(HWND owner, const PageSetup& setup, const ProfilePlace& place);
