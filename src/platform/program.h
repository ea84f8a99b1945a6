// How the system enters the program, and the words of the command line where the system hands over words
// and not one text. Operations of this layer's own.
#pragma once

#include <functional>
#include <string>

#include "platform/win32.h"

using ProgramEntry = int (*)(HINSTANCE instance, HINSTANCE previous, char* commandLine, int show);

// Brings the toolkit up, runs `entry` with SW_SHOWNORMAL and an empty text, takes the toolkit down, and
// returns the exit code. Without a display: one line on stderr, and exit code -2.
int RunProgram(int argc, char** argv, ProgramEntry entry);

// Runs what needs no display, but the toolkit's other means; its result.
int RunWithoutDisplay(int argc, char** argv, const std::function<int()>& run);

// The libraries that the program runs with, and the Unicode version of its tables.
[[nodiscard]] std::string ProgramLibraries();

// Words of the command line behind the program's own name, as the system split them; no words where it
// hands over one text. The pointers live as long as the program.
[[nodiscard]] int CommandWordCount();
[[nodiscard]] const char* CommandWord(int index);
