// The grammar of command strings: any number of commands, each a [, a verb, up to five arguments and a ],
// with white space between tokens and commands at will. A token in double quotes may hold anything, two
// quotes standing for one. Plain strings in and out.
#pragma once

#include <array>

inline constexpr int kDdeCommandBytes = 256;  // of the longest string
inline constexpr int kDdeTokens = 6;          // the verb and its arguments

// Negative results of ParseDdeCommand.
inline constexpr int kDdeBadLength = -1;
inline constexpr int kDdeBadStart = -2;
inline constexpr int kDdeStartBehindEnd = -3;  // also: the command before it had no ]
inline constexpr int kDdeNoBracket = -4;
inline constexpr int kDdeTooManyTokens = -5;

// The tokens of one command, each ended by a NUL; a slot that no token took points to an empty string.
struct DdeTokens {
  std::array<const char*, kDdeTokens> slots{};
  std::array<char, kDdeCommandBytes> buffer{};
};

// Parses the command at `start` of a string of `length` bytes, at most kDdeCommandBytes. The position behind
// it, where the next one is to be parsed; 0 when nothing is left; a negative number when it is no command.
[[nodiscard]] int ParseDdeCommand(const char* command, int length, int start, DdeTokens& tokens);
