// A small program on the platform layer, run as a process of its own by tests that are about processes: no
// display, signals, exit codes, the words of the command line.
#pragma once

inline constexpr const char* kChildOption = "--child";

int RunChildProgram(int argc, char** argv);
