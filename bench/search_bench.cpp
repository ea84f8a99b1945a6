// How fast a search runs through a file that the system has in memory, beside a bare read of the same file in
// slices of 32760 bytes. The two take turns, so that whatever else the machine does meets both.
// `of_bare_read` is the search's speed by the bare read's: 1 would be a search for nothing. Below that, the
// scan alone, wide and plain, on one slice.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "platform/file.h"
#include "search/byte_scan.h"
#include "search/search_engine.h"

namespace {

constexpr std::size_t kFileBytes = std::size_t{256} << 20;
constexpr std::int32_t kBareReadBytes = 32760;
constexpr const char* kLastWords = "the last words of the log: Xylophone";

// Lines as a busy server's log has them.
std::string LogText(std::size_t size) {
  static constexpr const char* kWords[] = {
      "request", "accepted", "from",    "10.1.20.7", "worker",     "queue", "timeout", "retry", "flushed",
      "bytes",   "to",       "segment", "index",     "checkpoint", "done",  "in",      "ms",    "status=200"};
  std::mt19937 random(1);
  std::string text;
  text.reserve(size + 1024);
  for (int line = 0; text.size() < size; ++line) {
    char head[80];
    std::snprintf(head, sizeof head, "2024-03-%02d %02d:%02d:%02d.%03u INFO [thread-%u]",
                  1 + line / 86400 % 28, line / 3600 % 24, line / 60 % 60, line % 60,
                  static_cast<unsigned>(random() % 1000), static_cast<unsigned>(random() % 16));
    text += head;
    for (std::size_t words = 1 + random() % 10; words > 0; --words) {
      text += ' ';
      text += kWords[random() % std::size(kWords)];
    }
    text += '\n';
  }
  text.resize(size);
  return text;
}

// The file is made once, warm from being written, and gone with the process.
class LogFile {
 public:
  LogFile() {
    std::string name = (std::filesystem::temp_directory_path() / "quorl_search_bench_XXXXXX").string();
    const int made = mkstemp(name.data());
    if (made < 0) std::abort();
    FileClose(made);
    std::string text = LogText(kFileBytes);
    text.replace(text.size() - std::strlen(kLastWords), std::string::npos, kLastWords);
    std::ofstream(name, std::ios::binary) << text;
    path_ = name;
  }
  ~LogFile() { std::remove(path_.c_str()); }
  LogFile(const LogFile&) = delete;
  LogFile& operator=(const LogFile&) = delete;
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

const std::string& TheFile() {
  static LogFile file;
  return file.Path();
}

void BareRead(const std::string& path) {
  static std::array<std::uint8_t, kBareReadBytes> slice;
  FileError error = 0;
  const FileHandle source = FileOpenShared(path.c_str(), error);
  std::int64_t position = 0;
  for (std::size_t read = 1; error == 0 && read > 0; position += static_cast<std::int64_t>(read)) {
    error = FileReadAt(source, position, slice.data(), slice.size(), read);
    benchmark::DoNotOptimize(slice.data());
  }
  FileClose(source);
}

template <typename Action>
double SecondsOf(Action action) {
  const auto begin = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

// Runs `search` and a bare read in turn; the best times are what the file takes when nothing else is going
// on.
template <typename Search>
void BesideABareRead(benchmark::State& state, Search search) {
  const std::string& path = TheFile();
  ByteSource source;
  double bestSearch = 1e9;
  double bestRead = 1e9;
  for (auto _ : state) {
    const double searched = SecondsOf([&] {
      if (source.Open(path.c_str()) == 0) search(source);
    });
    state.SetIterationTime(searched);
    bestSearch = std::min(bestSearch, searched);
    bestRead = std::min(bestRead, SecondsOf([&] { BareRead(path); }));
  }
  state.counters["best_GB/s"] = kFileBytes / bestSearch / 1e9;
  state.counters["bare_GB/s"] = kFileBytes / bestRead / 1e9;
  state.counters["of_bare_read"] = bestRead / bestSearch;
}

void SearchFor(benchmark::State& state, const char* keyText, std::uint16_t flags, bool isThere) {
  const std::string key = keyText;
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(key.data());
  LongJob job;
  BesideABareRead(state, [&](ByteSource& source) {
    const FilePos hit = SearchFile(source, 0, static_cast<std::int32_t>(key.size()), bytes, flags, job);
    if ((hit >= 0) != isThere) state.SkipWithError("the search is wrong");
  });
}

void MarkAllOf(benchmark::State& state, const char* key) {
  SearchState search;
  std::copy_n(key, std::strlen(key), search.SearchKey);
  search.SearchKeyLen = static_cast<std::int32_t>(std::strlen(key));
  search.SearchFlags = SEARCH_TEXT;
  LongJob job;
  BesideABareRead(state, [&](ByteSource& source) {
    std::vector<TagEntry> tags;
    benchmark::DoNotOptimize(MarkAll(source, search, tags, kTagSlots - 1, job));
  });
}

void ScanOnly(benchmark::State& state, const char* keyText, bool folds, bool wide) {
  static const std::string text = LogText(kBareReadBytes);
  const std::string keyString = keyText;
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  ByteKey key = MakeByteKey(reinterpret_cast<const std::uint8_t*>(keyString.data()),
                            static_cast<std::int32_t>(keyString.size()), folds);
  ChooseFilter(key, bytes, kBareReadBytes);
  std::int32_t refused = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(wide ? FindBytesWide(key, bytes, kBareReadBytes, 0, refused)
                                  : FindBytesPlain(key, bytes, kBareReadBytes, 0, refused));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * kBareReadBytes);
}

// The rare key's bytes are rare in the log, those of the common key are its most common letters; neither key
// stands in it. The last key stands once, at the very end.
constexpr const char* kRareKey = "ZQ%Jx";
constexpr const char* kCommonKey = "tested";
constexpr const char* kLastKey = "Xylophone";
constexpr std::uint16_t kExact = SEARCH_TEXT | SEARCH_CASE;
constexpr std::uint16_t kFolded = SEARCH_TEXT;
constexpr std::uint16_t kFoldedUtf8 = SEARCH_TEXT | VO_UTF8;

BENCHMARK_CAPTURE(SearchFor, rare_exact, kRareKey, kExact, false)->UseManualTime();
BENCHMARK_CAPTURE(SearchFor, rare_folded, kRareKey, kFolded, false)->UseManualTime();
BENCHMARK_CAPTURE(SearchFor, common_exact, kCommonKey, kExact, false)->UseManualTime();
BENCHMARK_CAPTURE(SearchFor, common_folded, kCommonKey, kFolded, false)->UseManualTime();
BENCHMARK_CAPTURE(SearchFor, at_the_end_exact, kLastKey, kExact, true)->UseManualTime();
BENCHMARK_CAPTURE(SearchFor, at_the_end_folded, "xYLOPHONE", kFolded, true)->UseManualTime();
// Text in UTF-8: k and s have forms of other lengths, "ks" has nothing else.
BENCHMARK_CAPTURE(SearchFor, utf8_common_folded, kCommonKey, kFoldedUtf8, false)->UseManualTime();
BENCHMARK_CAPTURE(SearchFor, utf8_cyrillic_folded, "\u041E\u0448\u0438\u0431\u043A\u0430", kFoldedUtf8, false)
    ->UseManualTime();
BENCHMARK_CAPTURE(SearchFor, utf8_nothing_steady_folded, "sks", kFoldedUtf8, false)->UseManualTime();
BENCHMARK_CAPTURE(MarkAllOf, no_hit, kCommonKey)->UseManualTime();
BENCHMARK_CAPTURE(MarkAllOf, letter_e, "e")->UseManualTime()->Iterations(20);
BENCHMARK_CAPTURE(ScanOnly, wide_exact, kCommonKey, false, true);
BENCHMARK_CAPTURE(ScanOnly, wide_folded, kCommonKey, true, true);
BENCHMARK_CAPTURE(ScanOnly, plain_exact, kCommonKey, false, false);
BENCHMARK_CAPTURE(ScanOnly, plain_folded, kCommonKey, true, false);

}  // namespace

BENCHMARK_MAIN();
