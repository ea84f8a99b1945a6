#include "tests/fuzz/fuzz_inputs.h"

#include <cstdio>
#include <cstdlib>
#include <random>

#include "engine/char_map.h"
#include "engine/hex_format.h"
#include "engine/raw_format.h"
#include "engine/text_format.h"

std::int64_t FuzzInputNumber = -1;

void FuzzFail(const char* file, int line, const char* condition) {
  std::fprintf(stderr, "%s:%d: broken: %s", file, line, condition);
  if (FuzzInputNumber >= 0) std::fprintf(stderr, " (input %lld)", static_cast<long long>(FuzzInputNumber));
  std::fprintf(stderr, "\n");
  std::abort();
}

std::vector<std::uint8_t> FuzzBytes(FuzzInput& input, std::int32_t most) {
  enum Kind { given, repeated, noise, text, wideLines, oneLine, nuls, kinds };
  const int kind = input.Byte() % kinds;
  const std::int32_t sizes[] = {0, 1, 2, 7, 100, 1000, 9000, most};
  const std::int32_t size = input.Between(0, std::min(most, input.OneOf(sizes)));
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
  const std::uint8_t seed[] = {input.Byte(), input.Byte(), input.Byte(), input.Byte(),
                               input.Byte(), input.Byte(), input.Byte(), input.Byte()};
  std::minstd_rand random(seed[0] + 256U * seed[1]);
  static constexpr std::uint8_t kSpecial[] = {'\n', '\r', '\n', '\n', '\f', '\t', '\t', 26};
  const std::uint32_t breakEvery = kind == wideLines ? 3000 : 30;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto chance = static_cast<std::uint32_t>(random() >> 4);
    switch (kind) {
      case given:
        bytes[i] = i < 200 ? input.Byte() : static_cast<std::uint8_t>(chance);
        break;
      case repeated:
        bytes[i] = seed[i % (1 + seed[7] % 7)];
        break;
      case noise:
        bytes[i] = static_cast<std::uint8_t>(chance);
        break;
      case text:
      case wideLines:
        bytes[i] = static_cast<std::uint8_t>('a' + chance % 26);
        if (chance % breakEvery == 0) bytes[i] = kSpecial[chance / breakEvery % 8];
        if (i > 0 && bytes[i - 1] == '\r' && chance % 3 != 0) bytes[i] = '\n';
        break;
      case oneLine:
        bytes[i] = static_cast<std::uint8_t>(chance % 200 == 0 ? '\t' : 'A' + i % 26);
        break;
      default:
        break;
    }
  }
  if (!bytes.empty() && seed[2] % 8 == 0) bytes.back() = kSpecial[seed[3] % 8];
  return bytes;
}

ViewOptions FuzzOptions(FuzzInput& input) {
  constexpr ViewOptions known = VO_WRAP | VO_EXPANDTABS | VO_ASCII | VO_EBCDIC | VO_KEEPFF | VO_FORMFEED |
                                VO_PAGEGAP | VO_FIXEDLEN | VO_BACKGROUND;
  return input.Word() & known;
}

std::int32_t FuzzLineLen(FuzzInput& input) {
  const std::int32_t usual[] = {INT32_MIN, -1,    0,     1,     2,     8,      21,       22,
                                35,        79,    80,    127,   217,   1000,   8000,     29483,
                                29484,     32759, 32760, 40000, 65535, 100000, INT32_MAX};
  return input.Chance(2) ? input.OneOf(usual) : input.Between(1, 300);
}

FormatProc FuzzRoutine(int format) {
  static constexpr FormatProc kRoutines[] = {FormatText, FormatHex, FormatRaw};
  return kRoutines[format];
}

