#include "platform/file.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>

#include <cstring>

#include "platform/paths.h"
#include "platform/testing.h"
#include "tests/scratch.h"

namespace {

class FileTest : public testing::Test {
 protected:
  static bool Opens(const std::string& path) {
    const FileHandle file = FileOpenShared(path.c_str());
    FileClose(file);
    return file != kNoFile;
  }

  ScratchFolder folder_;
};

TEST_F(FileTest, OnlyRegularFilesAndWhatLeadsToThemOpen) {
  const std::string plain = folder_.Write("plain", "abc");
  const std::string unreadable = folder_.Write("unreadable", "abc");
  ASSERT_EQ(chmod(unreadable.c_str(), 0), 0);
  ASSERT_EQ(symlink("plain", folder_.Path("link").c_str()), 0);
  ASSERT_EQ(symlink("nowhere", folder_.Path("dangling").c_str()), 0);
  ASSERT_EQ(symlink("loop", folder_.Path("loop").c_str()), 0);
  ASSERT_EQ(mkfifo(folder_.Path("fifo").c_str(), 0666), 0);
  ASSERT_EQ(symlink("fifo", folder_.Path("fifo link").c_str()), 0);
  const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, folder_.Path("socket").c_str(), sizeof address.sun_path - 1);
  ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);

  EXPECT_TRUE(Opens(plain));
  EXPECT_TRUE(Opens(folder_.Path("link")));
  EXPECT_TRUE(Opens("/proc/self/status"));
  for (const char* name : {"dangling", "loop", "fifo", "fifo link", "socket", "missing", "plain/below", ""})
    EXPECT_FALSE(Opens(folder_.Path(name))) << name;
  for (const char* path : {"/dev/null", "/dev/zero", "/dev/tty", "/dev/full", "/", "", "."})
    EXPECT_FALSE(Opens(path)) << path;
  // The superuser may read everything.
  EXPECT_EQ(Opens(unreadable), geteuid() == 0);
  close(listener);
}

TEST_F(FileTest, AnOpenFileIsClosedOnExecAndCounted) {
  const std::string path = folder_.Write("counted", std::string(1000, 'x'));
  const std::int64_t opened = platform_testing::FilesOpened();
  const std::int64_t read = platform_testing::BytesRead();
  const FileHandle file = FileOpenShared(path.c_str());
  EXPECT_NE(fcntl(static_cast<int>(file), F_GETFD) & FD_CLOEXEC, 0);
  char buffer[600];
  EXPECT_EQ(FileRead(file, buffer, sizeof buffer), 600);
  EXPECT_EQ(FileRead(file, buffer, sizeof buffer), 400);
  EXPECT_EQ(FileRead(file, buffer, sizeof buffer), 0);
  FileClose(file);
  EXPECT_FALSE(Opens(folder_.Path("missing")));
  EXPECT_EQ(platform_testing::FilesOpened() - opened, 1);
  EXPECT_EQ(platform_testing::BytesRead() - read, 1000);
}

TEST_F(FileTest, OffsetsBeyondFourGigabytes) {
  const std::string path = folder_.Write("sparse", "");
  constexpr std::int64_t kLength = 64LL << 30;
  ASSERT_EQ(truncate(path.c_str(), kLength - 4), 0);
  std::ofstream(path, std::ios::app) << "tail";
  const FileHandle file = FileOpenShared(path.c_str());
  ASSERT_NE(file, kNoFile);
  EXPECT_EQ(FileSize(file), kLength);
  char buffer[16] = {};
  ASSERT_TRUE(FileSeek(file, kLength - 6));
  EXPECT_EQ(FileRead(file, buffer, sizeof buffer), 6);
  EXPECT_EQ(std::memcmp(buffer, "\0\0tail", 6), 0);
  EXPECT_TRUE(FileSeek(file, kLength + 5));
  EXPECT_EQ(FileRead(file, buffer, sizeof buffer), 0);
  EXPECT_FALSE(FileSeek(file, -1));
  FileClose(file);
}

TEST_F(FileTest, AFileIsFollowedWhileItIsOpen) {
  const std::string path = folder_.Write("log", "12345");
  const FileHandle file = FileOpenShared(path.c_str());
  std::ofstream(path, std::ios::app) << "67890";
  EXPECT_EQ(FileSize(file), 10);
  ASSERT_EQ(unlink(path.c_str()), 0);
  char buffer[16];
  EXPECT_EQ(FileRead(file, buffer, sizeof buffer), 10);
  FileClose(file);
  // What is not open.
  EXPECT_EQ(FileRead(12345, buffer, sizeof buffer), -1);
  EXPECT_EQ(FileSize(12345), -1);
  EXPECT_FALSE(FileSeek(12345, 0));
}

