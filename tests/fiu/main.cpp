// Random failures of open, stat and read, and short reads, under the engine, put in front of the C library by
// libfiu's preload library and, for what it has no point for, by this program: a move, a search, a copy or a
// step of the page index that fails says so and changes nothing, and one that succeeds is right.
//
//     LD_PRELOAD=fiu_posix_preload.so fiu_moves RUNS
#include <fcntl.h>
#include <fiu-control.h>
#include <fiu.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>

#include "engine/selection_text.h"
#include "engine/text_format.h"
#include "engine/view_moves.h"
#include "pageindex/page_index.h"
#include "search/search_engine.h"

// In place of the C library's own.
extern "C" int stat(const char* path, struct stat* status) noexcept {
  if (fiu_fail("quorl/stat") == 0) return fstatat(AT_FDCWD, path, status, 0);
  errno = EIO;
  return -1;
}
extern "C" int fstat(int file, struct stat* status) noexcept {
  if (fiu_fail("quorl/fstat") == 0) return fstatat(file, "", status, AT_EMPTY_PATH);
  errno = EIO;
  return -1;
}

namespace {

// Nothing here seeks: reads say where.
constexpr const char* kPoints[] = {"posix/io/oc/open", "posix/io/rw/pread", "posix/io/rw/pread/reduce",
                                   "quorl/stat", "quorl/fstat"};
constexpr const char* kNeedle = "needle";

[[noreturn]] void Break(const char* what, long run) {
  std::printf("fiu: BROKEN in run %ld: %s\n", run, what);
  std::exit(1);
}

// A file of numbered lines; a form feed begins each hundredth.
struct NumberedFile {
  explicit NumberedFile(std::mt19937& random) {
    while (bytes.size() < 300000) {
      starts.push_back(FilePos::At(bytes.size()));
      if (starts.size() % 100 == 0) bytes += '\f';
      bytes += "line " + std::to_string(starts.size()) + std::string(random() % 200, '.');
      if (random() % 300 == 0) bytes += kNeedle;
      bytes += '\n';
    }
    std::ofstream(path, std::ios::binary) << bytes;
  }
  ~NumberedFile() { std::remove(path.c_str()); }
  NumberedFile(const NumberedFile&) = delete;
  NumberedFile& operator=(const NumberedFile&) = delete;

  std::string path = "/tmp/quorl_fiu_" + std::to_string(getpid());
  std::string bytes;
  std::vector<FilePos> starts;
};

// Random failures while it lives, if `on`.
class Failures {
 public:
  Failures(bool on, float probability) : on_(on) {
    for (const char* point : kPoints) {
      if (on_) fiu_enable_random(point, EIO, nullptr, 0, probability);
    }
  }
  ~Failures() {
    for (const char* point : kPoints) {
      if (on_) fiu_disable(point);
    }
  }
  Failures(const Failures&) = delete;
  Failures& operator=(const Failures&) = delete;

