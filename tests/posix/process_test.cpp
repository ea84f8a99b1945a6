// What happens to a profile when a process dies in a save, when the disk is full, and when two viewers save
// at once, and what remains of temporary files: each with real processes.
#include <fcntl.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>
#include <functional>
#include <random>

#include "platform/profile_batch.h"
#include "platform/temp_file.h"
#include "platform/win32.h"
#include "tests/scratch.h"

namespace {

pid_t Start(const std::function<int()>& work) {
  const pid_t child = fork();
  if (child == 0) _exit(work());
  return child;
}

// Exit code, or 1000 and the signal.
int Finish(pid_t child) {
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

bool Put(const std::string& file, const std::string& key, const std::string& value) {
  return WritePrivateProfileStringA("S", key.c_str(), value.c_str(), file.c_str()) != FALSE;
}

TEST(ProfileProcess, KillLeavesTheOldFileOrTheNew) {
  const ScratchFolder folder;
  // The content that save number `number` leaves.
  const auto filler = [](int number) { return std::string(3000, static_cast<char>('a' + number % 26)); };
  const auto whole = [&filler](int number) {
    const std::string value = std::to_string(number);
    return "; by hand\n[S]\nA=" + value + "\nB=" + filler(number) + "\nC=" + value + "\n\n; end\n[Last]\nx=1";
  };
  const std::string file = folder.Write("p.ini", whole(0));
  const auto save = [&](int number) {
    return SaveProfile(file.c_str(), [&] {
             Put(file, "A", std::to_string(number));
             Put(file, "B", filler(number));
             Put(file, "C", std::to_string(number));
           }) == 0;
  };
  std::mt19937 random(11);
  int lastSeen = 0;
  int killed = 0;
  for (int round = 0; round < 60; ++round) {
    const pid_t child = Start([&save, lastSeen] {
      for (int i = 1; i <= 200; ++i)
        if (!save(lastSeen + i)) return 1;
      return 0;
    });
    usleep(static_cast<useconds_t>(random() % 30'000));
    kill(child, SIGKILL);
    const int end = Finish(child);
    ASSERT_TRUE(end == 0 || end == 1000 + SIGKILL) << end;
    killed += end == 0 ? 0 : 1;
    const int now = static_cast<int>(GetPrivateProfileIntA("S", "A", -1, file.c_str()));
    ASSERT_GE(now, lastSeen);
    ASSERT_EQ(ContentOf(file), whole(now));
    lastSeen = now;
  }
  EXPECT_GT(killed, 0);
  // A killed save leaves no lock behind, and the next save clears away what it had written aside.
  EXPECT_TRUE(save(lastSeen + 1));
  EXPECT_EQ(folder.Names(), "p.ini");
}

TEST(ProfileProcess, TwoViewersKeepEachOthersKeys) {
  // The first saves of both, which create the folder and the file, are where they are most in each other's
  // way.
  for (const auto& [rounds, saves] : {std::pair{10, 1}, {1, 60}}) {
    for (int round = 0; round < rounds; ++round) {
      const ScratchFolder folder;
      const auto writer = [count = saves](const std::string& name) {
        for (int i = 0; i < count; ++i)
          if (!Put("QUORL.INI", name + std::to_string(i), "1")) return 1;
        return 0;
      };
      const pid_t one = Start([&writer] { return writer("one"); });
      const pid_t two = Start([&writer] { return writer("two"); });
      EXPECT_EQ(Finish(one) + Finish(two), 0);
      for (int i = 0; i < saves; ++i) {
        for (const char* name : {"one", "two"}) {
          const std::string key = name + std::to_string(i);
          EXPECT_EQ(GetPrivateProfileIntA("S", key.c_str(), 0, "QUORL.INI"), 1U) << key;
        }
      }
    }
  }
}

TEST(ProfileProcess, StuckSaveOfAnotherFailsOurs) {
  const ScratchFolder folder;
  const std::string file = folder.Write("p.ini", "[S]\nK=1\n");
  const int lock = open(folder.Path().c_str(), O_RDONLY | O_DIRECTORY);
  ASSERT_EQ(flock(lock, LOCK_EX), 0);
  const FileError error = SaveProfile(file.c_str(), [&file] { Put(file, "K", "2"); });
  EXPECT_EQ(FileErrorText(error), "Device or resource busy");
  EXPECT_EQ(ContentOf(file), "[S]\nK=1\n");
  close(lock);
  EXPECT_TRUE(Put(file, "K", "2"));
}

// On a small disk of its own, which only root can make.
TEST(ProfileProcess, FullDiskLeavesTheOldFile) {
  const ScratchFolder folder;
  constexpr int kNoDisk = 99;
  const pid_t child = Start([&folder] {
    const std::string disk = folder.Path();
    if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=64k") != 0) {
      return kNoDisk;
    }
    const std::string content = "[S]\nK=" + std::string(40'000, 'k') + "\n";
    const std::string file = folder.Write("p.ini", content);
    const FileError error = SaveProfile(file.c_str(), [&file] { Put(file, "L", "1"); });
    if (FileErrorText(error) != "No space left on device") return 1;
    if (ContentOf(file) != content || folder.Names() != "p.ini") return 2;
    // With room again the same save goes through.
    if (mount("tmpfs", disk.c_str(), "tmpfs", MS_REMOUNT, "size=256k") != 0) return 3;
    return Put(file, "L", "1") && ContentOf(file) == content + "L=1\n" ? 0 : 4;
  });
  const int end = Finish(child);
  if (end == kNoDisk) GTEST_SKIP() << "no right to mount a disk here";
  EXPECT_EQ(end, 0);
}

TEST(TempFile, IsPrivateAndNothingRemainsOfItInAKilledProcess) {
  const ScratchFolder folder;
  for (const int signal : {SIGTERM, SIGKILL}) {
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = Start([&]() -> int {
      setenv("TMPDIR", folder.Path().c_str(), 1);
      FileError error = 0;
      const FileHandle file = TempFileOpen(error);
      struct stat status {};
      const bool good = fstat(static_cast<int>(file), &status) == 0 && (status.st_mode & 07777) == 0600 &&
                        TempFileWriteAt(file, std::int64_t{5} << 30, "page", 4) == 0;
      if (write(ready[1], good ? "+" : "-", 1) == 1) pause();
      return 1;
    });
    char answer = 0;
    ASSERT_EQ(read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, '+');
    EXPECT_EQ(folder.Names(), "") << "while it is open";
    kill(child, signal);
    EXPECT_EQ(Finish(child), 1000 + signal);
    EXPECT_EQ(folder.Names(), "");
    close(ready[0]);
    close(ready[1]);
  }
}

}  // namespace
