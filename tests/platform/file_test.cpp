#include "platform/file.h"

#include <fcntl.h>

#include <cstring>

#include "platform/paths.h"
#include "tests/scratch.h"

namespace {

TEST(Files, AreFollowedWhileTheyAreOpenAndBeyondFourGigabytes) {
  const ScratchFolder folder;
  const std::string path = folder.Write("sparse", "");
  const FileHandle file = FileOpenShared(path.c_str());
  EXPECT_NE(fcntl(static_cast<int>(file), F_GETFD) & FD_CLOEXEC, 0);
  constexpr std::int64_t kLength = 64LL << 30;
  ASSERT_EQ(truncate(path.c_str(), kLength - 4), 0);
  PutContent(path, "tail", std::ios::app);
  ASSERT_EQ(unlink(path.c_str()), 0);
  EXPECT_EQ(FileSize(file), kLength);
  char buffer[16] = {};
  ASSERT_TRUE(FileSeek(file, kLength - 6));
  EXPECT_EQ(FileRead(file, buffer, sizeof buffer), 6);
  EXPECT_EQ(std::memcmp(buffer, "\0\0tail", 6), 0);
  EXPECT_EQ(FileRead(file, buffer, sizeof buffer), 0);
  EXPECT_FALSE(FileSeek(file, -1));
  FileClose(file);
  EXPECT_EQ(FileRead(12345, buffer, sizeof buffer), -1);
}

// Whatever the system delivers at a time, the whole comes together: a pipe stands for a device that gives
// short reads.
TEST(Files, ShortReadsAreContinued) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  if (fork() == 0) {
    for (int i = 0; i < 20; ++i) {
      usleep(3000);
      if (write(ends[1], "0123456789", 10) != 10) _exit(1);
    }
    _exit(0);
  }
  close(ends[1]);
  char buffer[150];
  EXPECT_EQ(FileRead(ends[0], buffer, sizeof buffer), 150);
  EXPECT_EQ(std::memcmp(buffer + 140, "0123456789", 10), 0);
  EXPECT_EQ(FileRead(ends[0], buffer, sizeof buffer), 50);
  close(ends[0]);
}

// The whole path; empty when it is not found, and then the buffer stays as it is.
std::string Find(const std::string& name, std::size_t size = kPathBytes) {
  char full[kPathBytes] = "untouched";
  const bool found = FindReadableFile(name.c_str(), full, size);
  EXPECT_TRUE(found || std::strcmp(full, "untouched") == 0) << name;
  return found ? full : "";
}

TEST(Paths, ANameIsLookedForInTheCurrentDirectoryAndNeverCutShort) {
  const ScratchFolder folder;
  const std::filesystem::path home = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  for (const std::string name : {"two words.txt", "not UTF-8 \xFF.txt", "sub dir/x", "-option", "*"}) {
    folder.Write(name, "x");
    EXPECT_EQ(Find(name), folder.Path(name));
    EXPECT_EQ(Find(folder.Path(name)), folder.Path(name));
  }
  // "sh" is found along the search path, but not here.
  for (const char* name : {"sh", "sub dir", "", "missing", "/dev/null", "two words.txt/"})
    EXPECT_EQ(Find(name), "") << name;
  EXPECT_EQ(Find("*", folder.Path("*").size() + 1), folder.Path("*"));
  EXPECT_EQ(Find("*", folder.Path("*").size()), "");
  // The longest path that the system knows.
  std::string deep = folder.Path();
  while (deep.size() + 101 < kPathBytes - 20) {
    deep += "/" + std::string(100, 'd');
    std::filesystem::create_directory(deep);
  }
  deep += "/" + std::string(kPathBytes - 2 - deep.size(), 'f');
  PutContent(deep, "x", std::ios::trunc);
  EXPECT_EQ(Find(deep), deep);
  EXPECT_EQ(Find(deep + "f"), "");
  std::filesystem::current_path(home);
}

}  // namespace
