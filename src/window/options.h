// What the option letters of the command line do to the options.
#pragma once

#include "settings/advanced_keys.h"
#include "settings/format_options.h"
#include "window/command_line.h"

// Applies the letters in a fixed order, whatever the order typed, so that R wins over H and H over T. A
// format comes with its stored word, and the other letters change that of the format in use alone. The
// letters D, M, N, V and X take effect elsewhere.
void ApplyOptionLetters(const CommandLineWords& line, FormatOptions& options, AdvancedKeys& keys);
