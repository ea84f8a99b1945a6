// This program run again as a child on the layer (see main.cpp).
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace {

struct Child {
  Child(std::vector<const char*> words, const char* platform) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    process = fork();
    if (process == 0) {
      dup2(ends[1], STDOUT_FILENO);
      dup2(ends[1], STDERR_FILENO);
      setenv("QT_QPA_PLATFORM", platform, 1);
      for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"})
        unsetenv(name);
      words.insert(words.begin(), {"child", "--child"});
      words.push_back(nullptr);
      execv("/proc/self/exe", const_cast<char* const*>(words.data()));
      _exit(99);
    }
    close(ends[1]);
    out = ends[0];
  }

  std::string ReadUntil(const std::string& mark) const {
    std::string text;
    char byte = 0;
    while (text.find(mark) == std::string::npos && read(out, &byte, 1) == 1)
      text += byte;
    return text;
  }
  // The exit code; -1 when a signal ended it.
  int Wait() const {
    int status = 0;
    waitpid(process, &status, 0);
    close(out);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  pid_t process = 0;
  int out = -1;
};

TEST(Process, WordsArriveAsTheyAreAndSignalsCloseTheWindow) {
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    const Child child({"-style", "two words", "", "-platform", "\xC3\xA4\xFF"}, "offscreen");
    EXPECT_EQ(child.ReadUntil("ready\n"),
              "[]\n--child\n-style\ntwo words\n\n-platform\n\xC3\xA4\xFF\nready\n");
    kill(child.process, number);
    EXPECT_EQ(child.ReadUntil("the end"), "close\n");
    EXPECT_EQ(child.Wait(), 7);
  }
}

TEST(Process, WithoutADisplayThereIsOneLineAndNoAbort) {
  for (const char* platform : {"xcb", "no such platform"}) {
    const Child child({"file.txt"}, platform);
    const std::string said = child.ReadUntil("the end");
    EXPECT_EQ(said.rfind("quorl: no display", 0), 0U) << said;
    EXPECT_EQ(said.find('\n'), said.size() - 1) << said;
    EXPECT_EQ(child.Wait(), 254);
  }
}

}  // namespace
