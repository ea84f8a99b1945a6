// How fast the three formats turn bytes into lines, and what a load costs in a file that is too large to be
// held. Bytes per second count the bytes of the file that the lines cover, not the characters made; each
// format stands beside a memcpy of the same bytes in the same run.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "codes/decoders.h"
#include "engine/hex_format.h"
#include "engine/raw_format.h"
#include "engine/text_format.h"
#include "engine/view_loader.h"
#include "engine/view_run.h"

namespace {

namespace fs = std::filesystem;

constexpr std::int32_t kLineLen = 120;

// Lines as a busy server's log has them: a time, a level, a source and a message of very mixed length.
std::string LogText(std::size_t size) {
  static constexpr const char* kLevels[] = {"INFO ", "WARN ", "DEBUG", "ERROR"};
  static constexpr const char* kWords[] = {
      "request", "accepted", "from",    "10.1.20.7", "worker",     "queue", "timeout", "retry", "flushed",
      "bytes",   "to",       "segment", "index",     "checkpoint", "done",  "in",      "ms",    "status=200"};
  std::mt19937 random(1);
  std::string text;
  for (int line = 0; text.size() < size; ++line) {
    char head[80];
    std::snprintf(head, sizeof head, "2024-03-%02d %02d:%02d:%02d.%03u %s [thread-%u]", 1 + line / 86400 % 28,
                  line / 3600 % 24, line / 60 % 60, line % 60, static_cast<unsigned>(random() % 1000),
                  kLevels[random() % std::size(kLevels)], static_cast<unsigned>(random() % 16));
    text += head;
    const std::size_t words = 1 + random() % (random() % 20 == 0 ? 40 : 10);
    for (std::size_t i = 0; i < words; ++i) {
      text += i % 6 == 3 ? '\t' : ' ';
      text += kWords[random() % std::size(kWords)];
    }
    text += "\r\n";
  }
  text.resize(size);
  return text;
}

// The same with letters of a script, from `first` on, in the code of the options.
std::string ScriptText(char32_t first, ViewOptions code) {
  std::string text;
  for (const char byte : LogText(kSliceBytes)) {
    const bool isLetter = byte >= 'a' && byte <= 'z';
    const char32_t one = static_cast<char32_t>(byte) + (isLetter ? first - U'a' : 0);
    text += code == VO_UTF8 ? Utf8::Encode(one) : Utf16Le::Encode(one);
  }
  text.resize(kSliceBytes - 1);
  return text;
}

// Records as large as the view's own.
struct View {
  View() : entries(kViewLines), characters(kViewText), clusters(kViewText) {
    text.Tcluster = clusters.data();
    lines.Aline = entries.data();
    lines.Acnt = kViewLines;
    text.Tbuf = characters.data();
    text.Tlen = kViewText;
  }
  std::vector<LineEntry> entries;
  std::vector<Cell> characters;
  std::vector<CellCluster> clusters;
  LineArray lines;
  TextBuffer text;
};

// One pass over as much of a slice of 64 KB as a view holds; the bytes that its lines cover.
std::int64_t OnePass(FormatProc format, View& view, std::string& bytes, std::int32_t direction,
                     ViewOptions options) {
  const bool forward = direction == FILL_FORWARD;
  const auto size = static_cast<std::int32_t>(bytes.size());
  const FileSlice slice = {reinterpret_cast<std::uint8_t*>(bytes.data()), size, forward ? 0 : size};
  LineCursor cursor{view.lines.Aline, view.lines.Acnt, forward ? 0 : view.lines.Acnt - 1};
  view.text.Tend = 0;
  const FilePos pos = FilePos::At(slice.Soff);
  benchmark::DoNotOptimize(format(slice, cursor, view.text, pos, direction, options, kLineLen));
  benchmark::ClobberMemory();
  return forward ? cursor.Cend - FilePos() : pos - view.lines.Aline[cursor.Ccur].Lpos;
}

void BM_Format(benchmark::State& state, FormatProc format, std::int32_t direction, ViewOptions options) {
  View view;
  std::string bytes = LogText(kSliceBytes);
  std::int64_t covered = 0;
  for (auto _ : state)
    covered += OnePass(format, view, bytes, direction, options);
  state.SetBytesProcessed(covered);
  state.counters["bytes/pass"] =
      benchmark::Counter(static_cast<double>(covered), benchmark::Counter::kAvgIterations);
}

// memcpy of what one pass covers.
void BM_Memcpy(benchmark::State& state, FormatProc format, std::int32_t direction, ViewOptions options) {
  View view;
  std::string bytes = LogText(kSliceBytes);
  const std::int64_t covered = OnePass(format, view, bytes, direction, options);
  std::vector<char> target(bytes.size());
  for (auto _ : state) {
    std::memcpy(target.data(), bytes.data(), static_cast<std::size_t>(covered));
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * covered);
  state.counters["bytes/pass"] = static_cast<double>(covered);
}

constexpr ViewOptions kText = VO_EXPANDTABS | VO_FORMFEED;

#define QUORL_BENCH_FORMAT(name, ...)              \
  BENCHMARK_CAPTURE(BM_Format, name, __VA_ARGS__); \
  BENCHMARK_CAPTURE(BM_Memcpy, name, __VA_ARGS__)

QUORL_BENCH_FORMAT(text_forward, FormatText, FILL_FORWARD, kText);
QUORL_BENCH_FORMAT(text_forward_wrap, FormatText, FILL_FORWARD, kText | VO_WRAP);
QUORL_BENCH_FORMAT(text_backward, FormatText, FILL_BACKWARD, kText);
QUORL_BENCH_FORMAT(text_backward_wrap, FormatText, FILL_BACKWARD, kText | VO_WRAP);
QUORL_BENCH_FORMAT(hex_forward, FormatHex, FILL_FORWARD, 0);
QUORL_BENCH_FORMAT(hex_backward, FormatHex, FILL_BACKWARD, 0);
QUORL_BENCH_FORMAT(raw_forward, FormatRaw, FILL_FORWARD, 0);
QUORL_BENCH_FORMAT(raw_backward, FormatRaw, FILL_BACKWARD, 0);

void BM_FormatScript(benchmark::State& state, char32_t first, ViewOptions code, std::int32_t direction) {
  View view;
  std::string bytes = ScriptText(first, code);
  std::int64_t covered = 0;
  for (auto _ : state)
    covered += OnePass(FormatText, view, bytes, direction, kText | code);
  state.SetBytesProcessed(covered);
}
BENCHMARK_CAPTURE(BM_FormatScript, utf8_latin, U'a', VO_UTF8, FILL_FORWARD);
BENCHMARK_CAPTURE(BM_FormatScript, utf8_cyrillic, U'\u0430', VO_UTF8, FILL_FORWARD);
BENCHMARK_CAPTURE(BM_FormatScript, utf8_chinese, U'\u4E00', VO_UTF8, FILL_FORWARD);
BENCHMARK_CAPTURE(BM_FormatScript, utf8_chinese_backward, U'\u4E00', VO_UTF8, FILL_BACKWARD);
BENCHMARK_CAPTURE(BM_FormatScript, utf16_latin, U'a', VO_UTF16LE, FILL_FORWARD);

// A file of 8 GB, all hole but for a megabyte of text at each of 64 places. It takes 64 MB of disk.
class LargeFile {
 public:
  static constexpr ByteCount kLength = ByteCount{8} << 30;
  static constexpr ByteCount kStretches = 64;
  static constexpr ByteCount kStretchBytes = 1 << 20;

