#include "platform/printing/pdf_document.h"

#include <sys/resource.h>

#include <array>
#include <cerrno>

#include "platform/posix/windows_1252.h"
#include "platform/printing/document_file.h"
#include "platform/printing/page_font.h"
#include "tests/scratch.h"

using namespace platform_printing;

namespace {

constexpr int kDpi = 600;
constexpr int kWidth = 4960;
constexpr int kHeight = 7016;
constexpr PixelRect kWholePage{0, 0, kWidth, kHeight};

// Keeps the bytes, and refuses what comes behind so many of them.
struct MemorySink : ByteSink {
  FileError Write(const void* data, std::size_t count) override {
    EXPECT_FALSE(refused || finished || aborts > 0) << "nothing behind an error or the end";
    if (bytes.size() + count > limit) {
      refused = true;
      return ENOSPC;
    }
    bytes.append(static_cast<const char*>(data), count);
    return 0;
  }
  FileError Finish() override {
    finished = true;
    return finishError;
  }
  void Abort() override { ++aborts; }

  std::string bytes;
  std::size_t limit = SIZE_MAX;
  FileError finishError = 0;
  bool refused = false;
  bool finished = false;
  int aborts = 0;
};

std::string OutputOf(const std::string& command) {
  FILE* const pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return "";
  std::string output;
  std::array<char, 4096> buffer{};
  for (std::size_t got = 0; (got = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
    output.append(buffer.data(), got);
  EXPECT_EQ(pclose(pipe), 0) << command;
  return output;
}

// Text of the document, as another program reads it.
std::string TextOf(const std::string& pdf) {
  const ScratchFile file(pdf);
  return OutputOf("pdftotext -layout '" + file.Path() + "' -");
}

std::unique_ptr<PageFont> Courier(int em = 58) {
  FontWish wish;
  wish.family = "Liberation Mono";
  wish.emPixels = em;
  return PageFont::Make(wish);
}

std::string Utf8Of(std::u32string_view text) {
  std::string utf8;
  for (const char32_t c : text) {
    if (c < 0x80) {
      utf8 += static_cast<char>(c);
    } else if (c < 0x800) {
      utf8 += static_cast<char>(0xC0 | (c >> 6));
      utf8 += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      utf8 += static_cast<char>(0xE0 | (c >> 12));
      utf8 += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      utf8 += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return utf8;
}

std::string PdfOfRows(const PageFont& font, const std::vector<std::u32string>& rows, const PixelRect& clip) {
  MemorySink sink;
  PdfDocument document(sink, kDpi, "rows");
  document.StartPage(kWidth, kHeight);
  int y = 200;
  for (const std::u32string& row : rows) {
    document.DrawRow(font, 200, y, row, font.Metrics().advance, {}, clip);
    y += font.Metrics().ascent + font.Metrics().descent;
  }
  EXPECT_EQ(document.EndPage(), 0);
  EXPECT_EQ(document.End(), 0);
  EXPECT_TRUE(sink.finished);
  EXPECT_EQ(sink.aborts, 0);
  return sink.bytes;
}

TEST(PdfDocument, EveryCharacterComesBackFromItsText) {
  const auto font = Courier();
  ASSERT_NE(font, nullptr);
  std::vector<std::u32string> rows;
  for (int head = 0x20; head < 0x100; head += 16) {
    std::u32string row = U"|";
    for (int low = 0; low < 16; ++low) {
      const char32_t character = UnicodeOfWindows1252(static_cast<std::uint8_t>(head + low));
      // Blanks of all kinds and the soft hyphen are for the reader's program to judge.
      if (character > 0x20 && (character < 0x7F || character > 0xA0) && character != 0xAD) row += character;
    }
    rows.push_back(row + U"|");
  }
  rows.push_back(U"|\u03A9\u2126\u0416\u2500\u0141\uFB01|");  // beyond the set, in the face itself
  rows.push_back(U"|a\u2713b\u26A0c|");                       // in other faces
  rows.push_back(U"|x\xE000y\x01z\x85|");                     // in none: a box, and a blank in the text
  std::string expected;
  for (const std::u32string& row : rows)
    expected += Utf8Of(row) + "\n";
  std::string text = TextOf(PdfOfRows(*font, rows, kWholePage));
  const std::string boxes = Utf8Of(rows.back());
  expected.replace(expected.size() - boxes.size() - 1, boxes.size(), "|x y z |");
  for (std::size_t mark = 0; (mark = text.find('\f')) != std::string::npos;)
    text.erase(mark);
  EXPECT_EQ(text, expected);
}

TEST(PdfDocument, MarksAndWideCharactersAreText) {
  const auto font = Courier();
  const CellRow row = CellsOfUtf8("|e\u0301|n\u0303\u0304|\u0418\u0306|");
  MemorySink sink;
  PdfDocument document(sink, kDpi, "");
  document.StartPage(kWidth, kHeight);
  document.DrawRow(*font, 200, 0, row.View(), font->Metrics().advance, {}, kWholePage);
  EXPECT_EQ(document.EndPage(), 0);
  EXPECT_EQ(document.End(), 0);
  EXPECT_EQ(TextOf(sink.bytes), "|e\u0301|n\u0303\u0304|\u0418\u0306|\n\f");
}

TEST(PdfDocument, TextKeepsToItsClipAndPageAndColumns) {
  const auto font = Courier();
  const int advance = font->Metrics().advance;
  const std::vector<std::u32string> rows = {U"0123456789abcdefghijklmnopqrst", U"          x         y"};
  // From the start of the fifth cell to the end of the tenth.
  const PixelRect clip{200 + 5 * advance, 0, 200 + 11 * advance, kHeight};
  EXPECT_EQ(TextOf(PdfOfRows(*font, rows, clip)).substr(0, 16), "56789a\n     x\n\f");
  // Far outside, in every direction: nothing, and no harm.
  MemorySink sink;
  PdfDocument document(sink, kDpi, "");
  document.StartPage(kWidth, kHeight);
  for (const int at : {-2'000'000'000, -100'000, 100'000, 2'000'000'000}) {
    document.DrawRow(*font, 0, at / 2, CellText(U"out"), advance, {}, kWholePage);
    document.DrawRow(*font, at / 2, 0, CellText(U"out"), advance, {}, kWholePage);
    document.Fill({at / 2, 0, at / 2 + 10, 10}, {1, 2, 3});
  }
  EXPECT_EQ(document.EndPage(), 0);
  EXPECT_EQ(document.End(), 0);
  EXPECT_EQ(TextOf(sink.bytes), "\f");
}

TEST(PdfDocument, APageOfTextIsSmallAndItsPaperFree) {
  const auto font = Courier();
  const int height = font->Metrics().ascent + font->Metrics().descent;
  constexpr int kPages = 50;
  std::int64_t sizes[2] = {};
  for (const bool ground : {false, true}) {
    MemorySink sink;
    PdfDocument document(sink, kDpi, "size");
    std::uint32_t state = 1;
    for (int page = 0; page < kPages; ++page) {
      document.StartPage(kWidth, kHeight);
      for (int row = 0; row < 60; ++row) {
        std::u32string text;
        for (int i = 0; i < 126; ++i)
          text += static_cast<char32_t>(U'a' + ((state = state * 1664525 + 1013904223) >> 24) % 26);
        const PixelRect rect{0, row * height, kWidth, (row + 1) * height};
        if (ground) document.Fill(rect, kPaperWhite);
        document.DrawRow(*font, 0, row * height, text, font->Metrics().advance, {}, rect);
      }
      EXPECT_EQ(document.EndPage(), 0);
    }
    EXPECT_EQ(document.End(), 0);
    sizes[ground ? 1 : 0] = document.BytesWritten();
  }
  EXPECT_LT(sizes[0] / kPages, 8192);
  EXPECT_EQ(sizes[0], sizes[1]);
}

TEST(PdfDocument, TellsTheFirstErrorAtThePageAndWritesNoMore) {
  const auto font = Courier();
  for (const std::size_t limit : {std::size_t{0}, std::size_t{5}, std::size_t{3000}, std::size_t{40000}}) {
    MemorySink sink;
    sink.limit = limit;
    FileError error = 0;
    int pages = 0;
    {
      PdfDocument document(sink, kDpi, "full");
      for (; error == 0 && pages < 1000; ++pages) {
        document.StartPage(kWidth, kHeight);
        for (int row = 0; row < 60; ++row) {
          const std::u32string text(100, U'a' + static_cast<char32_t>((row * 7 + pages) % 26));
          document.DrawRow(*font, 0, row * 80, text, font->Metrics().advance, {}, kWholePage);
        }
        const bool refusedBefore = sink.refused;
        error = document.EndPage();
        EXPECT_TRUE(sink.refused || error == 0);
        EXPECT_FALSE(refusedBefore);
      }
      EXPECT_EQ(error, ENOSPC) << limit;
      EXPECT_LT(pages, 1000);
      EXPECT_EQ(document.End(), ENOSPC);
    }
    EXPECT_FALSE(sink.finished);
    EXPECT_EQ(sink.aborts, 1);
  }
  // Given up, left alone, and refused at the very end.
  for (const int way : {0, 1, 2}) {
    MemorySink sink;
    sink.finishError = EDQUOT;
    {
      PdfDocument document(sink, kDpi, "\xFF no text");
      document.StartPage(kWidth, kHeight);
      if (way == 0) document.Abort();
      if (way == 2) {
        EXPECT_EQ(document.EndPage(), 0);
        EXPECT_EQ(document.End(), EDQUOT);
      }
    }
    EXPECT_EQ(sink.finished, way == 2);
    EXPECT_EQ(sink.aborts, way == 2 ? 0 : 1);
  }
}

TEST(PageFont, MetricsAreWholePixelsOfTheDevice) {
  // Liberation Mono: 2048 units, 1705 above the base line, 615 below, 1229 wide.
  const struct {
    int em, cell, ascent, descent, advance;
  } cases[] = {{100, 0, 83, 30, 60}, {58, 0, 48, 17, 35}, {0, 116, 85, 31, 61}, {1, 0, 1, 0, 1}};
  for (const auto& c : cases) {
    FontWish wish;
    wish.family = "Courier New";
    wish.emPixels = c.em;
    wish.cellPixels = c.cell;
    const auto font = PageFont::Make(wish);
    ASSERT_NE(font, nullptr);
    EXPECT_EQ(font->Metrics().ascent, c.ascent) << c.em;
    EXPECT_EQ(font->Metrics().descent, c.descent) << c.em;
    EXPECT_EQ(font->Metrics().advance, c.advance) << c.em;
    EXPECT_TRUE(font->Metrics().fixedPitch);
  }
  for (const char* family : {"No Such Family", "", "Liberation Sans", "\xFF\xFE"}) {
    FontWish wish;
    wish.family = family;
    wish.emPixels = 50;
    const auto font = PageFont::Make(wish);
    ASSERT_NE(font, nullptr) << family;
    EXPECT_EQ(font->Metrics().fixedPitch, std::string(family) != "Liberation Sans") << family;
    EXPECT_NE(font->GlyphOf(U'x').face, nullptr);
    EXPECT_EQ(font->GlyphOf(0xE000).face, nullptr);
  }
}

TEST(DocumentFile, StandsWholeOrNotAtAll) {
  const ScratchFolder folder;
  const auto put = [](DocumentFile& file, const std::string& text) {
    return file.Write(text.data(), text.size());
  };
  const std::string path = folder.Write("old.pdf", "former");
  ASSERT_EQ(chmod(path.c_str(), 0640), 0);
  ASSERT_EQ(symlink("old.pdf", folder.Path("link.pdf").c_str()), 0);
  {
    DocumentFile file;
    EXPECT_EQ(file.Begin(folder.Path("link.pdf")), 0);
    EXPECT_EQ(put(file, "new"), 0);
    EXPECT_EQ(ContentOf(path), "former") << "until the end";
    EXPECT_EQ(file.Finish(), 0);
    EXPECT_EQ(ContentOf(path), "new");
  }
  EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link.pdf")));
  EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms{0640});
  {
    DocumentFile file;
    EXPECT_EQ(file.Begin(path), 0);
    EXPECT_EQ(put(file, "given up"), 0);
    file.Abort();
    EXPECT_EQ(file.Begin(path), 0);
    EXPECT_EQ(put(file, "left"), 0);
  }
  EXPECT_EQ(ContentOf(path), "new");
  ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  ASSERT_EQ(symlink("nowhere", folder.Path("loose").c_str()), 0);
  const std::pair<std::string, FileError> refusals[] = {
      {folder.Path(), kFileOfWrongKind}, {folder.Path("pipe"), kFileOfWrongKind},
      {"/dev/null", kFileOfWrongKind},   {folder.Path("loose"), ENOENT},
      {folder.Path("no/file"), ENOENT},  {path + "/file", ENOTDIR}};
  for (const auto& [target, error] : refusals) {
    DocumentFile file;
    EXPECT_EQ(file.Begin(target), error) << target;
  }
  const std::string names = folder.Names();
  EXPECT_EQ(std::count(names.begin(), names.end(), ' '), 3) << names;
}

// Under the user's limit on the size of files, as on a full disk, the old file stays and nothing is left.
TEST(DocumentFile, AFullDiskLeavesTheOldFile) {
  const ScratchFolder folder;
  const std::string path = folder.Write("old.pdf", "former");
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit small{20000, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  {
    const auto font = Courier();
    DocumentFile file;
    EXPECT_EQ(file.Begin(path), 0);
    PdfDocument document(file, kDpi, "full");
    FileError error = 0;
    for (int page = 0; page < 1000 && error == 0; ++page) {
      document.StartPage(kWidth, kHeight);
      for (int row = 0; row < 60; ++row)
        document.DrawRow(*font, 0, row * 80, CellText(U"a row of text"), font->Metrics().advance, {},
                         kWholePage);
      error = document.EndPage();
    }
    EXPECT_EQ(error, EFBIG);
    EXPECT_EQ(document.End(), EFBIG);
  }
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
  EXPECT_EQ(ContentOf(path), "former");
  EXPECT_EQ(folder.Names(), "old.pdf");
}

}  // namespace
