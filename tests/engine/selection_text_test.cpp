// The text of a copied selection, in the three formats, at the limits, and on files that change.
#include "engine/selection_text.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/hex_format.h"
#include "engine/raw_format.h"
#include "engine/text_format.h"
#include "tests/engine/scratch_file.h"

namespace {

ViewFile Open(const ScratchFile& scratch) {
  ViewFile file;
  scratch.Path().copy(file.Fname, sizeof file.Fname - 1);
  file.Flen = static_cast<FilePos>(std::filesystem::file_size(scratch.Path()));
  return file;
}

std::string Copied(ViewFile& file, FilePos from, FilePos to, FormatProc format = FormatText,
                   ViewOptions options = VO_EXPANDTABS, std::int32_t lineLen = 80) {
  const SelectionText text = FormatSelection(from, to, file, format, options, lineLen);
  EXPECT_EQ(text.failure, CopyFailure::none);
  return text.text ? std::string(text.text.get()) : "nothing";
}

TEST(SelectionText, IsWhatTheViewShows) {
  const ScratchFile scratch("one\ttab\r\ntwo\r\nthree\r\n");
  ViewFile file = Open(scratch);
  EXPECT_EQ(Copied(file, 0, 9), "one     tab\r\n");
  EXPECT_EQ(Copied(file, 0, 10), "one     tab\r\ntwo\r\n");
  EXPECT_EQ(Copied(file, 5, 5), "ab\r\n");
  EXPECT_EQ(Copied(file, -7, -1), "one     tab\r\ntwo\r\nthree\r\n");
  EXPECT_EQ(Copied(file, 9, 12, FormatHex),
            "000009  74776F0D 0A746872 65650D0A           two\xB7\xB7three\xB7\xB7\r\n");
  EXPECT_EQ(Copied(file, 1, 5, FormatRaw, 0, 4), "ne\xA4t\r\n");
  EXPECT_EQ(Copied(file, file.Flen, -1), "nothing");
}

TEST(SelectionText, EndsAtItsLimit) {
  const ScratchFile scratch(std::string(100, 'x') + "\n" + std::string(40000, 'y') + "\n");
  ViewFile file = Open(scratch);
  const std::string text = Copied(file, 0, -1, FormatText, VO_WRAP, 30000);
  EXPECT_EQ(text.size(), 32759U);
  EXPECT_EQ(text.substr(text.size() - 4), "yy\r\n");
}

// A selection of any size reads what its text needs, and no more.
TEST(SelectionText, ReadsWhatItNeeds) {
  const ScratchFile scratch("start\n");
  std::filesystem::resize_file(scratch.Path(), std::uintmax_t{64} << 30);
  ViewFile file = Open(scratch);
  const SelectionText text = FormatSelection(0, file.Flen - 1, file, FormatRaw, 0, 80);
  EXPECT_GT(text.length, 32700);
  EXPECT_EQ(file.Fcur, 0);
}

// In a line longer than a slice, the copy has the rows that the view shows, and loses no byte.
TEST(SelectionText, CopiesRowsOfALongLine) {
  std::string content;
  while (content.size() < 300000)
    content += std::to_string(content.size()) + ",";
  const ScratchFile scratch(content);
  ViewFile file = Open(scratch);
  std::string text = Copied(file, 160000, 160000 + 20000);
  std::erase_if(text, [](char c) { return c == '\r' || c == '\n'; });
  EXPECT_EQ(text.substr(0, 20000), content.substr(160000, 20000));
}

TEST(SelectionText, TellsOfAFailure) {
  ScratchFile scratch("abc\n");
  ViewFile file = Open(scratch);
  EXPECT_EQ(FormatSelection(0, -1, file, FormatHex, 0, 21).failure, CopyFailure::format);
  scratch.Remove();
  const SelectionText gone = FormatSelection(0, -1, file, FormatRaw, 0, 80);
  EXPECT_EQ(gone.failure, CopyFailure::read);
  EXPECT_EQ(gone.length, 0);
}

}  // namespace