  LargeFile() {
    std::string name = (fs::temp_directory_path() / "quorl-bench-XXXXXX").string();
    folder_ = mkdtemp(name.data()) != nullptr ? name : std::string();
    if (folder_.empty()) return;
    path_ = folder_ / "large.log";
    const std::string text = LogText(kStretchBytes);
    std::ofstream out(path_, std::ios::binary);
    for (ByteCount i = 0; i < kStretches; ++i) {
      out.seekp(StretchStart(i));
      out.write(text.data(), kStretchBytes);
    }
    out.close();
    std::error_code error;
    fs::resize_file(path_, static_cast<std::uintmax_t>(kLength), error);
    ready_ = out.good() && !error;
  }
  ~LargeFile() {
    std::error_code ignored;
    if (!folder_.empty()) fs::remove_all(folder_, ignored);
  }
  LargeFile(const LargeFile&) = delete;
  LargeFile& operator=(const LargeFile&) = delete;

  static ByteCount StretchStart(ByteCount i) { return kLength / kStretches * i; }
  [[nodiscard]] bool Ready() const { return ready_; }
  [[nodiscard]] std::string Path() const { return path_.string(); }

 private:
  fs::path folder_;
  fs::path path_;
  bool ready_ = false;
};

enum class Place { text, hole };

void BM_LoadView(benchmark::State& state, FormatProc format, ViewOptions options, Place place) {
  static const LargeFile large;
  if (!large.Ready()) {
    state.SkipWithError("no room for the large file");
    return;
  }
  const auto file = std::make_unique<ViewFile>();
  const std::string path = large.Path();
  ByteSource source;
  View view;
  std::mt19937_64 random(3);
  for (auto _ : state) {
    const auto stretch = static_cast<ByteCount>(random() % LargeFile::kStretches);
    const auto within = static_cast<ByteCount>(random() % LargeFile::kStretchBytes);
    const FilePos pos = FilePos::At(LargeFile::StretchStart(stretch) + within +
                                    (place == Place::hole ? LargeFile::kLength / 128 : 0));
    FileError error = source.Open(path.c_str());
    const ViewStatus status =
        LoadView({pos, -1, 50, 2, {format, options, kLineLen}}, source, *file, view.lines, view.text);
    source.Close();
    if (error != 0 || (status & VS_FAILED) != 0) {
      state.SkipWithError("a load failed");
      break;
    }
  }
}
BENCHMARK_CAPTURE(BM_LoadView, text, FormatText, kText, Place::text)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_LoadView, text_wrap, FormatText, kText | VO_WRAP, Place::text)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_LoadView, hex, FormatHex, 0, Place::text)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_LoadView, raw, FormatRaw, 0, Place::text)->Unit(benchmark::kMicrosecond);
// A hole reads as zeros: one line of 127 MB, the worst that the text format can meet.
BENCHMARK_CAPTURE(BM_LoadView, text_in_a_hole, FormatText, kText, Place::hole)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_LoadView, text_wrap_in_a_hole, FormatText, kText | VO_WRAP, Place::hole)
    ->Unit(benchmark::kMicrosecond);

