// What the option letters of the command line do to the options.
#pragma once

#include "settings/advanced_keys.h"
#include "settings/command_line.h"
#include "settings/format_options.h"

// What the letters mean, as people are told: the list of options in the help book, the manual page and README
// is made from it.
struct OptionLetterText {
  const char* letters;
  const char* meaning;
};
inline constexpr OptionLetterText kOptionLetterTexts[] = {
    {"T, H, R",
     "begin in the format Text, Hex Dump, Raw Text, with its stored options, which further letters change"},
    {"A, C, U", "the bytes are of the OEM code page (ASCII), are EBCDIC, or UTF-8"},
    {"W, w", "wrap long lines, do not wrap"},
    {"E, e", "turn tabs into blanks, show each as a mark"},
    {"L, l", "lines of a fixed length, lines of the window's width"},
    {"B, b", "behind the text the background color, the text's own color"},
    {"X, N", "begin maximized, minimized (until a file is opened)"},
    {"M", "stay above other windows"},
    {"Y", "Esc leaves the program"},
    {"VNAME, vNAME", "alone in its word: the setup of that name, without, with the default options"},
    {"S, s", "keep recent files and searches, keep none"},
    {"D", "take commands from other programs"},
    {"O, o", "nothing at present"},
};

// The same of the words that begin with two dashes.
inline constexpr OptionLetterText kLongOptionTexts[] = {
    {"--text, --hex, --raw", "as T, H, R"},
    {"--at PLACE",
     "begin at a place: 12345 or 0x3039 (a byte), -4k (before the end), 50%, p12 (a page); FILE:PLACE is the "
     "same"},
    {"--find TEXT, +/TEXT", "begin with the first place of a text"},
    {"--find-hex DIGITS", "begin with the first place of bytes"},
    {"--service", "take commands from other programs, and show no window before one asks for it"},
    {"--send COMMANDS",
     "send a command string to the viewer that was started last; - sends each line of standard input. Exits "
     "with 0 "
     "when it was accepted, 1 when not, 2 when no viewer takes commands"},
    {"--to PROCESS", "send it to the viewer of that process"},
    {"--list", "list the viewers that take commands, with their files"},
    {"--help", "tell the options"},
    {"--version", "tell the version"},
};

// Applies the letters in a fixed order, whatever the order typed, so that R wins over H and H over T. A
// format comes with its stored word, and the other letters change that of the format in use alone. The
// letters D, M, N, V and X take effect elsewhere.
void ApplyOptionLetters(const CommandLineWords& line, FormatOptions& options, AdvancedKeys& keys);
