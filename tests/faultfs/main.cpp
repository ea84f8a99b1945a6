// A file system for tests, over FUSE: shows the files of a folder for reading only, and does what a failing
// disk or a slow network does, on command.
//
//     faultfs MOUNTPOINT FOLDER
//
// Commands are lines written to MOUNTPOINT/.control:
//
//     delay WHAT MS [FROM]     each WHAT (read, open, getattr) takes so many milliseconds; a read only at or
//     behind FROM fail WHAT ERRNO [PERCENT [FROM]]   each WHAT fails with that number, or so many per cent of
//     them short BYTES              a read delivers at most so many bytes flip MASK                each byte
//     read is changed by that mask clear                    all as at the beginning; delays under way end at
//     once
//
// Reading .control gives the counts: "opens N reads N bytes N pending N", since the last `clear`.
#define FUSE_USE_VERSION 31
#include <fcntl.h>
#include <fuse3/fuse.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <map>
#include <mutex>
#include <random>
#include <sstream>
#include <string>

namespace {

struct Fault {
  int delayMs = 0;
  std::int64_t delayFrom = 0;
  int error = 0;
  int percent = 100;
  std::int64_t errorFrom = 0;
};

struct Disk {
  std::string folder;
  std::mutex guard;
  std::condition_variable cleared;
  std::map<std::string, Fault> faults;
  std::size_t shortest = SIZE_MAX;
  unsigned char mask = 0;
  long opens = 0, reads = 0, bytes = 0, pending = 0;
  int generation = 0;  // of `clear`
  std::mt19937 random{1};
};
Disk disk;

constexpr const char* kControl = "/.control";

std::string PathOf(const char* path) {
  return disk.folder + path;
}

// Waits so long, or until all is cleared. False when the process that asks is being killed.
bool Wait(std::unique_lock<std::mutex>& lock, int delayMs, int generation) {
  constexpr std::chrono::milliseconds kLook(10);
  for (std::chrono::milliseconds rest(delayMs); rest.count() > 0; rest -= kLook) {
    disk.cleared.wait_for(lock, std::min(rest, kLook));
    if (disk.generation != generation) return true;
    if (fuse_interrupted() != 0) return false;
  }
  return true;
}

// What happens to a request: waits, and gives the negative error, or 0.
int Meet(const std::string& what, std::int64_t from) {
  std::unique_lock lock(disk.guard);
  const Fault fault = disk.faults[what];
  const int generation = disk.generation;
  if (fault.delayMs > 0 && from >= fault.delayFrom) {
    ++disk.pending;
    const bool interrupted = !Wait(lock, fault.delayMs, generation);
    --disk.pending;
    if (interrupted) return -EINTR;
  }
  if (disk.generation != generation || fault.error == 0 || from < fault.errorFrom) return 0;
  return static_cast<int>(disk.random() % 100) < fault.percent ? -fault.error : 0;
}

void Clear() {
  disk.faults.clear();
  disk.shortest = SIZE_MAX;
  disk.mask = 0;
  disk.opens = disk.reads = disk.bytes = 0;
  ++disk.generation;
  disk.cleared.notify_all();
}

int Command(const std::string& line) {
  std::istringstream words(line);
  std::string command, what;
  words >> command;
  const std::scoped_lock lock(disk.guard);
  if (command == "clear") {
    Clear();
  } else if (command == "short") {
    words >> disk.shortest;
  } else if (command == "flip") {
    int mask = 0;
    words >> mask;
    disk.mask = static_cast<unsigned char>(mask);
  } else if (command == "delay") {
    words >> what;
    Fault& fault = disk.faults[what];
    fault.delayFrom = 0;
    words >> fault.delayMs >> fault.delayFrom;
  } else if (command == "fail") {
    words >> what;
    Fault& fault = disk.faults[what];
    fault.percent = 100;
    fault.errorFrom = 0;
    words >> fault.error >> fault.percent >> fault.errorFrom;
  } else {
    return -EINVAL;
  }
  return 0;
}

std::string Counts() {
  const std::scoped_lock lock(disk.guard);
  return "opens " + std::to_string(disk.opens) + " reads " + std::to_string(disk.reads) + " bytes " +
         std::to_string(disk.bytes) + " pending " + std::to_string(disk.pending) + "\n";
}

int GetAttributes(const char* path, struct stat* status, fuse_file_info* /*info*/) {
  if (std::strcmp(path, kControl) == 0) {
    *status = {};
    status->st_mode = S_IFREG | 0600;
    status->st_nlink = 1;
    return 0;
  }
  if (std::strcmp(path, "/") != 0) {
    if (const int error = Meet("getattr", 0); error != 0) return error;
  }
  return lstat(PathOf(path).c_str(), status) == 0 ? 0 : -errno;
}

int Open(const char* path, fuse_file_info* info) {
  info->direct_io = 1;  // nothing is kept, so that each read comes here
  if (std::strcmp(path, kControl) == 0) return 0;
  if ((info->flags & O_ACCMODE) != O_RDONLY) return -EROFS;
  if (const int error = Meet("open", 0); error != 0) return error;
  const int file = open(PathOf(path).c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return -errno;
  info->fh = static_cast<std::uint64_t>(file);
  const std::scoped_lock lock(disk.guard);
  ++disk.opens;
  return 0;
}

int Read(const char* path, char* buffer, std::size_t size, off_t offset, fuse_file_info* info) {
  if (std::strcmp(path, kControl) == 0) {
    const std::string counts = Counts();
    if (offset >= static_cast<off_t>(counts.size())) return 0;
    return static_cast<int>(counts.copy(buffer, size, static_cast<std::size_t>(offset)));
  }
  if (const int error = Meet("read", offset); error != 0) return error;
  std::size_t count = size;
  unsigned char mask = 0;
  {
    const std::scoped_lock lock(disk.guard);
    count = std::min(size, disk.shortest);
    mask = disk.mask;
  }
  const ssize_t got = pread(static_cast<int>(info->fh), buffer, count, offset);
  if (got < 0) return -errno;
  for (ssize_t i = 0; mask != 0 && i < got; ++i)
    buffer[i] = static_cast<char>(buffer[i] ^ static_cast<char>(mask));
  const std::scoped_lock lock(disk.guard);
  ++disk.reads;
  disk.bytes += got;
  return static_cast<int>(got);
}

int Write(const char* path, const char* buffer, std::size_t size, off_t /*offset*/,
          fuse_file_info* /*info*/) {
  if (std::strcmp(path, kControl) != 0) return -EROFS;
  std::istringstream lines(std::string(buffer, size));
  for (std::string line; std::getline(lines, line);) {
    if (const int error = Command(line); error != 0) return error;
  }
  return static_cast<int>(size);
}

int Truncate(const char* path, off_t /*size*/, fuse_file_info* /*info*/) {
  return std::strcmp(path, kControl) == 0 ? 0 : -EROFS;
}

int Release(const char* path, fuse_file_info* info) {
  if (std::strcmp(path, kControl) != 0) close(static_cast<int>(info->fh));
  return 0;
}

void* Begin(fuse_conn_info* /*connection*/, fuse_config* config) {
  config->attr_timeout = config->entry_timeout = config->negative_timeout = 0;
  config->kernel_cache = 0;
  config->intr = 1;  // a process that hangs here can be killed
  return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  char folder[PATH_MAX];
  if (argc != 3 || realpath(argv[2], folder) == nullptr) {
    std::fputs("usage: faultfs MOUNTPOINT FOLDER\n", stderr);
    return 2;
  }
  disk.folder = folder;
  fuse_operations operations{};
  operations.getattr = GetAttributes;
  operations.open = Open;
  operations.read = Read;
  operations.write = Write;
  operations.truncate = Truncate;
  operations.release = Release;
  operations.init = Begin;
  char foreground[] = "-f";
  // The signal by which the library tells a thread that its request is interrupted. It is asked for too late
  // for the library to handle it.
  struct sigaction ignore {};
  ignore.sa_handler = [](int) {};
  sigaction(SIGUSR1, &ignore, nullptr);
  char* arguments[] = {argv[0], foreground, argv[1], nullptr};
  return fuse_main(3, arguments, &operations, nullptr);
}