namespace {

bool IsBreak(std::uint8_t byte) {
  return byte == 10 || byte == 13;
}

// Walks over what the characters of a text line stand for; the offset behind the last such byte.
FilePos CheckTextCharacters(const LineCheck& check, const KnownBytes& known, const LineEntry& line) {
  const std::uint8_t* map = GetCharMap(check.options);
  FilePos pos = line.Lpos;
  if ((line.Lflags & (LF_PAGEMARK | LF_PAGEGAP)) != 0) {
    FUZZ_CHECK((check.options & VO_FORMFEED) != 0 && pos < known.End() && known.At(pos) == kPageCharacter);
    ++pos;
  } else if (line.Lflags == LF_INCOMPLETE && (check.options & VO_FORMFEED) != 0 && line.Llen > 0 &&
             known.At(pos) == kPageCharacter &&
             static_cast<std::uint8_t>(check.text[line.Ltext]) != map[kPageCharacter]) {
    ++pos;  // going backward, a line that the text has no room for keeps no other flag
  }
  if ((line.Lflags & LF_PAGEGAP) != 0) FUZZ_CHECK(line.Llen == 0);
  for (std::int32_t column = 0; column < line.Llen;) {
    FUZZ_CHECK(pos < known.End() && !IsBreak(known.At(pos)));
    const char* shown = check.text + line.Ltext + column;
    if (known.At(pos) == 9 && (check.options & VO_EXPANDTABS) != 0) {
      const std::int32_t stop = column - column % TextTabLength + TextTabLength;
      for (; column < std::min(stop, line.Llen); ++column)
        FUZZ_CHECK(*shown++ == ' ');
    } else {
      FUZZ_CHECK(static_cast<std::uint8_t>(*shown) == map[known.At(pos)]);
      ++column;
    }
    ++pos;
  }
  return pos;
}

// Whether a text line whose characters end in front of `pos` may end at `next`.
bool TextEndsAt(const LineCheck& check, const KnownBytes& known, const LineEntry& line, FilePos pos,
                FilePos next) {
  if (next == pos) return true;
  // An end-of-file mark in front of a backward pass is not shown.
  if (pos + 1 == next && next <= known.End() && known.At(pos) == 26) return true;
  if ((line.Lflags & LF_PAGEGAP) != 0) return false;
  if ((line.Lflags & LF_TRUNCATED) != 0) {
    while (pos < known.End() && !IsBreak(known.At(pos)))
      ++pos;
  }
  // Tabs behind the full length vanish.
  if ((check.options & VO_EXPANDTABS) != 0 && line.Llen >= check.lineLen) {
    while (pos < known.End() && known.At(pos) == 9) {
      if (++pos == next) return true;
    }
  }
  if (pos == next) return true;
  if (pos >= known.End() || !IsBreak(known.At(pos))) return false;
  ++pos;
  // LF CR LF is LF CR and LF, or LF and CR LF, depending on where one comes from.
  if (pos == next || (pos + 1 == next && next == known.End() && known.At(pos) == 26)) return true;
  if (pos < known.End() && IsBreak(known.At(pos)) && known.At(pos) != known.At(pos - 1)) ++pos;
  if (pos + 1 == known.End() && known.At(pos) == 26 && next == known.End()) ++pos;
  return pos == next;
}

// Raw and hex: the characters, after a head of blanks if the line begins above the file.
void CheckBytesShown(const LineCheck& check, const KnownBytes& known, const LineEntry& line, FilePos next,
                     LineEnd end, bool headCut) {
  const std::uint8_t* map = GetCharMap(check.options);
  std::int32_t column = 0;
  if (check.format == 1) {
    std::int32_t groups = 16;
    while (13 * groups + 9 > check.lineLen)
      groups /= 2;
    column = 9 * groups + 9;
  }
  const std::int32_t shown = line.Llen - column;
  FUZZ_CHECK(shown > 0);
  std::int32_t blanks = 0;
  if (end != LineEnd::open) {
    FUZZ_CHECK(next > line.Lpos && next - line.Lpos <= shown);
    blanks = shown - static_cast<std::int32_t>(next - line.Lpos);
    FUZZ_CHECK(blanks == 0 || (headCut && line.Lpos == 0));
  } else if (headCut && line.Lpos == 0) {
    return;  // where its bytes begin is not known
  }
  const char* characters = check.text + line.Ltext + column;
  for (std::int32_t i = 0; i < shown; ++i) {
    const FilePos pos = line.Lpos + i - blanks;
    FUZZ_CHECK(pos < known.End());
    FUZZ_CHECK(static_cast<std::uint8_t>(characters[i]) == (i < blanks ? ' ' : map[known.At(pos)]));
  }
}

}  // namespace

void CheckLine(const LineCheck& check, const KnownBytes& known, const LineEntry& line, FilePos next,
               LineEnd end, bool headCut) {
  FUZZ_CHECK(line.Llen >= 0 && line.Llen <= std::max(check.lineLen, 1));
  FUZZ_CHECK(line.Lpos >= known.base && line.Lpos < known.End());
  if (check.format != 0) {
    CheckBytesShown(check, known, line, next, end, headCut);
    return;
  }
  const FilePos behind = CheckTextCharacters(check, known, line);
  if (end == LineEnd::open || (line.Lflags & LF_INCOMPLETE) != 0) return;
  if (end == LineEnd::overlap && (next < behind || (line.Lflags & LF_TRUNCATED) != 0)) return;
  FUZZ_CHECK(TextEndsAt(check, known, line, behind, next));
}

bool EndsAt(const LineCheck& check, const KnownBytes& known, const LineEntry& line, FilePos next) {
  return check.format != 0 || TextEndsAt(check, known, line, CheckTextCharacters(check, known, line), next);
}
