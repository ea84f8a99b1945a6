// Temporary files: private to the user, and gone with the process however it ends.
#include "platform/temp_file.h"

#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>
#include <cstring>

#include "tests/scratch.h"

namespace {

TEST(TempFile, IsPrivateAndOfAnySize) {
  const FileHandle file = TempFileOpen();
  ASSERT_NE(file, kNoFile);
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
  for (const int signal : {SIGTERM, SIGKILL}) {
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
      setenv("TMPDIR", folder.Path().c_str(), 1);
      const FileHandle file = TempFileOpen();
      const bool good = TempFolder() == folder.Path() && TempFileWrite(file, "page", 4);
      if (write(ready[1], good ? "+" : "-", 1) == 1) pause();
      _exit(1);
    }
    char answer = 0;
    ASSERT_EQ(read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, '+');
    EXPECT_EQ(folder.Names(), "") << "while it is open";
    kill(child, signal);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(folder.Names(), "");
    close(ready[0]);
    close(ready[1]);
  }
}

}  // namespace
