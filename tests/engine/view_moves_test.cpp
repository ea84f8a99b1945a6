// The laws of the view, held against a plain list of all rows of a file: whatever the file, the window and
// the road, the run shows neighbouring rows of that list, the screen is full, and each move ends where the
// list says. And what a move costs.
#include "engine/view_moves.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "codes/decoders.h"
#include "engine/byte_columns.h"
#include "engine/hex_format.h"
#include "engine/raw_format.h"
#include "engine/text_format.h"
#include "platform/unicode.h"
#include "tests/cell_text.h"
#include "tests/memory_origin.h"

namespace {

constexpr ViewOptions kText = VO_EXPANDTABS | VO_FORMFEED;

// All rows of a file in the text format: where they begin, and what stands in them as UTF-8. It looks at one
// character after the other from the start of the file.
class Rows {
 public:
  Rows(const std::string& bytes, ViewOptions options, std::int32_t lineLen)
      : size_(bytes.size()), options_(options), lineLen_(lineLen) {
    const auto* at = reinterpret_cast<const std::uint8_t*>(bytes.data());
    switch (options & VO_UNICODE) {
      case VO_UTF8:
        TakeCharacters<Utf8>(at);
        break;
      case VO_UTF16LE:
        TakeCharacters<Utf16Le>(at);
        break;
      case VO_UTF16BE:
        TakeCharacters<Utf16Be>(at);
        break;
      default:
        for (std::size_t i = 0; i < size_; ++i)
          characters_.push_back({i, at[i], CharacterKind::narrow});
    }
    unit_ = (options & (VO_UTF16LE | VO_UTF16BE)) != 0 ? 2 : 1;
    for (std::size_t i = 0; i < characters_.size();)
      i = AddLine(i);
  }
  // The index of the row that holds `pos`; of the last one behind the end.
  [[nodiscard]] std::int64_t Of(FilePos pos) const {
    return std::upper_bound(starts.begin(), starts.end(), pos) - starts.begin() - 1;
  }
  std::vector<FilePos> starts;
  std::vector<std::string> texts;

