// Temporary files: private to the user, and gone with the process however it ends.
#include "platform/temp_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include "tests/posix/scratch_folder.h"

namespace {

TEST(TempFile, WritesSeeksAndReads) {
  const FileHandle file = TempFileOpen();
  ASSERT_NE(file, kNoFile);
  ASSERT_TRUE(TempFileWrite(file, "0123456789", 10));
  ASSERT_TRUE(FileSeek(file, 4));
  ASSERT_TRUE(TempFileWrite(file, "ab", 2));
  std::array<char, 16> read{};
  EXPECT_EQ(FileRead(file, read.data(), read.size()), 4);
  ASSERT_TRUE(FileSeek(file, 0));
  EXPECT_EQ(FileRead(file, read.data(), read.size()), 10);
  EXPECT_STREQ(read.data(), "0123ab6789");

  constexpr std::int64_t kFar = std::int64_t{5} << 30;
  ASSERT_TRUE(FileSeek(file, kFar));
  ASSERT_TRUE(TempFileWrite(file, "far", 3));
  EXPECT_EQ(FileSize(file), kFar + 3);

  struct stat status {};
  ASSERT_EQ(fstat(static_cast<int>(file), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0600u);
  EXPECT_EQ(status.st_nlink, 0u) << "it has no name";
  FileClose(file);
}

TEST(TempFile, NothingRemainsOfAKilledProcess) {
  const ScratchFolder folder;
  const std::string path = folder.Path("temp");
  std::filesystem::create_directory(path);
  for (const int signal : {SIGTERM, SIGKILL}) {
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      setenv("TMPDIR", path.c_str(), 1);
      const FileHandle file = TempFileOpen();
      const bool good = std::strcmp(TempFolder(), path.c_str()) == 0 && TempFileWrite(file, "page", 4);
      if (write(ready[1], good ? "+" : "-", 1) == 1) pause();
      _exit(1);
    }
    char answer = 0;
    ASSERT_EQ(read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, '+');
    EXPECT_TRUE(std::filesystem::is_empty(path)) << "while it is open";
    kill(child, signal);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_TRUE(std::filesystem::is_empty(path));
    close(ready[0]);
    close(ready[1]);
  }
}

}  // namespace
