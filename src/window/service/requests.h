// What other programs ask of the viewer and get an answer to, once it is there. Nothing is said to the user.
#pragma once

#include "platform/bus.h"

// Finds a key from the line on top, or from behind the last hit: a text in the code of the file, or bytes.
// The options are words: Top, Hex, Case. The place of the hit, which is selected and shown.
[[nodiscard]] BusResult FindForBus(const std::string& key, const std::vector<std::string>& options);

// Goes to a place (places/place.h). The first byte on the screen then.
[[nodiscard]] BusResult GoToForBus(const std::string& place);

// The lines on the screen, whole, as UTF-8; and the text of the selection.
[[nodiscard]] BusResult RowsForBus();
[[nodiscard]] BusResult CopyForBus();
