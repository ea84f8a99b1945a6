#include "engine/char_map.h"

#include <gtest/gtest.h>

#include "platform/cells.h"

namespace {

TEST(CharMap, ShowsEachCodeInItsMap) {
  struct Case {
    ViewOptions options;
    int byte, shown;
  };
  // The table for printing, which keeps form feeds, must not stay with the view.
  const Case cases[] = {{0, 9, 164},          {0, 12, 240},
                        {VO_KEEPFF, 12, 12},  {0, 12, 240},
                        {VO_WRAP, 200, 200},  {VO_ASCII | VO_KEEPFF, 12, 12},
                        {VO_ASCII, 12, 240},  {VO_EBCDIC | VO_KEEPFF, 12, 183},
                        {VO_EBCDIC, 5, 183},  {VO_EBCDIC | VO_ASCII, 0xC1, 'A'},
                        {VO_EBCDIC, 64, ' '}, {VO_EBCDIC, 0x81, 'a'}};
  for (const Case& c : cases)
    EXPECT_EQ(GetCharMap(c.options)[c.byte], c.shown) << "options " << c.options << " byte " << c.byte;
  for (int byte = 32; byte < 256; ++byte)
    EXPECT_EQ(GetCharMap(VO_ASCII)[byte], OemCellCodes()[byte]) << byte;
}

TEST(CharMap, TheEbcdicInverseIsTheHighestCode) {
  const std::uint8_t* map = GetCharMap(VO_EBCDIC);
  for (int code = 0; code < 256; ++code) {
    if (map[code] == kControlMark) continue;
    EXPECT_GE(GetEbcdicInverse()[map[code]], code);
    EXPECT_EQ(map[GetEbcdicInverse()[map[code]]], map[code]);
  }
}

}  // namespace
