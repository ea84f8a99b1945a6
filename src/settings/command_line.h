// The grammar of the command line: option words of letters, a setup word, and one file. Plain text in, a
// record out; what the letters mean is told in option_letters.h.
#pragma once

#include <string>
#include <string_view>

#include "platform/paths.h"

inline constexpr std::size_t kSetupSectionBytes = 64;
inline constexpr std::string_view kSetupPrefix = "Setup: ";

struct CommandLineWords {
  // One slot for each letter A to Z: 0 when it was not given, else the letter in the case last typed.
  char OptionLetters[26] = {};
  char SetupSection[kSetupSectionBytes] = {};  // "Setup: " and the name; empty: no setup was named
  std::string RefusedSetup;                    // the name of one that is longer than SetupSection holds
  char CommandFile[kPathBytes] = {};           // "*.*" after a command line without a file

  // Words that begin with two dashes, and +/TEXT.
  std::string AskedPlace;  // --at; empty: none
  std::string AskedKey;    // --find, +/ and --find-hex; empty: none
  bool KeyIsHex = false;
  bool InputIsFile = false;   // the file is standard input: a dash alone, and no other file
  bool StartsHidden = false;  // --service: the window is not shown before another program asks for it
  std::string CommandFault;   // what is wrong with the words; empty: nothing
  std::string* AwaitedValue = nullptr;  // of an option whose value is the next word
  bool NamesOnly = false;               // behind --

  [[nodiscard]] char Letter(char upperCase) const { return OptionLetters[upperCase - 'A']; }
};

// Takes one word. A word that begins with - (or / where it cannot begin a path) is an option word, else the
// first such word is the file. Two dashes begin an option with a name, alone they make all words behind them
// files; a dash alone is standard input, and +/TEXT a text to find. A word may hold any byte but NUL; a file
// word longer than a path can be is cut.
void TakeCommandWord(std::string_view word, CommandLineWords& line);

// Takes the words of a text that stand between blanks and control characters.
void ParseCommandLine(std::string_view text, CommandLineWords& line);

// Whether a word is an option with a name that is the viewer's, and no client's; whether its value is the
// next one.
[[nodiscard]] bool IsViewerOption(std::string_view word);
[[nodiscard]] bool TakesValue(std::string_view word);

// Ends the command line: without a file the file is "*.*", which no file bears, so that the user is asked.
void FinishCommandLine(CommandLineWords& line);
