#include "tests/fuzz/fuzz_inputs.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string_view>

#include "engine/char_map.h"
#include "engine/hex_format.h"
#include "engine/raw_format.h"
#include "engine/text_format.h"
#include "tests/cell_text.h"

const FormatProc kFuzzRoutines[3] = {FormatText, FormatHex, FormatRaw};
std::int64_t FuzzInputNumber = -1;

void FuzzFail(const char* file, int line, const char* condition) {
  std::fprintf(stderr, "%s:%d: broken: %s (input %lld)\n", file, line, condition,
               static_cast<long long>(FuzzInputNumber));
  std::abort();
}

std::uint32_t FuzzInput::Word() {
  std::uint32_t word = 0;
  for (int i = 0; i < 4; ++i)
    word = word << 8 | Byte();
  return word;
}

std::vector<std::uint8_t> FuzzInput::FileBytes(std::int32_t most) {
  enum Kind { given, repeated, noise, text, coded, kinds };
  const int kind = Byte() % kinds;
  // Most inputs are small: what they find, large ones find more slowly.
  const std::int32_t sizes[] = {0, 1, 2, 7, 20, 50, 100, 100, 200, 200, 400, 400, 1000, 1000, 2000, 4000};
  const bool isLarge = Chance(200);
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(Between(0, isLarge ? most : OneOf(sizes))));
  static constexpr std::uint8_t kSpecial[] = {'\n', '\r', '\n', '\n', '\f', '\t', '\t', 26};
  const std::uint32_t distances[] = {30, 3000, 1U << 30};  // between those in a text
  const std::uint32_t distance = OneOf(distances);
  const std::size_t period = 1 + Byte() % 7;
  const std::uint32_t seed = Word();
  std::minstd_rand random(seed);
  static constexpr std::uint8_t kCoded[] = {'a',  '\n', '\n', 0xE6, 0xBC, 0xA2, 0xCC, 0x81, 0xD0,
                                            0xB6, 0xF0, 0x9F, 0x98, 0x80, 0,    0xD8, 0xDC, 0x30};
  // What lies behind the first bytes repeats them, but for a few bytes: made that way, large files cost
  // little.
  constexpr std::size_t kMade = 3000;
  for (std::size_t i = 0; i < std::min(bytes.size(), kMade); ++i) {
    const auto chance = static_cast<std::uint32_t>(random() >> 4);
    bytes[i] = static_cast<std::uint8_t>(chance);
    if (kind == given && i < 200) bytes[i] = Byte();
    if (kind == coded) bytes[i] = kCoded[(i % 3 == 0 ? chance : i) % std::size(kCoded)];
    if (kind == repeated && i >= period) bytes[i] = bytes[i - period];
    if (kind == text) {
      bytes[i] = static_cast<std::uint8_t>('a' + chance % 26);
      if (chance % distance == 0) bytes[i] = kSpecial[chance / distance % 8];
      if (i > 0 && bytes[i - 1] == '\r' && chance % 3 != 0) bytes[i] = '\n';
    }
  }
  for (std::size_t have = kMade; have < bytes.size(); have *= 2)
    std::memcpy(&bytes[have], bytes.data(), std::min(have, bytes.size() - have));
  for (int i = 0; bytes.size() > kMade && i < 20; ++i)
    bytes[random() % bytes.size()] = kSpecial[random() % 8];
  if (!bytes.empty() && seed % 8 == 0) bytes.back() = kSpecial[seed / 8 % 8];
  return bytes;
}

ViewOptions FuzzInput::Options() {
  const ViewOptions word = Word();
  const ViewOptions codes[] = {0, 0, VO_UTF8, VO_UTF16LE, VO_UTF16BE, VO_UTF8};
  return codes[(word >> 16) % std::size(codes)] |
         (word & (VO_WRAP | VO_EXPANDTABS | VO_ASCII | VO_EBCDIC | VO_KEEPFF | VO_FORMFEED | VO_PAGEGAP |
                  VO_FIXEDLEN | VO_BACKGROUND));
}