 private:
  bool on_;
};

struct Counts {
  long moves = 0, failed = 0, searches = 0, failedSearches = 0, finds = 0, failedFinds = 0;
};

// The run is a part of the file without holes, and shows its characters.
void CheckRun(const ViewRun& run, const NumberedFile& file, long number) {
  const LineArray& lines = run.Lines;
  const auto at = std::lower_bound(file.starts.begin(), file.starts.end(), lines.Aline[lines.Afirst].Lpos);
  auto index = static_cast<std::size_t>(at - file.starts.begin());
  for (std::int32_t i = lines.Afirst; i < lines.Alast; ++i, ++index) {
    const LineEntry& line = lines.Aline[i];
    if (index >= file.starts.size() || line.Lpos != file.starts[index]) Break("a row is missing", number);
    const auto from =
        static_cast<std::size_t>(line.Lpos.Offset()) + ((line.Lflags & LF_PAGEMARK) != 0 ? 1 : 0);
    const std::string shown = CellsToUtf8(LineCells(line, run.Text));
    if (file.bytes.compare(from, shown.size(), shown) != 0) {
      Break("a row shows other characters", number);
    }
  }
}

struct View {
  explicit View(const NumberedFile& numbered) : file(numbered) {
    request.style = {FormatText, VO_EXPANDTABS | VO_FORMFEED, 300};
    request.rows = 40;
  }
  void Move(MoveKind kind, std::int64_t delta, FilePos position, bool fails, float probability,
            Counts& counts, long number) {
    request.kind = kind;
    request.delta = delta;
    request.position = position;
    const AtHandAnswer atHand = MoveAtHand(request, shown, run->Lines);
    if (atHand.answer == AtHand::serve) {
      run->Lines.Acur = atHand.top;
      return;
    }
    const RunLines before = LinesOf(run->Lines);
    MoveResult result;
    {
      const Failures failures(fails, probability);
      const FileError error = source.Open(file.path.c_str());
      result = error != 0 ? MoveResult{VS_FAILED, error, false}
                          : MoveWithLoads(request, atHand.answer == AtHand::serveToEnd, before, source, shown,
                                          *spare);
      source.Close();
    }
    ++counts.moves;
    if ((result.status & VS_FAILED) != 0) {
      ++counts.failed;
      if (!fails || result.error == 0) Break("a failure without a reason", number);
    } else if (result.unchanged) {
      run->Lines.Acur = atHand.top;
    } else {
      std::swap(run, spare);
    }
    CheckRun(*run, file, number);
  }
  const NumberedFile& file;
  ByteSource source;
  ViewFile shown;
  std::shared_ptr<ViewRun> run = MakeRun({}), spare = MakeRun({});
  MoveRequest request;
};

void Search(const NumberedFile& file, FilePos from, bool fails, float probability, Counts& counts,
            long number) {
  ByteSource source;
  LongJob job;
  FilePos hit = kSearchReadFailed;
  {
    const Failures failures(fails, probability);
    if (source.Open(file.path.c_str()) == 0) {
      hit = SearchFile(source, from, 6, reinterpret_cast<const std::uint8_t*>(kNeedle), SEARCH_CASE, job);
    }
  }
  ++counts.searches;
  const std::size_t place = file.bytes.find(kNeedle, static_cast<std::size_t>(from.Offset()));
  const FilePos expected = place == std::string::npos ? kSearchNoHit : FilePos::At(place);
  if (hit == kSearchReadFailed && fails)
    ++counts.failedSearches;
  else if (hit != expected)
    Break("a search is wrong", number);
}

void FindPage(const NumberedFile& file, PageIndex& index, std::mt19937& random, bool fails, float probability,
              Counts& counts, long number) {
  ByteSource source;
  const std::atomic<bool> stop{false};
  const auto page = static_cast<PageNumber>(2 + random() % 5);
  FilePos place = 0;
  {
    const Failures failures(fails, probability);
    place = PageIndexFind(source, index, page, stop);
  }
  ++counts.finds;
  const auto line = static_cast<std::size_t>(page - 1) * 100 - 1;
  const FilePos expected = line < file.starts.size() ? file.starts[line] : kPageNone;
  if (place == kPageReadFailed && fails)
    ++counts.failedFinds;
  else if (place != expected)
    Break("a page is wrong", number);
}

}  // namespace

int main(int argc, char** argv) {
  const long runs = argc > 1 ? std::atol(argv[1]) : 1000;
  fiu_init(0);
  Counts counts;
  for (long number = 0; number < runs; ++number) {
    std::mt19937 random(static_cast<std::mt19937::result_type>(number));
    const NumberedFile file(random);
    const auto size = FilePos::At(file.bytes.size());
    View view(file);
    PageIndex index(file.path);
    view.Move(MoveKind::load, 0, 0, false, 0, counts, number);
    for (int i = 0; i < 40; ++i) {
      const bool fails = random() % 3 != 0;
      const float probability = static_cast<float>(1 + random() % 50) / 100;
      const std::int64_t deltas[] = {1, -1, 39, -39, 400, -400};
      const auto what = random() % 12;
      const FilePos position = FilePos::At(random() % static_cast<std::size_t>(size.Offset()));
      if (what < 6) view.Move(MoveKind::move, deltas[what], kNoPosition, fails, probability, counts, number);
      if (what == 6) view.Move(MoveKind::move, 0, kFileEnd, fails, probability, counts, number);
      if (what == 7 || what == 8) view.Move(MoveKind::goTo, 0, position, fails, probability, counts, number);
      if (what == 9) view.Move(MoveKind::load, 0, kNoPosition, fails, probability, counts, number);
      if (what == 10) Search(file, position, fails, probability, counts, number);
      if (what == 11) FindPage(file, index, random, fails, probability, counts, number);
    }
  }
  std::printf(
      "fiu: %ld runs, %ld moves of which %ld failed, %ld searches (%ld), %ld pages (%ld); no wrong row\n",
      runs, counts.moves, counts.failed, counts.searches, counts.failedSearches, counts.finds,
      counts.failedFinds);
  if (counts.failed == 0 || counts.failedSearches == 0 || counts.failedFinds == 0) {
    std::printf("fiu: BROKEN: nothing has failed; is the preload library there?\n");
    return 1;
  }
  return 0;
}
