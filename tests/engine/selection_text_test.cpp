// The text of a copied selection, in the three formats, at the limits, and on files that change.
#include "engine/selection_text.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/hex_format.h"
#include "engine/raw_format.h"
#include "engine/text_format.h"
#include "platform/posix/file_counters.h"
#include "tests/cell_text.h"
#include "tests/memory_origin.h"
#include "tests/scratch.h"

namespace {

struct Selected {
  explicit Selected(const std::string& content, std::uintmax_t length = 0) : scratch(content) {
    if (length > 0) std::filesystem::resize_file(scratch.Path(), length);
    EXPECT_EQ(source.Open(scratch.Path().c_str()), 0);
  }
  std::string Copied(FilePos from, FilePos to, FormatProc format = FormatText,
                     ViewOptions options = VO_EXPANDTABS, std::int32_t lineLen = 80) {
    const SelectionText text = FormatSelection(from, to, source, {format, options, lineLen});
    EXPECT_EQ(text.failure, CopyFailure::none);
    return text.text ? BytesOf(text.Cells()) : "nothing";
  }
  ScratchFile scratch;
  ByteSource source;
};

TEST(SelectionText, IsWhatTheViewShows) {
  Selected tabs("one\ttab\r\ntwo\r\nthree\r\n");
  EXPECT_EQ(tabs.Copied(0, 9), "one     tab\r\n");
  EXPECT_EQ(tabs.Copied(0, 10), "one     tab\r\ntwo\r\n");
  EXPECT_EQ(tabs.Copied(5, 5), "ab\r\n");
  EXPECT_EQ(tabs.Copied(-7, -1), "one     tab\r\ntwo\r\nthree\r\n");
  EXPECT_EQ(tabs.Copied(9, 12, FormatHex),
            "000009  74776F0D 0A746872 65650D0A           two\xB7\xB7three\xB7\xB7\r\n");
  EXPECT_EQ(tabs.Copied(1, 5, FormatRaw, 0, 4), "ne\xA4t\r\n");
  Selected longFile("", 0x1000002);
  EXPECT_EQ(longFile.Copied(0xFFFFFC, 0x1000001, FormatHex, VO_HEXDIGITS, 22),
            "0FFFFFC 00000000  \xB7\xB7\xB7\xB7\r\n1000000 0000      \xB7\xB7\r\n");
  EXPECT_EQ(tabs.Copied(tabs.source.Length(), -1), "nothing");
}

TEST(SelectionText, EndsAtItsLimitAndReadsWhatItNeeds) {
  std::string content(40102, 'y');
  content[100] = content.back() = '\n';
  Selected lines(content);
  const std::string text = lines.Copied(0, -1, FormatText, VO_WRAP, 30000);
  EXPECT_EQ(text.size(), 32759U);
  EXPECT_EQ(text.substr(text.size() - 4), "yy\r\n");
  Selected huge("start\n", std::uintmax_t{64} << 30);
  for (const FormatProc format : {FormatRaw, FormatHex, FormatText}) {
    ASSERT_EQ(huge.source.Open(huge.scratch.Path().c_str()), 0);
    const std::int64_t before = CountersOfFiles().bytesRead;
    EXPECT_GT(FormatSelection(0, huge.source.Length() - 1, huge.source, {format, 0, 80}).length, 32600);
    EXPECT_LE(CountersOfFiles().bytesRead - before, 4 * kSliceBytes) << "whatever the size of the selection";
  }
}

// In a line longer than a slice, the copy has the rows that the view shows, and loses no byte.
TEST(SelectionText, CopiesRowsOfALongLine) {
  std::string content;
  while (content.size() < 300000)
    content += std::to_string(content.size()) + ",";
  std::string text = Selected(content).Copied(160000, 160000 + 20000);
  std::erase_if(text, [](char c) { return c == '\r' || c == '\n'; });
  EXPECT_EQ(text.substr(0, 20000), content.substr(160000, 20000));
}

TEST(SelectionText, TellsOfAFailure) {
  Selected lines("abc\n");
  EXPECT_EQ(FormatSelection(0, -1, lines.source, {FormatHex, 0, 21}).failure, CopyFailure::format);
  MemoryFile failing{.bytes = "abc\n"};
  ByteSource source(std::make_unique<MemoryOrigin>(failing));
  ASSERT_EQ(source.Open(""), 0);
  failing.failure = EIO;
  const SelectionText gone = FormatSelection(0, -1, source, {FormatRaw, 0, 80});
  EXPECT_EQ(gone.failure, CopyFailure::read);
  EXPECT_EQ(gone.length, 0);
}

}  // namespace