std::int32_t FuzzInput::LineLen() {
  const std::int32_t usual[] = {INT32_MIN, -1,  0,    1,     2,     8,     21,    22,    35,     79,
                                80,        127, 8000, 29483, 29484, 32759, 32760, 65535, 100000, INT32_MAX};
  return Chance(2) ? OneOf(usual) : Between(1, 300);
}

void FuzzInput::SetTabs() {
  const std::int32_t tabs[] = {8, 1, 4, 255};
  TextTabLength = OneOf(tabs);
}

namespace {

// Walks from `pos` over what the characters of a text line stand for; the offset behind the last such byte,
// or kNoPosition where a character stands for another byte.
FilePos WalkCharacters(const Shown& shown, const LineEntry& line, FilePos pos) {
  const Cell* map = GetCellMap(shown.options);
  const auto character = [&](std::int32_t column) { return shown.text[line.Ltext + column]; };
  for (std::int32_t column = 0; column < line.Llen; ++pos) {
    if (pos >= shown.End() || shown.BreakAt(pos)) return kNoPosition;
    if (shown.At(pos) == 9 && (shown.options & VO_EXPANDTABS) != 0) {
      const std::int32_t stop = column - column % TextTabLength + TextTabLength;
      for (; column < std::min(stop, line.Llen); ++column) {
        if (character(column) != ' ') return kNoPosition;
      }
    } else {
      if (character(column) != map[shown.At(pos)]) return kNoPosition;
      ++column;
    }
  }
  return pos;
}

// The same from the start of a line, behind the form feed that begins it.
FilePos CheckTextCharacters(const Shown& shown, const LineEntry& line) {
  const bool atMark = (shown.options & VO_FORMFEED) != 0 && shown.At(line.Lpos) == kPageCharacter;
  const bool marked = (line.Lflags & (LF_PAGEMARK | LF_PAGEGAP)) != 0;
  if (marked) FUZZ_CHECK(atMark);
  if ((line.Lflags & LF_PAGEGAP) != 0) FUZZ_CHECK(line.Llen == 0);
  FilePos behind = WalkCharacters(shown, line, line.Lpos + (marked ? 1 : 0));
  // Going backward, a line that the text has no room for keeps no other flag.
  if (behind < 0 && atMark && line.Lflags == LF_INCOMPLETE)
    behind = WalkCharacters(shown, line, line.Lpos + 1);
  FUZZ_CHECK(behind >= 0);
  return behind;
}

// Whether a text line whose characters end in front of `pos` may end at `next`.
bool TextEndsAt(const Shown& shown, const LineEntry& line, FilePos pos, FilePos next) {
  // An end-of-file mark in front of a backward pass is not shown.
  if (next == pos || (next == pos + 1 && shown.At(pos) == 26)) return true;
  if ((line.Lflags & LF_PAGEGAP) != 0) return false;
  if ((line.Lflags & LF_TRUNCATED) != 0) {
    while (pos < shown.End() && !shown.BreakAt(pos))
      ++pos;
  }
  // Tabs behind the full length vanish.
  if ((shown.options & VO_EXPANDTABS) != 0 && line.Llen >= shown.lineLen) {
    while (pos != next && shown.At(pos) == 9)
      ++pos;
  }
  if (pos == next) return true;
  if (!shown.BreakAt(pos)) return false;
  ++pos;
  // LF CR LF is LF CR and LF, or LF and CR LF, depending on where one comes from.
  const bool lastMark = next == shown.End() && shown.At(next - 1) == 26;
  if (pos == next || (lastMark && pos + 1 == next)) return true;
  if (shown.BreakAt(pos) && shown.At(pos) != shown.At(pos - 1)) ++pos;
  return pos == next || (lastMark && pos + 1 == next);
}

// The row's address, unless the row begins above the file, and at least one blank behind it.
void CheckAddress(const Shown& shown, const LineEntry& line, const HexColumns& hex, bool headCut) {
  char address[40];
  std::snprintf(address, sizeof address, "%032llX ", static_cast<unsigned long long>(line.Lpos.Offset()));
  const std::string row = BytesOf({shown.text + line.Ltext, static_cast<std::size_t>(line.Llen)});
  const std::string_view wanted = std::string_view(address).substr(32 - static_cast<std::size_t>(hex.digits));
  FUZZ_CHECK(row.substr(0, wanted.size()) == wanted || (headCut && line.Lpos == 0));
}

// Raw and hex: the characters, after a head of blanks if the line begins above the file.
void CheckBytesShown(const Shown& shown, const LineEntry& line, FilePos next, LineEnd end, bool headCut) {
  const Cell* map = GetCellMap(shown.options);
  std::int32_t column = 0;
  if (shown.format == 1) {
    const HexColumns hex = ColumnsOfHex(shown.options);
    std::int32_t groups = 16;
    while (13 * groups + 9 + hex.most > shown.lineLen)
      groups /= 2;
    column = 9 * groups + 9 + hex.extra;
    CheckAddress(shown, line, hex, headCut);
  }
  const std::int32_t count = line.Llen - column;
  FUZZ_CHECK(count > 0);
  std::int32_t blanks = 0;
  if (end != LineEnd::open) {
    FUZZ_CHECK(next > line.Lpos && next - line.Lpos <= count);
    blanks = count - static_cast<std::int32_t>(next - line.Lpos);
    FUZZ_CHECK(blanks == 0 || (headCut && line.Lpos == 0));
  } else if (headCut && line.Lpos == 0) {
    return;  // where its bytes begin is not known
  }
  for (std::int32_t i = 0; i < count; ++i) {
    const FilePos pos = line.Lpos + i - blanks;
    FUZZ_CHECK(pos < shown.End());
    FUZZ_CHECK(shown.text[line.Ltext + column + i] == (i < blanks ? U' ' : map[shown.At(pos)]));
  }
}

// What stands in codes of several bytes is the matter of other tests; here, that it can be drawn.
void CheckCells(const Shown& shown, const LineEntry& line) {
  for (std::int32_t i = 0; i < line.Llen; ++i) {
    const Cell cell = shown.text[line.Ltext + i];
    const Cell kind = cell & kCellKinds;
    if (kind == 0) FUZZ_CHECK(cell <= 0x10FFFF);
    if (kind == kClusterCell) FUZZ_CHECK(static_cast<std::int32_t>(cell & ~kCellKinds) < shown.clusters);
    if (kind == kBadCell) FUZZ_CHECK((cell & ~kCellKinds) <= 0xFFFF);
    if (kind == kWideTail)
      FUZZ_CHECK(cell == kWideTail && i > 0 && shown.text[line.Ltext + i - 1] != kWideTail);
  }
}

}  // namespace

