// A writer process appends to a file, empties it and replaces it, while the viewer pages, jumps, finds, tags
// and indexes. Every row on the screen after every action is held against what the writer has written: each
// line says which one it is, and its content follows from that. Prints figures; ends at the first row that is
// not right.
//
//     soak SECONDS
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <functional>
#include <random>
#include <thread>

#include "resources/command_ids.h"
#include "tests/window/viewer.h"
#include "window/page_indexing.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kBytesPerSecond = 1e8;
constexpr std::int64_t kMostBytes = 600'000'000;

// What writer and reader share.
struct Shared {
  std::atomic<std::int64_t> turns{0};  // odd while the file is being emptied or replaced
  std::atomic<std::int64_t> written{0};
  std::atomic<std::int64_t> generations{1};
};
Shared* shared;

// Line `number` of generation `generation`, without its line break; every 997th begins with a form feed.
std::string LineText(std::int64_t generation, std::int64_t number) {
  char head[64];
  std::snprintf(head, sizeof head, "%lld:%lld ", static_cast<long long>(generation),
                static_cast<long long>(number));
  std::string text = head;
  const auto seed = static_cast<std::uint64_t>(generation * 1000003 + number) * 0x9E3779B97F4A7C15U;
  std::size_t length = 20 + (seed >> 40) % 150;
  if ((seed >> 20) % 400 == 0) length = 1000 + (seed >> 33) % 4000;
  const char letter = static_cast<char>('a' + (seed >> 50) % 26);
  text.resize(text.size() + length, letter);
  if ((seed >> 30) % 5000 == 0) text += " needle";
  return text;
}

bool BeginsPage(std::int64_t number) {
  return number % 997 == 996;
}

// Writes until it is killed.
[[noreturn]] void Write(const std::string& path) {
  std::mt19937 random(11);
  int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
  std::int64_t generation = 1, number = 0, size = 0;
  std::int64_t most = kMostBytes / 10;
  const auto begun = Clock::now();
  for (;;) {
    std::string block;
    while (block.size() < 200000) {
      if (BeginsPage(number)) block += '\f';
      block += LineText(generation, number++) + "\n";
    }
    // A block ends in the middle of a line as often as not.
    for (std::size_t at = 0; at < block.size();) {
      const std::size_t count = std::min<std::size_t>(block.size() - at, 1 + random() % 90000);
      const ssize_t done = write(file, block.data() + at, count);
      if (done <= 0) _exit(3);
      at += static_cast<std::size_t>(done);
      shared->written += done;
    }
    size += static_cast<std::int64_t>(block.size());
    if (size > most) {
      ++shared->turns;
      if (random() % 2 == 0) {
        if (ftruncate(file, 0) != 0) _exit(3);
      } else {
        const std::string old = path + ".1";
        close(file);
        std::rename(path.c_str(), old.c_str());
        file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        unlink(old.c_str());
      }
      ++generation;
      shared->generations = generation;
      number = size = 0;
      most = kMostBytes / 60 * (1 + random() % 60);
      ++shared->turns;
    }
    const std::chrono::duration<double> due(static_cast<double>(shared->written) / kBytesPerSecond);
    std::this_thread::sleep_until(begun + std::chrono::duration_cast<Clock::duration>(due));
  }
}

double ResidentMb() {
  long pages = 0;
  if (FILE* const file = std::fopen("/proc/self/statm", "r")) {
    if (std::fscanf(file, "%*d %ld", &pages) != 1) pages = 0;
    std::fclose(file);
  }
  return static_cast<double>(pages) * 4096 / 1e6;
}

// Whether the rows on the screen are lines of one generation, one behind the other. `why` says what is not.
bool RowsAreRight(std::int64_t& rows, std::string& why) {
  const LineArray& lines = MainState.Lines;
  const std::int32_t end = std::min<std::int32_t>(lines.Acur + MainState.LinesPerScreen, lines.Alast);
  std::int64_t lastGeneration = -1, lastNumber = -1;
  for (std::int32_t i = lines.Acur; i < end; ++i) {
    const LineEntry& line = lines.Aline[i];
    const std::string shown = CellsToUtf8(LineCells(line, MainState.Text));
    long long generation = 0, number = 0;
    const bool last = i + 1 == lines.Alast;
    const bool cut = (line.Lflags & (LF_INCOMPLETE | LF_TRUNCATED)) != 0;
    if (std::sscanf(shown.c_str(), "%lld:%lld ", &generation, &number) != 2) {
      if (last && (line.Lflags & LF_INCOMPLETE) != 0) continue;
      why = "no line: " + shown.substr(0, 60);
      return false;
    }
    const std::string text = LineText(generation, number);
    const bool same = cut ? text.compare(0, shown.size(), shown) == 0 : text == shown;
    const bool pageMark = (line.Lflags & LF_PAGEMARK) != 0;
    const bool next = lastNumber < 0 || (generation == lastGeneration && number == lastNumber + 1);
    if (!same || !next || pageMark != BeginsPage(number) || ((line.Lflags & LF_INCOMPLETE) != 0 && !last)) {
      why = "row " + std::to_string(i - lines.Acur) + " behind " + std::to_string(lastNumber) + ": " +
            shown.substr(0, 60);
      // The number of a line that is being written may be cut.
      if (!(last && (line.Lflags & LF_INCOMPLETE) != 0)) return false;
      why.clear();
    }
    lastGeneration = generation;
    lastNumber = number;
    ++rows;
  }
  return true;
}

