#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/paths.h"
#include "platform/win32.h"
#include "tests/platform/child_program.h"

namespace {

// This program run again as a child on the layer.
class Child {
 public:
  Child(std::vector<std::string> words, const char* platform) {
    int out[2];
    int err[2];
    EXPECT_EQ(pipe(out) | pipe(err), 0);
    process_ = fork();
    if (process_ == 0) {
      dup2(out[1], STDOUT_FILENO);
      dup2(err[1], STDERR_FILENO);
      for (const int end : {out[0], out[1], err[0], err[1]})
        close(end);
      setenv("QT_QPA_PLATFORM", platform, 1);
      unsetenv("DISPLAY");
      unsetenv("WAYLAND_DISPLAY");
      unsetenv("XDG_RUNTIME_DIR");
      Run(words);
    }
    close(out[1]);
    close(err[1]);
    out_ = out[0];
    err_ = err[0];
  }
  ~Child() {
    close(out_);
    close(err_);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  std::string ReadOut(const char* until = nullptr) const { return Read(out_, until); }
  std::string ReadErr() const { return Read(err_, nullptr); }
  void Signal(int number) const { kill(process_, number); }
  // The exit code; -1 when a signal ended it.
  int Wait() const {
    int status = 0;
    waitpid(process_, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  [[noreturn]] static void Run(std::vector<std::string>& words) {
    char path[kPathBytes];
    GetModuleFileNameA(nullptr, path, sizeof path);
    words.insert(words.begin(), {path, kChildOption});
    std::vector<char*> arguments;
    for (std::string& word : words)
      arguments.push_back(word.data());
    arguments.push_back(nullptr);
    execv(path, arguments.data());
    _exit(99);
  }

  static std::string Read(int from, const char* until) {
    std::string text;
    char byte = 0;
    while (read(from, &byte, 1) == 1) {
      text += byte;
      if (until != nullptr && text.find(until) != std::string::npos) break;
    }
    return text;
  }

  pid_t process_ = 0;
  int out_ = -1;
  int err_ = -1;
};

TEST(Process, WordsArriveAsTheyAreAndSignalsCloseTheWindow) {
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    const Child child({"-style", "two words", "", "-platform", "\xC3\xA4\xFF"}, "offscreen");
    EXPECT_EQ(child.ReadOut("ready\n"),
              std::string("[]\n") + kChildOption + "\n-style\ntwo words\n\n-platform\n\xC3\xA4\xFF\nready\n");
    child.Signal(number);
    EXPECT_EQ(child.ReadOut(), "close\n");
    EXPECT_EQ(child.ReadErr(), "");
    EXPECT_EQ(child.Wait(), 7);
  }
}

TEST(Process, WithoutADisplayThereIsOneLineAndNoAbort) {
  for (const char* platform : {"xcb", "no such platform"}) {
    const Child child({"file.txt"}, platform);
    EXPECT_EQ(child.ReadOut(), "");
    const std::string said = child.ReadErr();
    EXPECT_EQ(said.rfind("quorl: no display", 0), 0U) << said;
    EXPECT_EQ(said.find('\n'), said.size() - 1) << said;
    EXPECT_EQ(child.Wait(), 254);
  }
}

}  // namespace