 private:
  struct Character {
    std::size_t at;
    char32_t character;
    CharacterKind kind;
  };
  template <typename Code>
  void TakeCharacters(const std::uint8_t* bytes) {
    for (std::size_t at = 0; at < size_;) {
      Decoded next = Code::Decode(bytes + at, bytes + size_);
      if (next.length == 0) next = {kNoCharacter, Code::kUnit};
      const bool isBad = next.character == kNoCharacter;
      characters_.push_back({at, isBad ? 0xFFFD : next.character,
                             isBad ? CharacterKind::format : KindOfCharacter(next.character)});
      at += static_cast<std::size_t>(next.length);
    }
  }
  [[nodiscard]] bool Is(std::size_t i, char32_t character) const {
    return i < characters_.size() && characters_[i].character == character;
  }
  [[nodiscard]] bool Breaks(std::size_t i) const { return Is(i, '\n') || Is(i, '\r'); }
  [[nodiscard]] std::size_t At(std::size_t i) const {
    return i < characters_.size() ? characters_[i].at : size_;
  }
  std::size_t AddLine(std::size_t start) {
    std::size_t end = start;
    while (end < characters_.size() && !Breaks(end))
      ++end;
    std::size_t next = std::min(end + 1, characters_.size());
    if (next > end && Breaks(next) && !Is(next, characters_[end].character)) ++next;
    const bool isLong = static_cast<std::int32_t>(At(next) - At(start)) > LongLineLimit(options_);
    if (next > end && At(next) + unit_ == size_ && Is(next, 26)) ++next;
    const auto step = static_cast<std::size_t>(LongLineStep(lineLen_));
    for (std::size_t at = start; at < end || at == start;) {
      if ((options_ & VO_PAGEGAP) != 0 && at < end && Is(at, '\f')) {
        AddRow(at, {});
        if (++at == end && end == characters_.size()) break;
        if (at == end) AddRow(at, {});  // the line break is the next row's
        continue;
      }
      std::string text;
      const std::size_t rowEnd = RowEnd(at, end, isLong ? (At(at) / step + 1) * step : size_, text);
      AddRow(at, text);
      if (((options_ & VO_WRAP) == 0 && !isLong) || at == end) break;
      at = rowEnd;
    }
    return next;
  }
  void AddRow(std::size_t i, const std::string& text) {
    starts.push_back(FilePos::At(At(i)));
    texts.push_back(text);
  }
  std::size_t RowEnd(std::size_t i, std::size_t end, std::size_t cut, std::string& text) const {
    std::int32_t column = 0;
    int marks = 0;  // that the last character still takes
    std::u32string shown;
    if (i < end && Is(i, '\f')) ++i;
    for (; i < end && At(i) < cut; ++i) {
      char32_t character = characters_[i].character;
      const CharacterKind kind = characters_[i].kind;
      if (character == '\t') {
        const std::int32_t stop = std::max(column, std::min(column - column % 8 + 8, lineLen_));
        shown.append(static_cast<std::size_t>(stop - column), U' ');
        column = stop;
        marks = 0;
        continue;
      }
      const bool joins = kind == CharacterKind::mark && marks > 0;
      const int width = joins ? 0 : kind == CharacterKind::wide ? 2 : 1;
      const bool half = lineLen_ == 1 && column == 0;
      if (column + width > lineLen_ && !half) break;
      const bool takesMarks = kind == CharacterKind::narrow || kind == CharacterKind::wide;
      marks = joins ? marks - 1 : kind == CharacterKind::mark ? 3 : takesMarks ? 4 : 0;
      column = std::min(column + width, lineLen_);
      if (kind == CharacterKind::control) character = character == '\f' ? 0x240C : 0xB7;
      shown += character;
    }
    text = CellsToUtf8(shown);
    return i;
  }
  std::size_t size_;
  std::size_t unit_ = 1;
  ViewOptions options_;
  std::int32_t lineLen_;
  std::vector<Character> characters_;
};

// The records of a view on a file in memory, moved as the window moves them.
struct View {
  explicit View(const std::string& bytes) : source(std::make_unique<MemoryOrigin>(file)) {
    file.bytes = bytes;
  }

  void Size(std::int32_t rows, std::int32_t lineLen) {
    request.rows = rows;
    request.style.lineLen = lineLen;
    spare = MakeRun(RunSizeFor(rows, lineLen));
    if (run == nullptr) run = MakeRun(RunSizeFor(rows, lineLen));
  }
  void Move(MoveKind kind, std::int64_t delta, FilePos position) {
    request.kind = kind;
    request.delta = delta;
    request.position = position;
    opens = file.opens, reads = file.reads, bytesRead = file.bytesRead;
    const AtHandAnswer atHand = MoveAtHand(request, shown, run->Lines);
    if (atHand.answer != AtHand::serve) {
      ASSERT_EQ(source.Open(""), 0);
      const MoveResult result = MoveWithLoads(request, atHand.answer == AtHand::serveToEnd,
                                              LinesOf(run->Lines), source, shown, *spare);
      source.Close();
      ASSERT_EQ(result.status, 0);
      if (!result.unchanged) {
        std::swap(run, spare);
        if (spare->Lines.Acnt != run->Lines.Acnt || spare->Text.Tlen != run->Text.Tlen)
          spare = MakeRun({run->Lines.Acnt, run->Text.Tlen});
      } else {
        run->Lines.Acur = atHand.top;
      }
    } else {
      run->Lines.Acur = atHand.top;
    }
    opens = file.opens - opens, reads = file.reads - reads, bytesRead = file.bytesRead - bytesRead;
    if (kind != MoveKind::load || position >= 0) request.held = Top();
  }
  [[nodiscard]] FilePos Start(std::int32_t i) const { return run->Lines.Aline[i].Lpos; }
  [[nodiscard]] FilePos Top() const { return Start(run->Lines.Acur); }
  [[nodiscard]] std::string Text(std::int32_t below) const {
    const LineEntry& line = run->Lines.Aline[run->Lines.Acur + below];
    return BytesOf(LineCells(line, run->Text));
  }

