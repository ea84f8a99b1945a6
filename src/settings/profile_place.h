// Where the profile is and whether it may be written: what the units that load and save settings are told.
// Settled once at start-up.
#pragma once

#include <cstdint>

#include "platform/paths.h"

struct ProfilePlace {
  char ProfilePath[kPathBytes] = {};  // the name handed to every profile operation
  std::int32_t ProfileReadOnly = 0;   // nonzero: the profile exists and cannot be written
};
