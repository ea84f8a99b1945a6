// The scan in memory: the wide road and the plain one against the standard library, on buffers that end with
// their last byte, so that the sanitizers see a read behind the end.
#include "search/byte_scan.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <cstdlib>
#include <memory>
#include <random>

#include "search/search_engine.h"
#include "tests/search/plain_search.h"

namespace {

std::int32_t Size(const std::string& text) {
  return static_cast<std::int32_t>(text.size());
}

// One random case: a buffer of few different bytes, and a key that is often a piece of it.
struct RandomCase {
  std::string buffer, key;
  bool folds;
  std::int32_t from;
};

RandomCase MakeCase(std::mt19937& random) {
  // Letters of both cases and the bytes that differ from other bytes by the case bit alone.
  static const std::string kAlphabets[] = {
      "a", "aA", "abAB", "aZ@`[{", std::string("\0 0\x10", 4), "etaoinETAOIN \n"};
  const auto below = [&random](std::size_t bound) { return random() % bound; };
  const std::string& alphabet = kAlphabets[below(std::size(kAlphabets))];
  const auto letters = [&](std::size_t length) {
    std::string text(length, ' ');
    for (char& byte : text)
      byte = alphabet[below(alphabet.size())];
    return text;
  };
  RandomCase c;
  c.buffer = letters(below(4) == 0 ? below(40) : below(700));
  const std::size_t length = 1 + below(below(2) == 0 ? 4 : 60);
  c.key = letters(length);
  if (c.buffer.size() >= length && below(3) != 0) {
    const char other = c.key[0];
    c.key = c.buffer.substr(below(c.buffer.size() - length + 1), length);
    if (below(3) == 0) c.key[below(length)] = other;
    for (char& byte : c.key) {
      const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
      if (letter && below(4) == 0) byte = static_cast<char>(byte ^ 0x20);
    }
  }
  c.folds = below(2) == 0;
  c.from = below(2) == 0 ? 0 : static_cast<std::int32_t>(below(c.buffer.size() + 1));
  return c;
}

// QUORL_SEARCH_CASES in the environment asks for more cases, with a seed of their own. Each kind of register
// that this processor has takes its turn.
TEST(ByteScan, WideAndPlainAgreeWithTheStandardLibrary) {
  EXPECT_TRUE(HasWideScan());
  const char* const wanted = std::getenv("QUORL_SEARCH_CASES");
  const long cases = wanted != nullptr ? std::atol(wanted) : 40000;
  std::mt19937 random(wanted != nullptr ? std::random_device{}() : 20240301u);
  hwy::SetSupportedTargetsForTest(0);
  const std::int64_t all = hwy::SupportedTargets();
  std::int64_t rest = 0;
  for (long i = 0; i < cases; ++i, rest &= rest - 1) {
    if (rest == 0) rest = all;
    hwy::SetSupportedTargetsForTest(rest & -rest);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    const RandomCase c = MakeCase(random);
    const std::unique_ptr<std::uint8_t[]> buffer(new std::uint8_t[c.buffer.size()]);
    std::copy(c.buffer.begin(), c.buffer.end(), buffer.get());
    ByteKey key = MakeByteKey(Bytes(c.key), Size(c.key), c.folds);
    if (random() % 2 == 0) ChooseFilter(key, buffer.get(), Size(c.buffer));
    const std::int64_t expected = PlainFind(c.buffer, c.key, c.folds, c.from);
    std::int32_t refused = 0;
    const std::int32_t wide = FindBytesWide(key, buffer.get(), Size(c.buffer), c.from, refused);
    const std::int32_t plain = FindBytesPlain(key, buffer.get(), Size(c.buffer), c.from, refused);
    const std::int32_t chosen = FindInBuffer(Size(c.buffer), buffer.get(), Size(c.key), Bytes(c.key),
                                             c.folds ? SEARCH_TEXT : SEARCH_CASE);
    ASSERT_TRUE(wide == expected && plain == expected && (c.from > 0 || chosen == expected))
        << "wide " << wide << ", plain " << plain << ", expected " << expected << " in case " << i
        << "\nbuffer " << testing::PrintToString(c.buffer) << "\nkey " << testing::PrintToString(c.key)
        << ", folded " << c.folds << ", from " << c.from;
  }
  hwy::SetSupportedTargetsForTest(0);
  hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

// The filter is what keeps the scan fast: on text full of the key's bytes, no place may pass it.
TEST(ByteScan, TheFilterSuitsTheData) {
  const std::pair<const char*, std::string> cases[] = {
      {"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", "aaaaaaaaab"},
      {"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", "baaaaaaaaa"},
      // Each byte of the key is common. Together, u and e stand only where the key nearly does.
      {"the quick queue equates unique quotas, ", "quxe"},
      {"error 1: retry; error 2: retry; ", "error 3"}};
  for (const auto& [unit, keyText] : cases) {
    std::string text;
    while (text.size() < 30000)
      text += unit;
    ByteKey key = MakeByteKey(Bytes(keyText), Size(keyText), true);
    ChooseFilter(key, Bytes(text), Size(text));
    std::int32_t refused = 0;
    EXPECT_EQ(FindBytes(key, Bytes(text), Size(text), 0, refused), -1);
    EXPECT_EQ(refused, 0) << keyText;
  }
}

}  // namespace