  MemoryFile file;
  ByteSource source;
  ViewFile shown;
  std::shared_ptr<ViewRun> run, spare;
  MoveRequest request{.style = {FormatText, kText, 80}};
  std::int64_t opens = 0, reads = 0, bytesRead = 0;  // of the last move
};

// The run is a part of the list without holes, and the screen is full unless the file ends.
void CheckRun(const View& view, const Rows& rows) {
  const LineArray& lines = view.run->Lines;
  ASSERT_TRUE(0 <= lines.Afirst && lines.Afirst <= lines.Acur && lines.Alast < lines.Acnt);
  ASSERT_LT(lines.Acur, lines.Alast);
  const auto first = static_cast<std::size_t>(rows.Of(view.Start(lines.Afirst)));
  const auto size = FilePos::At(view.file.bytes.size());
  for (std::int32_t i = lines.Afirst; i <= lines.Alast; ++i) {
    const std::size_t index = first + static_cast<std::size_t>(i - lines.Afirst);
    const FilePos expected = index < rows.starts.size() ? rows.starts[index] : size;
    ASSERT_EQ(view.Start(i), expected) << "line " << i - lines.Acur << " of the screen";
    if ((view.request.style.options & VO_UNICODE) == 0 || i == lines.Alast) continue;
    const std::string shown = CellsToUtf8(LineCells(lines.Aline[i], view.run->Text));
    const auto differs = std::ranges::mismatch(shown, rows.texts[index]).in1 - shown.begin();
    ASSERT_TRUE(shown == rows.texts[index])
        << "line " << i - lines.Acur << " of the screen, from character " << differs << " of " << shown.size()
        << " and " << rows.texts[index].size() << " on, flags " << lines.Aline[i].Lflags;
  }
  ASSERT_TRUE(view.Start(lines.Alast) == size || lines.Acur + view.request.rows <= lines.Alast);
}

std::string RandomText(std::mt19937& random) {
  static const std::int32_t kTypical[] = {0, 5, 40, 130, 900, 5000, 20000, 32758, 65533, 90000};
  static const std::string kBreaks[] = {"\n", "\n", "\r\n", "\r\n", "\r", "\n\r", "\n\n\r\n\r", "\f\n\f"};
  std::string text;
  const auto size = random() % 500000;
  const auto longest = 1 + random() % std::size(kTypical);
  const std::string& usual = kBreaks[random() % 4];
  const bool mixed = random() % 3 == 0;
  while (text.size() < size) {
    auto length = static_cast<std::size_t>(kTypical[random() % longest]);
    length += random() % 4 == 0 ? random() % 4 : random() % (length + 1);
    if (random() % 9 == 0) text += random() % 2 == 0 ? "\f" : "\t\t";
    for (std::size_t i = 0; i < length; ++i)
      text += static_cast<char>('a' + (text.size() >> 3) % 26);
    if (mixed && random() % 4 == 0 && !text.empty())
      text[random() % text.size()] = "\t\f\x1a\r"[random() % 4];
    text += mixed ? kBreaks[random() % std::size(kBreaks)] : usual;
  }
  if (random() % 3 == 0) text += "tail";
  if (random() % 5 == 0) text += '\x1a';
  return text;
}

// Moves as a user makes them, each with the row that it must lead to.
void MoveAround(View& view, const Rows& rows, std::mt19937& random, int moves) {
  const auto count = static_cast<std::int64_t>(rows.starts.size());
  const auto size = FilePos::At(view.file.bytes.size());
  std::int64_t top = 0;
  view.Move(MoveKind::load, 0, 0);
  const std::int64_t page = std::max(view.request.rows - 1, 1);
  const std::int64_t steps[] = {1, -1, page, -page, 3, -3, 7 * page, -7 * page, page, -page};
  for (int i = 0; i < moves; ++i) {
    const auto what = random() % 14;
    const FilePos before = view.Top();
    if (what < 10) {
      view.Move(MoveKind::move, steps[what], kNoPosition);
      top = std::clamp<std::int64_t>(top + steps[what], 0, count - 1);
    } else if (what == 10) {
      view.Move(MoveKind::move, 0, kFileEnd);
      top = count - 1;
    } else if (what == 11) {
      view.Move(MoveKind::load, 0, kNoPosition);
    } else {
      const FilePos position = FilePos::At(random() % static_cast<std::size_t>(size.Offset()));
      view.Move(what == 12 ? MoveKind::move : MoveKind::goTo, 0, position);
      top = rows.Of(position);
    }
    SCOPED_TRACE("move " + std::to_string(i) + " of kind " + std::to_string(what));
    ASSERT_LE(view.opens, 1);
    const LineArray& lines = view.run->Lines;
    const ByteCount span = view.Start(lines.Alast) - view.Start(lines.Afirst) + std::abs(view.Top() - before);
    const bool onePage = what < 4 || what > 7;
    if (onePage) ASSERT_LE(view.bytesRead, 3 * (span + kBlockBytes));
    ASSERT_EQ(rows.Of(view.Top()), top);
    ASSERT_EQ(view.Top(), rows.starts[static_cast<std::size_t>(top)]);
    CheckRun(view, rows);
    if (testing::Test::HasFatalFailure()) return;
  }
}

TEST(ViewMoves, TextIsOneListOfRowsWhateverTheWindow) {
  std::mt19937 random(20);
  const std::int32_t heights[] = {1, 2, 25, 70, 136, 271, 541, 1081};
  const std::int32_t widths[] = {1, 22, 80, 241, 723, 1923, 5763, 2000, 5000, 32767};
  for (int round = 0; round < 150; ++round) {
    const std::string text = RandomText(random);
    if (text.size() < 2) continue;
    View view(text);
    const std::int32_t height = heights[random() % std::size(heights)];
    const std::int32_t width = widths[random() % std::size(widths)];
    view.request.style.options = kText | (random() % 2 * VO_WRAP) | (random() % 3 == 0 ? VO_PAGEGAP : 0);
    view.Size(height, width);
    const std::int32_t used = UsableLineLen(width, height, view.run->Text.Tlen);
    SCOPED_TRACE("round " + std::to_string(round) + ", " + std::to_string(text.size()) + " bytes, " +
                 std::to_string(height) + " rows of " + std::to_string(width) + ", options " +
                 std::to_string(view.request.style.options));
    ASSERT_TRUE(used == width || std::int64_t{width} * (height + kSpareRows) > kMostText);
    MoveAround(view, Rows(text, view.request.style.options, used), random, 60);
    if (HasFatalFailure()) return;
  }
}

// A text whose letters are other characters, some of them wide, marks, or no characters.
std::string InCode(const std::string& text, std::mt19937& random, ViewOptions code) {
  constexpr char32_t kBad = 0xD900;  // half a pair
  const std::u32string all =
      U"ab\u00E9\u0436\u6F22\u0301\u0E33\u0E31\u0301\U0001F600\uAC00\u200B\u0007\u2500";
  std::u32string alphabet;
  while (alphabet.size() < 26)
    alphabet += random() % 40 == 0 ? kBad : all[random() % (alphabet.size() < 13 ? 4 : all.size())];
  std::string bytes;
  for (const char byte : text) {
    const char32_t one = byte >= 'a' && byte <= 'z' ? alphabet[static_cast<std::size_t>(byte - 'a')]
                                                    : static_cast<char32_t>(byte);
    bytes += code == VO_UTF8      ? Utf8::Encode(one)
             : code == VO_UTF16LE ? Utf16Le::Encode(one)
                                  : Utf16Be::Encode(one);
    if (random() % 5000 == 0 && code == VO_UTF8) bytes.pop_back();
  }
  if (random() % 3 == 0) bytes += '\xE3';
  return bytes;
}

TEST(ViewMoves, TextOfSeveralBytesACharacterToo) {
  std::mt19937 random(21);
  const ViewOptions codes[] = {VO_UTF8, VO_UTF8, VO_UTF16LE, VO_UTF16BE};
  const std::int32_t widths[] = {1, 2, 3, 22, 80, 241, 1923, 5000, 32767};
  for (int round = 0; round < 120; ++round) {
    const ViewOptions code = codes[random() % 4];
    const std::string text = InCode(RandomText(random), random, code);
    if (text.size() < 2) continue;
    View view(text);
    const std::int32_t width =
        round % 2 == 0 ? 1 + static_cast<std::int32_t>(random() % 200) : widths[random() % std::size(widths)];
    view.request.style.options =
        kText | code | (random() % 2 * VO_WRAP) | (random() % 3 == 0 ? VO_PAGEGAP : 0);
    view.Size(2 + static_cast<std::int32_t>(random() % 90), width);
    const std::int32_t used = UsableLineLen(width, view.request.rows, view.run->Text.Tlen);
    SCOPED_TRACE("round " + std::to_string(round) + ", " + std::to_string(text.size()) + " bytes, " +
                 std::to_string(view.request.rows) + " rows of " + std::to_string(width) + ", options " +
                 std::to_string(view.request.style.options));
    MoveAround(view, Rows(text, view.request.style.options, used), random, 40);
    if (HasFatalFailure()) return;
  }
}

// Hex Dump and Raw Text: rows of as many bytes, from the place that the view went to last.
TEST(ViewMoves, RowsOfFixedLengthKeepTheirGrid) {
  struct Case {
    FormatProc format;
    std::int32_t lineLen, bytes, rows;
  };
  const Case cases[] = {{FormatHex, 80, 16, 70},       {FormatHex, 22, 4, 541}, {FormatRaw, 80, 80, 25},
                        {FormatRaw, 32767, 32767, 40}, {FormatRaw, 1, 1, 1},    {FormatRaw, 5763, 5763, 541}};
  std::mt19937 random(4);
  const std::string bytes = RandomText(random) + std::string(3000000, 'x');
  const auto size = FilePos::At(bytes.size());
  for (const Case& c : cases) {
    View view(bytes);
    view.request.style = {c.format, 0, 1};
    view.Size(c.rows, c.lineLen);
    ByteCount phase = 0;
    std::int64_t row = 0;
    view.Move(MoveKind::load, 0, 0);
    for (int i = 0; i < 200; ++i) {
      const auto what = random() % 4;
      const FilePos position = FilePos::At(random() % static_cast<std::size_t>(size.Offset()));
      const std::int64_t delta = what == 1 ? c.rows : what == 2 ? -c.rows : random() % 2 == 0 ? 1 : -1;
      view.Move(what == 0 ? MoveKind::goTo : MoveKind::move, delta, what == 0 ? position : kNoPosition);
      SCOPED_TRACE("lines of " + std::to_string(c.lineLen) + ", move " + std::to_string(i));
      const LineArray& lines = view.run->Lines;
      // The rows of the grid are counted from the one that holds the file's first byte.
      if (what == 0) phase = (c.bytes - position.Offset() % c.bytes) % c.bytes;
      const std::int64_t last = (size.Offset() - 1 + phase) / c.bytes;
      row =
          what == 0 ? (position.Offset() + phase) / c.bytes : std::clamp<std::int64_t>(row + delta, 0, last);
      ASSERT_EQ(view.Top(), FilePos::At(std::max<ByteCount>(row * c.bytes - phase, 0)));
      for (std::int32_t k = lines.Afirst; k < lines.Alast; ++k) {
        const bool edge = view.Start(k) == 0 || view.Start(k + 1) == size;
        ASSERT_TRUE(edge || view.Start(k + 1) - view.Start(k) == c.bytes);
      }
      ASSERT_TRUE(view.Start(lines.Alast) == size || lines.Acur + c.rows <= lines.Alast);
      ASSERT_LE(view.opens, 1);
      ASSERT_LE(view.bytesRead, 3 * (std::int64_t{c.rows} * c.bytes * 2 + kBlockBytes));
    }
  }
}

// The cells of a file that has a column for each byte, but for the second halves of wide characters.
template <typename Code>
CellText ColumnsOf(const std::string& bytes) {
  CellText cells(bytes.size(), kControlSign);
  const auto* const begin = reinterpret_cast<const std::uint8_t*>(bytes.data());
  for (std::size_t at = 0; at < bytes.size();) {
    Decoded next = Code::Decode(begin + at, begin + bytes.size());
    if (next.length == 0) next = {kNoCharacter, Code::kUnit};
    const bool isBad = next.character == kNoCharacter;
    cells[at] = isBad ? kBadCell | begin[at] : ColumnCell(next.character, 0);
    at += static_cast<std::size_t>(next.length);
  }
  return cells;
}

TEST(ViewMoves, HexAndRawShowCharactersWhereTheyBegin) {
  std::mt19937 random(8);
  for (int round = 0; round < 60; ++round) {
    const ViewOptions codes[] = {VO_UTF8, VO_UTF16LE, VO_UTF16BE};
    const ViewOptions code = codes[round % 3];
    const std::string bytes = InCode(RandomText(random), random, code);
    if (bytes.empty()) continue;
    const CellText cells = code == VO_UTF8      ? ColumnsOf<Utf8>(bytes)
                           : code == VO_UTF16LE ? ColumnsOf<Utf16Le>(bytes)
                                                : ColumnsOf<Utf16Be>(bytes);
    const bool isHex = round % 2 == 0;
    View view(bytes);
    view.request.style = {isHex ? FormatHex : FormatRaw, code, 1};
    view.Size(20, isHex ? 80 : 1 + static_cast<std::int32_t>(random() % 150));
    view.Move(MoveKind::load, 0, 0);
    for (int i = 0; i < 30; ++i) {
      const auto what = random() % 3;
      const FilePos position = FilePos::At(random() % bytes.size());
      view.Move(what == 0 ? MoveKind::goTo : MoveKind::move, what == 1 ? 20 : -20,
                what == 0 ? position : kNoPosition);
      const LineArray& lines = view.run->Lines;
      for (std::int32_t k = lines.Afirst; k < lines.Alast; ++k) {
        const CellView row = LineCells(lines.Aline[k], view.run->Text);
        const auto count = static_cast<std::size_t>(view.Start(k + 1) - view.Start(k));
        if (isHex && view.Start(k) == 0 && count < 16) continue;  // a head that is blank
        // 8 columns of address, 9 for each group of four bytes, and a blank.
        const CellView shown = isHex ? row.substr(45, count) : row.substr(row.size() - count);
        for (std::size_t c = 0; c < count; ++c) {
          const std::size_t at = static_cast<std::size_t>(view.Start(k).Offset()) + c;
          const bool isTail = c > 0 && cells[at] == kControlSign && shown[c] == kWideTail &&
                              KindOfCharacter(shown[c - 1] & ~kCellKinds) == CharacterKind::wide;
          ASSERT_TRUE(isTail || shown[c] == cells[at]) << "round " << round << ", byte " << at;
        }
      }
    }
  }
}

// Pages that are filled up make a list of rows too: each page of fewer rows is followed by empty ones, which
// have the place of the line behind them, and the file's end by one row.
TEST(ViewMoves, PaddedPagesAreOneListOfRows) {
  std::mt19937 random(6);
  for (int round = 0; round < 40; ++round) {
    std::string text;
    const std::int32_t page = 5 + static_cast<std::int32_t>(random() % 60);
    while (text.size() < 60000) {
      for (auto lines = random() % static_cast<unsigned>(2 * page); lines > 0; --lines)
        text += "line " + std::to_string(text.size()) + std::string(random() % 90, '.') + "\n";
      text += "\f page " + std::to_string(text.size()) + "\n";
    }
    struct Row {
      FilePos pos;
      bool padding;
    };
    std::vector<Row> rows;
    std::int32_t count = 0;
    for (const FilePos start : Rows(text, kText, 200).starts) {
      const bool begins = start > 0 && text[static_cast<std::size_t>(start.Offset())] == '\f';
      for (; begins && count < page; ++count)
        rows.push_back({start, true});
      count = begins ? 1 : count + 1;
      rows.push_back({start, false});
    }
    for (; count <= page; ++count)  // the last page, of one line, and the row that ends the file
      rows.push_back({FilePos::At(text.size()), true});
    View view(text);
    view.request.padPageLength = page;
    view.Size(20 + static_cast<std::int32_t>(random() % 60), 200);
    view.Move(MoveKind::load, 0, 0);
    std::int64_t top = 0;
    const std::int64_t screen = view.request.rows - 1;
    const std::int64_t steps[] = {1, -1, screen, -screen, 7, -7};
    for (int i = 0; i < 80; ++i) {
      const std::int64_t step = steps[random() % std::size(steps)];
      view.Move(MoveKind::move, step, kNoPosition);
      top = std::clamp<std::int64_t>(top + step, 0, static_cast<std::int64_t>(rows.size()) - 1);
      const LineArray& lines = view.run->Lines;
      for (std::int32_t k = lines.Afirst; k < lines.Alast; ++k) {
        const LineEntry& line = lines.Aline[k];
        const Row& expected = rows.at(static_cast<std::size_t>(top + k - lines.Acur));
        ASSERT_TRUE(line.Lpos == expected.pos && ((line.Lflags & LF_PADDING) != 0) == expected.padding)
            << "round " << round << ", move " << i << ", row " << k - lines.Acur << " of the screen";
      }
      const bool atEnd = view.Start(lines.Alast) == FilePos::At(text.size());
      ASSERT_TRUE(atEnd || lines.Acur + view.request.rows <= lines.Alast);
    }
  }
}

// An ordinary move reads at most three blocks, and steps within the lines at hand read nothing.
TEST(ViewMoves, OrdinaryMovesCostAtMostThreeBlocks) {
  std::string text;
  for (int i = 0; text.size() < 4000000; ++i)
    text += "line " + std::to_string(i) + std::string(static_cast<std::size_t>(i % 150), '.') + "\n";
  View view(text);
  view.Size(70, 723);
  view.Move(MoveKind::load, 0, 0);
  const auto size = FilePos::At(text.size());
  std::mt19937 random(3);
  for (int i = 0; i < 3000; ++i) {
    const std::int64_t steps[] = {1, -1, 69, -69};
    const auto what = random() % 6;
    const FilePos position =
        what == 5 ? kFileEnd : FilePos::At(random() % static_cast<std::size_t>(size.Offset()));
    view.Move(what == 4 ? MoveKind::goTo : MoveKind::move, what < 4 ? steps[what] : 0,
              what < 4 ? kNoPosition : position);
    ASSERT_LE(view.opens, 1);
    ASSERT_LE(view.reads, 3) << what;
    if (view.opens == 0) ASSERT_EQ(view.reads, 0);
  }
  view.Move(MoveKind::goTo, 0, FilePos::At(text.size() / 2));
  for (const int delta : {1, 1, -1, 5, -3}) {
    view.Move(MoveKind::move, delta, kNoPosition);
    EXPECT_EQ(view.opens, 0);
  }
  view.Move(MoveKind::move, 0, kFileEnd);
  view.Move(MoveKind::move, 1, kNoPosition);
  EXPECT_EQ(view.opens, 1) << "whether the file has grown";
  EXPECT_EQ(view.reads, 0);
}

std::string Numbered(int count, int width) {
  std::string content;
  for (int i = 0; i < count; ++i) {
    std::string line = "line " + std::to_string(i) + " ";
    line.resize(static_cast<std::size_t>(width), '.');
    content += line + "\n";
  }
  return content;
}

TEST(ViewMoves, EachMoveSeesWhatWasAppended) {
  struct Case {
    const char* what;
    FilePos top;  // before the file grows; beyond the end: the last line
    MoveKind kind;
    std::int64_t delta;
    FilePos position;
    FilePos expected;
  };
  // 50 lines of 40 bytes and the head of a last one that has no end yet; then its rest and 50 lines more.
  const std::string before = Numbered(50, 39) + "line 50 ";
  const std::string after = Numbered(101, 39);
  const Case cases[] = {
      {"Down from the last line", kFileEnd, MoveKind::move, 1, kNoPosition, 51 * 40},
      {"Page Down from the last line", kFileEnd, MoveKind::move, 24, kNoPosition, 74 * 40},
      {"Page Down near the end", 40 * 40, MoveKind::move, 24, kNoPosition, 64 * 40},
      {"Up, with the end on the screen", 45 * 40, MoveKind::move, -1, kNoPosition, 44 * 40},
      {"End", 0, MoveKind::move, 0, kFileEnd, 100 * 40},
      {"the thumb at the old end", 0, MoveKind::move, 0, 50 * 40 + 8, 100 * 40},
      {"a place in the last line", 0, MoveKind::move, 0, 50 * 40 + 3, 50 * 40},
      {"a place behind it", 0, MoveKind::goTo, 0, 77 * 40, 77 * 40},
      {"a reload", 48 * 40, MoveKind::load, 0, kNoPosition, 48 * 40},
  };
  for (const Case& c : cases) {
    View view(before);
    view.Size(25, 200);
    view.Move(MoveKind::load, 0, 0);
    view.Move(MoveKind::move, 0, c.top);
    view.file.bytes = after;
    view.file.changed = 1;
    view.Move(c.kind, c.delta, c.position);
    EXPECT_EQ(view.Top(), c.expected) << c.what;
    CheckRun(view, Rows(after, kText, 200));
    if (view.Top() == 50 * 40) EXPECT_EQ(view.Text(0).size(), 39U) << c.what;
  }
}

TEST(ViewMoves, AFileThatShrinksIsShownAsItIs) {
  const std::string before = Numbered(20000, 39);
  const std::function<void(View&)> moves[] = {
      [](View& view) { view.Move(MoveKind::load, 0, kNoPosition); },
      [](View& view) { view.Move(MoveKind::move, 500, kNoPosition); },
      [](View& view) { view.Move(MoveKind::move, -900, kNoPosition); },
      [](View& view) { view.Move(MoveKind::goTo, 0, 555555); },
      [](View& view) { view.Move(MoveKind::move, 0, kFileEnd); },
  };
  for (const std::string& after : {Numbered(100, 39), std::string("x"), std::string()}) {
    for (std::size_t i = 0; i < 2 * std::size(moves); ++i) {
      View view(before);
      view.Size(30, 200);
      view.Move(MoveKind::load, 0, 0);
      view.Move(MoveKind::move, 0, 700000);
      view.file.bytes = after;
      view.file.number = 2;
      // It is cut before the length is asked for, or behind that.
      if (i % 2 == 1) view.file.missing = std::ssize(before) - std::ssize(after);
      moves[i / 2](view);
      if (testing::Test::HasFatalFailure()) return;
      EXPECT_EQ(view.shown.Flen, FilePos::At(after.size()));
      EXPECT_EQ(view.Start(view.run->Lines.Alast), FilePos::At(after.size()));
      if (!after.empty()) CheckRun(view, Rows(after, kText, 200));
    }
  }
}

TEST(ViewMoves, AFailureLeavesTheLinesAtHand) {
  View view(Numbered(20000, 39));
  view.Size(30, 200);
  view.Move(MoveKind::load, 0, 400000);
  const auto former = LinesOf(view.run->Lines).lines;
  ASSERT_EQ(view.source.Open(""), 0);
  view.file.failure = EIO;
  view.request.position = 0;
  const MoveResult result =
      MoveWithLoads(view.request, false, LinesOf(view.run->Lines), view.source, view.shown, *view.spare);
  EXPECT_EQ(result.status & VS_FAILED, VS_FAILED);
  EXPECT_EQ(result.error, EIO);
  EXPECT_EQ(
      std::memcmp(LinesOf(view.run->Lines).lines.data(), former.data(), former.size() * sizeof former[0]), 0);
}

}  // namespace