// Whatever the system delivers at a time, the whole comes together: a pipe stands for a device that gives
// short reads, and an alarm interrupts the waits between them.
TEST_F(FileTest, ShortAndInterruptedReadsAreContinued) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const pid_t writer = fork();
  if (writer == 0) {
    close(ends[0]);
    for (int i = 0; i < 20; ++i) {
      usleep(3000);
      if (write(ends[1], "0123456789", 10) != 10) _exit(1);
    }
    _exit(0);
  }
  close(ends[1]);
  struct sigaction action {};
  struct sigaction former {};
  action.sa_handler = [](int) {};
  sigaction(SIGALRM, &action, &former);
  const itimerval often{{0, 1000}, {0, 1000}};
  setitimer(ITIMER_REAL, &often, nullptr);
  char buffer[150];
  EXPECT_EQ(FileRead(ends[0], buffer, sizeof buffer), 150);
  EXPECT_EQ(std::memcmp(buffer + 140, "0123456789", 10), 0);
  EXPECT_EQ(FileRead(ends[0], buffer, sizeof buffer), 50);
  const itimerval never{};
  setitimer(ITIMER_REAL, &never, nullptr);
  sigaction(SIGALRM, &former, nullptr);
  close(ends[0]);
}

class PathTest : public FileTest {
 protected:
  PathTest() : home_(std::filesystem::current_path()) { std::filesystem::current_path(folder_.Path()); }
  ~PathTest() override { std::filesystem::current_path(home_); }

  static std::string Find(const std::string& name, std::size_t size = kPathBytes) {
    char full[kPathBytes] = "untouched";
    const bool found = FindReadableFile(name.c_str(), full, size);
    EXPECT_TRUE(found || std::strcmp(full, "untouched") == 0) << name;
    return found ? full : "";
  }

 private:
  std::filesystem::path home_;
};

TEST_F(PathTest, ANameIsLookedForInTheCurrentDirectoryOnly) {
  std::filesystem::create_directory("sub dir");
  const std::string longName(255, 'n');
  for (const std::string& name : {std::string("two words.txt"), std::string("\xC3\xA4\xE2\x82\xAC.txt"),
                                  std::string("not UTF-8 \xFF.txt"), longName, std::string("sub dir/x"),
                                  std::string("-option"), std::string("*")}) {
    folder_.Write(name, "x");
    EXPECT_EQ(Find(name), folder_.Path(name));
    EXPECT_EQ(Find(folder_.Path(name)), folder_.Path(name));
  }
  ASSERT_EQ(symlink("two words.txt", "link"), 0);
  EXPECT_EQ(Find("link"), folder_.Path("link"));
  EXPECT_EQ(Find("./link"), folder_.Path("./link"));
  // "sh" is found along the search path, but not here.
  for (const char* name : {"sh", "sub dir", "", ".", "missing", "/dev/null", "two words.txt/"})
    EXPECT_EQ(Find(name), "") << name;
  std::filesystem::current_path("/");
  EXPECT_EQ(Find("proc/self/status"), "/proc/self/status");
}

TEST_F(PathTest, APathIsNeverCutShort) {
  const std::string path = folder_.Write("file", "x");
  EXPECT_EQ(Find("file", path.size() + 1), path);
  EXPECT_EQ(Find("file", path.size()), "");
  // The longest path that the system knows.
  std::string deep = folder_.Path();
  while (deep.size() + 101 < kPathBytes - 20) {
    deep += "/" + std::string(100, 'd');
    std::filesystem::create_directory(deep);
  }
  deep += "/" + std::string(kPathBytes - 2 - deep.size(), 'f');
  std::ofstream(deep) << "x";
  EXPECT_EQ(deep.size(), kPathBytes - 1);
  EXPECT_EQ(Find(deep), deep);
  EXPECT_EQ(Find(deep + "f"), "");
  std::filesystem::create_directory("gone");
  std::filesystem::current_path("gone");
  std::filesystem::remove(folder_.Path("gone"));
  EXPECT_EQ(Find("file"), "");
}

TEST(BaseNames, AreWhatStandsBehindTheLastSlash) {
  const std::pair<const char*, const char*> cases[] = {
      {"/a/b.txt", "b.txt"}, {"b.txt", "b.txt"}, {"/a/", ""}, {"", ""}, {"a\\b:c", "a\\b:c"}, {"/x", "x"}};
  for (const auto& [path, base] : cases)
    EXPECT_STREQ(BaseName(path), base);
  // The program's own.
  char own[kPathBytes];
  const DWORD length = GetModuleFileNameA(nullptr, own, sizeof own);
  EXPECT_EQ(length, std::strlen(own));
  EXPECT_STREQ(BaseName(own), "test_platform");
  char tight[5];
  EXPECT_EQ(GetModuleFileNameA(nullptr, tight, sizeof tight), sizeof tight);
  EXPECT_EQ(tight[4], '\0');
}

}  // namespace
