// The scan in memory: the wide road and the plain one against the standard library, on buffers that end with
// their last byte, so that the sanitizers see a read behind the end.
#include "search/byte_scan.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "search/search_engine.h"
#include "tests/search/plain_search.h"

namespace {

TEST(FindInBuffer, Examples) {
  using namespace std::string_literals;
  struct Case {
    std::string buffer;
    std::string key;
    bool exact;
    std::int32_t expected;
  };
  const Case cases[] = {
      {"", "a", true, -1},
      {"a", "a", true, 0},
      {"ab", "abc", true, -1},
      {"abc", "abc", true, 0},
      {"xxabc", "abc", true, 2},
      {"xxabd", "abc", true, -1},
      {"aaab", "aab", true, 1},
      {"one Two", "tWO", true, -1},
      {"one Two", "tWO", false, 4},
      {"ONE", "one", false, 0},
      // Only A to Z fold: not the characters that differ from others by the same bit.
      {"@[\\]^", "`{|}~", false, -1},
      {"`{|}~", "@[\\]^", false, -1},
      {"\xC4\xD6", "\xE4\xF6", false, -1},
      {"\x10\x11", "01", false, -1},
      {"x\0y\0\0z"s, "\0\0"s, true, 3},
      {"x\0y\0\0Z"s, "\0z"s, false, 4},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FindInBuffer(static_cast<std::int32_t>(c.buffer.size()), Bytes(c.buffer),
                           static_cast<std::int32_t>(c.key.size()), Bytes(c.key),
                           c.exact ? SEARCH_CASE : SEARCH_TEXT),
              c.expected)
        << c.buffer << " / " << c.key;
  }
}

// One random case: a buffer of few different bytes, and a key that is often a piece of it.
struct RandomCase {
  std::string buffer;
  std::string key;
  bool folds;
  std::int32_t from;
};

RandomCase MakeCase(std::mt19937& random) {
  // Letters of both cases and the bytes that differ from other bytes by the case bit alone.
  static const std::string kAlphabets[] = {
      "a", "aA", "abAB", "aZ@`[{", std::string("\0 0\x10", 4), "etaoinETAOIN \n"};
  const auto below = [&random](std::size_t bound) { return random() % bound; };
  const std::string& alphabet = kAlphabets[below(std::size(kAlphabets))];
  RandomCase c;
  c.buffer.resize(below(4) == 0 ? below(40) : below(700));
  for (char& byte : c.buffer)
    byte = alphabet[below(alphabet.size())];
  const std::size_t length = 1 + below(below(2) == 0 ? 4 : kSearchKeyBytes);
  if (c.buffer.size() >= length && below(3) != 0) {
    c.key = c.buffer.substr(below(c.buffer.size() - length + 1), length);
    if (below(3) == 0) c.key[below(length)] = alphabet[below(alphabet.size())];
    for (char& byte : c.key) {
      const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
      if (letter && below(4) == 0) byte = static_cast<char>(byte ^ 0x20);
    }
  } else {
    c.key.resize(length);
    for (char& byte : c.key)
      byte = alphabet[below(alphabet.size())];
  }
  c.folds = below(2) == 0;
  c.from = below(2) == 0 ? 0 : static_cast<std::int32_t>(below(c.buffer.size() + 1));
  return c;
}

// The kinds of registers that this processor has, each as the one that the wide road is to take.
std::vector<std::int64_t> RegisterKinds() {
  hwy::SetSupportedTargetsForTest(0);
  std::vector<std::int64_t> kinds;
  for (std::int64_t rest = hwy::SupportedTargets(); rest != 0; rest &= rest - 1)
    kinds.push_back(rest & -rest);
  return kinds;
}

void TakeRegisters(std::int64_t kind) {
  hwy::SetSupportedTargetsForTest(kind);
  hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

// QUORL_SEARCH_CASES in the environment asks for more cases, with a seed of their own.
TEST(ByteScan, WideAndPlainAgreeWithTheStandardLibrary) {
  EXPECT_TRUE(HasWideScan());
  const char* const wanted = std::getenv("QUORL_SEARCH_CASES");
  const long cases = wanted != nullptr ? std::atol(wanted) : 100000;
  std::mt19937 random(wanted != nullptr ? std::random_device{}() : 20240301u);
  const std::vector<std::int64_t> kinds = RegisterKinds();
  for (long i = 0; i < cases; ++i) {
    TakeRegisters(kinds[static_cast<std::size_t>(i) % kinds.size()]);
    const RandomCase c = MakeCase(random);
    const auto length = static_cast<std::int32_t>(c.buffer.size());
    const std::unique_ptr<std::uint8_t[]> buffer(new std::uint8_t[c.buffer.size()]);
    std::copy(c.buffer.begin(), c.buffer.end(), buffer.get());
    ByteKey key = MakeByteKey(Bytes(c.key), static_cast<std::int32_t>(c.key.size()), c.folds);
    if (random() % 2 == 0) ChooseFilter(key, buffer.get(), length);
    const std::int64_t expected = PlainFind(c.buffer, c.key, c.folds, c.from);
    std::int32_t refused = 0;
    const std::int32_t wide = FindBytesWide(key, buffer.get(), length, c.from, refused);
    const std::int32_t plain = FindBytesPlain(key, buffer.get(), length, c.from, refused);
    ASSERT_TRUE(wide == expected && plain == expected)
        << "wide " << wide << ", plain " << plain << ", expected " << expected << " in case " << i
        << "\nbuffer " << testing::PrintToString(c.buffer) << "\nkey " << testing::PrintToString(c.key)
        << ", folded " << c.folds << ", from " << c.from;
  }
  TakeRegisters(0);
}

// The filter is what keeps the scan fast: on text full of the key's bytes, few places may pass it.
TEST(ByteScan, TheFilterSuitsTheData) {
  struct Case {
    const char* unit;  // the text is many of it
    const char* key;
    std::int32_t mostRefused;
  };
  const Case cases[] = {
      {"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", "aaaaaaaaab", 0},
      {"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", "baaaaaaaaa", 0},
      // Each byte of the key is common. Together, u and e stand only where the key nearly does.
      {"the quick queue equates unique quotas, ", "quxe", 0},
      {"error 1: retry; error 2: retry; ", "error 3", 0},
  };
  for (const Case& c : cases) {
    std::string text;
    while (text.size() < 30000)
      text += c.unit;
    const std::string keyText = c.key;
    ByteKey key = MakeByteKey(Bytes(keyText), static_cast<std::int32_t>(keyText.size()), true);
    ChooseFilter(key, Bytes(text), static_cast<std::int32_t>(text.size()));
    std::int32_t refused = 0;
    EXPECT_EQ(FindBytes(key, Bytes(text), static_cast<std::int32_t>(text.size()), 0, refused), -1);
    EXPECT_LE(refused, c.mostRefused) << c.key;
  }
}

}  // namespace
