#include "platform/file.h"

#include <fcntl.h>

#include <cerrno>
#include <cstring>

#include "platform/paths.h"
#include "tests/scratch.h"

namespace {

TEST(Files, AreFollowedWhileTheyAreOpenAndBeyondFourGigabytes) {
  const ScratchFolder folder;
  const std::string path = folder.Write("sparse", "");
  FileError error = 0;
  const FileHandle file = FileOpenShared(path.c_str(), error);
  EXPECT_NE(fcntl(static_cast<int>(file), F_GETFD) & FD_CLOEXEC, 0);
  FileFacts before;
  ASSERT_EQ(FileAsk(file, before), 0);
  constexpr std::int64_t kLength = 64LL << 30;
  ASSERT_EQ(truncate(path.c_str(), kLength - 4), 0);
  PutContent(path, "tail", std::ios::app);
  ASSERT_EQ(unlink(path.c_str()), 0);
  FileFacts facts;
  ASSERT_EQ(FileAsk(file, facts), 0);
  EXPECT_EQ(facts.length, kLength);
  EXPECT_TRUE(facts.volume == before.volume && facts.number == before.number &&
              facts.changed > before.changed);
  char buffer[16] = {};
  std::size_t got = 0;
  EXPECT_EQ(FileReadAt(file, kLength - 6, buffer, sizeof buffer, got), 0);
  EXPECT_EQ(got, 6U);
  EXPECT_EQ(std::memcmp(buffer, "\0\0tail", 6), 0);
  EXPECT_EQ(FileReadAt(file, kLength, buffer, sizeof buffer, got), 0);
  EXPECT_EQ(got, 0U);
  FileClose(file);
  EXPECT_EQ(FileReadAt(12345, 0, buffer, sizeof buffer, got), EBADF);
}

TEST(Files, WhatCannotBeReadHasAReason) {
  const ScratchFolder folder;
  const std::pair<std::string, const char*> cases[] = {
      {folder.Path("missing"), "No such file or directory"},
      {folder.Path(), "Is a directory"},
      {"/dev/null", "Not a regular file or block device"},
      {folder.Write("plain", "") + "/x", "Not a directory"},
  };
  for (const auto& [path, words] : cases) {
    FileError error = 0;
    EXPECT_EQ(FileOpenShared(path.c_str(), error), kNoFile) << path;
    EXPECT_EQ(FileErrorText(error), words) << path;
  }
}

// The whole path; empty when there is none, and then the buffer stays as it is.
std::string Full(const std::string& name, std::size_t size = kPathBytes) {
  char full[kPathBytes] = "untouched";
  const bool good = FullPath(name.c_str(), full, size) == 0;
  EXPECT_TRUE(good || std::strcmp(full, "untouched") == 0) << name;
  return good ? full : "";
}

TEST(Paths, ANameMeansOneInTheCurrentDirectoryAndIsNeverCutShort) {
  const ScratchFolder folder;
  const std::filesystem::path home = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  for (const std::string name : {"two words.txt", "not UTF-8 \xFF.txt", "sub dir/x", "-option", "*"}) {
    EXPECT_EQ(Full(name), folder.Path(name));
    EXPECT_EQ(Full(folder.Path(name)), folder.Path(name));
  }
  EXPECT_EQ(Full(""), "");
  EXPECT_EQ(Full("*", folder.Path("*").size() + 1), folder.Path("*"));
  EXPECT_EQ(Full("*", folder.Path("*").size()), "");
  // The longest path that the system knows.
  const std::string deep = "/" + std::string(kPathBytes - 2, 'f');
  EXPECT_EQ(Full(deep), deep);
  EXPECT_EQ(Full(deep + "f"), "");
  std::filesystem::current_path(home);
}

}  // namespace
