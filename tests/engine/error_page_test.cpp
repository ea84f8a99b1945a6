#include "engine/error_page.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/cell_text.h"

namespace {

TEST(ErrorPage, SaysTheStatusAndTheNumbersAsFarAsThereIsRoom) {
  const std::string rule = std::string(41, '*') + "\n";
  const std::string page = rule +
                           "* PROGRAM ERROR OCCURRED\n"
                           "* Please note the following information:\n"
                           "* Status=102\n";
  const std::string rest =
      "* Fcur=-9223372036854775808, Flen=68719476736\n"
      "* Tlen=32760, Tend=4711\n"
      "* Press [Home] to get back to Quorl\n" +
      rule + " \n";
  const auto file = std::make_unique<ViewFile>();
  file->Fcur = INTPTR_MIN;
  file->Flen = 68719476736;
  for (const std::int16_t room : {std::int16_t{5}, std::int16_t{kViewLines}}) {
    std::vector<LineEntry> entries(static_cast<std::size_t>(room));
    std::vector<Cell> characters(kViewText);
    LineArray lines = {entries.data(), room, -3, 12, 32767};
    TextBuffer text = {characters.data(), kViewText, 4711};
    EXPECT_EQ(ShowErrorPage(VS_FAILED | VS_SHORT, *file, lines, text), 0);
    std::string shown;
    for (const LineEntry* line = lines.Aline; line->Llen != kSentinelLength; ++line) {
      shown += BytesOf(LineCells(*line, text)) + '\n';
      EXPECT_EQ(line->Lpos, FilePos::At(1));
      EXPECT_EQ(line->Lflags, LF_MESSAGE);
    }
    EXPECT_EQ(shown, room > 5 ? page + "* Acnt=1000, Afirst=12, Alast=32767, Acur=-3\n" + rest : page);
    EXPECT_EQ(lines.Aline[lines.Alast].Lpos, file->Flen);
  }
}

}  // namespace
