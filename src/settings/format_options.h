// How a file is shown: the format, the option word of each format, the character code, lengths, bars, font
// and the window's rectangle. One record, which the main window's state includes; knows no window.
#pragma once

#include <cstdint>
#include <span>

#include "engine/view_records.h"
#include "platform/file.h"
#include "platform/win32.h"

// Values of FormatIndex.
inline constexpr std::int32_t kFormatText = 0;
inline constexpr std::int32_t kFormatHex = 1;
inline constexpr std::int32_t kFormatRaw = 2;
inline constexpr std::int32_t kFormats = 3;
inline constexpr const char* kFormatNames[kFormats] = {"Text", "Hex Dump", "Raw Text"};

// Values of CharCode.
inline constexpr std::int32_t kCodeAnsi = 0;
inline constexpr std::int32_t kCodeAscii = 1;
inline constexpr std::int32_t kCodeEbcdic = 2;
inline constexpr std::int32_t kCodeAutomatic = 3;  // by the file; ANSI where that does not tell
inline constexpr std::int32_t kCodeUtf8 = 4;
inline constexpr std::int32_t kCodeUtf16Le = 5;
inline constexpr std::int32_t kCodeUtf16Be = 6;
inline constexpr std::int32_t kCodes = 7;
inline constexpr const char* kCodeNames[kCodes] = {"ANSI",  "ASCII",    "EBCDIC",  "Automatic",
                                                   "UTF-8", "UTF-16LE", "UTF-16BE"};
// The order in which they are offered.
inline constexpr std::int32_t kCodeOrder[kCodes] = {kCodeAutomatic, kCodeAnsi,    kCodeAscii,  kCodeEbcdic,
                                                    kCodeUtf8,      kCodeUtf16Le, kCodeUtf16Be};

// Values of VertScroll and HorzScroll.
inline constexpr std::int8_t kBarNever = 0;
inline constexpr std::int8_t kBarAlways = 1;
inline constexpr std::int8_t kBarWhenNeeded = 2;

// A bit of the option word that is kept and loaded with it and read by nobody.
inline constexpr ViewOptions kUnusedOption = 0x0002;

// The description of the view font before anything was loaded: its height is still to be worked out.
constexpr LOGFONTA DefaultLogFont() {
  LOGFONTA font{};
  font.lfCharSet = 1;  // the default character set
  const char face[] = "Courier New";
  for (std::size_t i = 0; i < sizeof face; ++i)
    font.lfFaceName[i] = face[i];
  return font;
}

struct FormatOptions {
  std::int32_t FormatIndex = kFormatText;  // bounded to 0..2 before each use
  ViewOptions StoredFlags[kFormats] = {0x60, 0x03, 0x41};
  ViewOptions FormatFlags = 0x60;  // word of the format in use
  std::int32_t CharCode = kCodeAutomatic;
  std::int32_t LineLength = 256;  // characters of a line with VO_FIXEDLEN
  std::int8_t VertScroll = kBarWhenNeeded;
  std::int8_t HorzScroll = kBarWhenNeeded;
  std::int32_t EscExit = 0;  // Esc closes the program; else it minimizes the window
  std::int32_t SavePos = 0;  // saving the options saves the window's rectangle too
  char FontFace[LF_FACESIZE] = "Courier New";
  std::int32_t FontPoints = 10;
  // What fonts are made from. A height below 0 is in pixels; 0 or above: to be worked out from FontPoints.
  LOGFONTA ViewLogFont = DefaultLogFont();
  std::int32_t FrozenColumns = 0;  // characters at the left that stay in place
  std::int32_t WindowX = CW_USEDEFAULT;
  std::int32_t WindowY = 0;
  std::int32_t WindowW = CW_USEDEFAULT;
  std::int32_t WindowH = 0;
};

// The numbers of the group, in the order of their keys in the profile. Number 0 to 2 of the option words come
// in front of them, and take any 32 bits.
struct FormatNumber {
  // What becomes of a number out of the bounds. All but the first look at the number in another way before.
  enum class Reading : std::uint8_t { nearest, negativeIsLarge, lowByte, elseAbsent };
  const char* key;
  std::int32_t absent;
  std::int32_t least, most;
  Reading reading;
  std::int32_t (*get)(const FormatOptions& options);
  void (*set)(FormatOptions& options, std::int32_t value);
};
[[nodiscard]] std::span<const FormatNumber> FormatNumbers();

// Bounds of the numbers within texts: the points of the font, and the sides of the window.
inline constexpr std::int32_t kLeastPoints = 1;
inline constexpr std::int32_t kMostPoints = 240;
inline constexpr std::int32_t kLeastSide = 64;  // pixels

inline constexpr std::int32_t kMostFrozen = 255;  // columns

// Writes CharCode into all four option words: VO_ASCII and VO_EBCDIC go, and the one it names comes.
void ApplyCharCode(FormatOptions& options);

// The option word of the format in use, with the code in which the bytes of a file are to be read whose code
// was found to be `fileCode` (see ViewFile::Fcode).
[[nodiscard]] ViewOptions OptionsFor(const FormatOptions& options, ViewOptions fileCode);

// The code, of the values of CharCode, in which that option word reads bytes.
[[nodiscard]] std::int32_t CodeInUse(ViewOptions options);

// Reads the format group from a section of the profile, bounded. Absent keys stand for values that are not
// the initial ones of the record, which hold only until something is loaded; an absent option word alone
// keeps what it holds. The text word gains VO_FORMFEED. Also sets the tab length of the text format.
void LoadFormat(const char* profile, const char* section, FormatOptions& options);

// Reads the window's rectangle. Where it is absent, or has no size, the system places the window.
void LoadWindowPos(const char* profile, const char* section, FormatOptions& options);

// Moves and sizes the window's rectangle so that all of it lies within `screen`, and it is no smaller than
// kLeastSide. What the system is to choose stays so.
void FitWindowTo(const RECT& screen, FormatOptions& options);

// Writes the group. The rectangle of the window is written only when one is given and SavePos is set. 0, or
// why it failed.
[[nodiscard]] FileError SaveFormat(const char* profile, const char* section, const FormatOptions& options,
                                   const RECT* window);