HexColumns ColumnsOfHex(ViewOptions options) {
  const auto run = static_cast<std::int32_t>((options & VO_RUNDIGITS) >> 16);
  const auto file = static_cast<std::int32_t>((options & VO_FILEDIGITS) >> 20);
  return {6 + run, std::max(run - 1, 0), std::max({run - 1, file - 1, 0})};
}

bool CheckLine(const Shown& shown, const LineEntry& line, FilePos next, LineEnd end, bool headCut) {
  FUZZ_CHECK(line.Llen >= 0 && line.Llen <= std::max(shown.lineLen, 1));
  FUZZ_CHECK(line.Lpos >= shown.base && line.Lpos < shown.End());
  if ((shown.options & VO_UNICODE) != 0) {
    CheckCells(shown, line);
    return true;
  }
  if (shown.format != 0) {
    CheckBytesShown(shown, line, next, end, headCut);
    return true;
  }
  const FilePos behind = CheckTextCharacters(shown, line);
  const bool exact = TextEndsAt(shown, line, behind, next);
  const bool further = end == LineEnd::overlap && (next < behind || (line.Lflags & LF_TRUNCATED) != 0);
  FUZZ_CHECK(exact || further || end == LineEnd::open || (line.Lflags & LF_INCOMPLETE) != 0);
  return exact;
}