// Lines of 20,000 characters in a window of three screens' width, without wrap.
class LongLinesFile {
 public:
  LongLinesFile() {
    const int made = mkstemp(path_.data());
    if (made >= 0) FileClose(made);
    std::ofstream out(path_, std::ios::binary);
    for (int i = 0; i < 1000; ++i)
      out << std::string(20000, static_cast<char>('a' + i % 26)) << '\n';
  }
  ~LongLinesFile() { fs::remove(path_); }
  LongLinesFile(const LongLinesFile&) = delete;
  LongLinesFile& operator=(const LongLinesFile&) = delete;
  [[nodiscard]] const char* Path() const { return path_.c_str(); }

 private:
  std::string path_ = (fs::temp_directory_path() / "quorl-bench-XXXXXX").string();
};

void BM_LoadLongLines(benchmark::State& state) {
  static const LongLinesFile lines;
  const auto file = std::make_unique<ViewFile>();
  ByteSource source;
  const std::shared_ptr<ViewRun> run = MakeRun(RunSizeFor(50, 360));
  std::mt19937_64 random(3);
  for (auto _ : state) {
    const auto pos = FilePos::At(random() % 18000000);
    if (source.Open(lines.Path()) != 0) state.SkipWithError("cannot open the file");
    const LoadRequest request{pos, -1, 50, 2, {FormatText, kText, 360}};
    benchmark::DoNotOptimize(LoadView(request, source, *file, run->Lines, run->Text));
    source.Close();
  }
}
BENCHMARK(BM_LoadLongLines)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