ByteCount AnyPlace(std::mt19937& random) {
  return static_cast<ByteCount>(random()) % std::max<ByteCount>(MainState.File.Flen.Offset(), 1);
}

struct Action {
  const char* name;
  std::function<void(Viewer&, std::mt19937&)> run;
};

const Action kActions[] = {
    {"Down", [](Viewer& viewer, std::mt19937&) { viewer.Key(VK_DOWN); }},
    {"Up", [](Viewer& viewer, std::mt19937&) { viewer.Key(VK_UP); }},
    {"Page Down", [](Viewer& viewer, std::mt19937&) { viewer.Key(VK_NEXT); }},
    {"Page Up", [](Viewer& viewer, std::mt19937&) { viewer.Key(VK_PRIOR); }},
    {"ten pages down", [](Viewer& viewer, std::mt19937&) { viewer.Key(VK_NEXT, 0, 10); }},
    {"End", [](Viewer& viewer, std::mt19937&) { viewer.Key(VK_END); }},
    {"Home", [](Viewer& viewer, std::mt19937&) { viewer.Key(VK_HOME); }},
    {"a place", [](Viewer& viewer, std::mt19937& random) { viewer.GoTo(FilePos::At(AnyPlace(random))); }},
    {"the thumb",
     [](Viewer& viewer, std::mt19937& random) {
       platform_testing::DragThumb(viewer.Window(), SB_VERT, AnyPlace(random));
       viewer.Pump();
     }},
    {"Find Next", [](Viewer& viewer, std::mt19937&) { viewer.Command(IDM_FIND_NEXT); }},
    {"Mark All",
     [](Viewer& viewer, std::mt19937& random) {
       if (random() % 10 == 0) viewer.Command(IDM_FIND_MARK_ALL);
     }},
    {"next tag", [](Viewer& viewer, std::mt19937&) { viewer.Command(IDM_MARK_NEXT); }},
    {"index", [](Viewer& viewer, std::mt19937&) { viewer.Send(PG_CONT); }},
    {"a page",
     [](Viewer& viewer, std::mt19937& random) {
       const PageIndexPages pages = PagesToGoTo();
       if (pages.count < 1) return;
       const FilePos place = FindPage(1 + static_cast<PageNumber>(random()) % pages.count);
       if (place >= 0) viewer.MoveTo(place);
     }},
};

int Watch(const std::string& path, double seconds) {
  while (shared->written < 1000000)
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  Viewer viewer({path});
  viewer.Resize(120, 60);
  SearchState& search = MainState.Search;
  std::memcpy(search.SearchKey, "needle", 6);
  search.SearchKeyLen = 6;
  search.SearchFlags = SEARCH_TEXT | SEARCH_CASE;
  std::mt19937 random(5);
  std::int64_t actions = 0, rows = 0, again = 0;
  double warm = 0;
  const auto begun = Clock::now();
  for (double passed = 0; passed < seconds; ++actions) {
    const Action& action = kActions[random() % std::size(kActions)];
    action.run(viewer, random);
    std::string why;
    // Lines at hand may be of a file that is no more: what is read again must be right, unless it changes
    // just then.
    bool right = RowsAreRight(rows, why);
    for (int tries = 0; !right && tries < 20; ++tries, ++again) {
      const std::int64_t turn = shared->turns;
      viewer.Send(WM_VIEW_LOAD, 0, kNoPosition.Offset());
      right = RowsAreRight(rows, why);
      if (!right && turn % 2 == 0 && shared->turns == turn) break;
    }
    if (!right) {
      std::printf("soak: BROKEN after %s, action %lld: %s\n", action.name, static_cast<long long>(actions),
                  why.c_str());
      return 1;
    }
    passed = std::chrono::duration<double>(Clock::now() - begun).count();
    if (warm == 0 && passed > seconds / 10) warm = ResidentMb();
  }
  const double end = ResidentMb();
  std::printf(
      "soak: %.0f s, %lld actions, %lld rows compared, %lld reloads, %lld generations, %.1f GB written "
      "(%.0f MB/s), memory %.1f MB, %.1f MB at the end\n",
      seconds, static_cast<long long>(actions), static_cast<long long>(rows), static_cast<long long>(again),
      static_cast<long long>(shared->generations), static_cast<double>(shared->written) / 1e9,
      static_cast<double>(shared->written) / 1e6 / seconds, warm, end);
  if (rows == 0 || shared->generations < 2) {
    std::printf("soak: BROKEN: nothing was compared\n");
    return 1;
  }
  if (end > warm + 8) {
    std::printf("soak: BROKEN: memory has grown\n");
    return 1;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const double seconds = argc > 1 ? std::atof(argv[1]) : 600;
  void* const page = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (page == MAP_FAILED || seconds <= 0) return 2;
  shared = new (page) Shared;
  const ScratchFolder settings;
  const ScratchFile file("");
  const std::string& path = file.Path();
  const pid_t writer = fork();
  if (writer == 0) Write(path);
  platform_testing::StartToolkit(argc, argv);
  const int result = Watch(path, seconds);
  kill(writer, SIGKILL);
  waitpid(writer, nullptr, 0);
  return result;
}
