#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "base/descriptor.h"
#include "base/temp_folder.h"
#include "client.h"

namespace kolvane::amplifier {
namespace {

// The program as a child process with both outputs in pipes.
class Program {
 public:
  explicit Program(const std::vector<std::string>& arguments) {
    int out[2];
    int err[2];
    if (pipe(out) != 0 || pipe(err) != 0) throw std::runtime_error("pipe");
    std::vector<std::string> texts = {KOLVANE_AMPLIFIER};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& text : texts) argv.push_back(text.data());
    argv.push_back(nullptr);
    child_ = fork();
    if (child_ == 0) {
      dup2(out[1], STDOUT_FILENO);
      dup2(err[1], STDERR_FILENO);
      for (const int end : {out[0], out[1], err[0], err[1]}) close(end);
      execv(KOLVANE_AMPLIFIER, argv.data());
      _exit(127);
    }
    close(out[1]);
    close(err[1]);
    out_ = base::Descriptor(out[0]);
    err_ = base::Descriptor(err[0]);
  }
  ~Program() {
    if (child_ > 0) {
      kill(child_, SIGKILL);
      Wait();
    }
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  std::string OutputLine() const { return ReadLine(out_); }
  std::string Output() const { return ReadAll(out_); }
  std::string Errors() const { return ReadAll(err_); }
  void Signal(int number) const { kill(child_, number); }
  /// The exit status; -1 if a signal ended the program.
  int Wait() {
    int status = 0;
    waitpid(child_, &status, 0);
    child_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  static std::string ReadLine(const base::Descriptor& from) {
    std::string line;
    for (char c = 0; read(from.get(), &c, 1) == 1 && c != '\n';) line += c;
    return line;
  }
  static std::string ReadAll(const base::Descriptor& from) {
    std::string text;
    for (char c = 0; read(from.get(), &c, 1) == 1;) text += c;
    return text;
  }

  pid_t child_ = -1;
  base::Descriptor out_;
  base::Descriptor err_;
};

int PortIn(const std::string& line) {
  const std::string start = "listening on 127.0.0.1:";
  return line.starts_with(start) ? std::stoi(line.substr(start.size())) : 0;
}

TEST(Program, AnnouncesItsPortAndEndsOnSignals) {
  for (const int signal : {SIGTERM, SIGINT}) {
    Program program({"--tcp", "0"});
    const int port = PortIn(program.OutputLine());
    ASSERT_NE(port, 0);
    {
      const Client client = Client::Tcp(port);
      EXPECT_EQ(client.Ask("OPMODE?"), "0");
      program.Signal(signal);
      EXPECT_EQ(program.Wait(), 0);
    }
    EXPECT_EQ(program.Output(), "");
    EXPECT_EQ(program.Errors(), "");
  }
}

TEST(Program, AnnouncesItsLinkAndRemovesIt) {
  const base::TempFolder folder;
  const std::string link = folder.Path("amp");
  Program program({"--pty", link, "--tcp", "0", "--echo"});
  EXPECT_NE(PortIn(program.OutputLine()), 0);
  EXPECT_EQ(program.OutputLine(), "pty ready at " + link);
  EXPECT_EQ(Client::Pty(link).Ask("hello"), "hello");
  program.Signal(SIGTERM);
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(Program, EndsWithItsParent) {
  int out[2];
  ASSERT_EQ(pipe(out), 0);
  const pid_t parent = fork();
  if (parent == 0) {
    close(out[0]);
    if (fork() == 0) {
      dup2(out[1], STDOUT_FILENO);
      execl(KOLVANE_AMPLIFIER, KOLVANE_AMPLIFIER, "--tcp", "0", "--exit-with-parent", nullptr);
    }
    pause();
  }
  close(out[1]);
  const base::Descriptor output(out[0]);
  std::string line;
  for (char c = 0; read(output.get(), &c, 1) == 1 && c != '\n';) line += c;
  EXPECT_NE(PortIn(line), 0);
  kill(parent, SIGKILL);
  waitpid(parent, nullptr, 0);
  // The pipe ends when the last holder of its other end is gone.
  pollfd entry{output.get(), POLLIN, 0};
  ASSERT_EQ(poll(&entry, 1, 20'000), 1);
  char c = 0;
  EXPECT_EQ(read(output.get(), &c, 1), 0);
}

TEST(Program, ReportsWrongUsageInOneLine) {
  Program program({"--bogus"});
  EXPECT_EQ(program.Errors(), "kolvane-amplifier: unknown option '--bogus'\n");
  EXPECT_EQ(program.Output(), "");
  EXPECT_EQ(program.Wait(), 2);
}

TEST(Program, ReportsFailureInOneLine) {
  Program program({"--tcp", "0", "--file", "/nonexistent"});
  EXPECT_EQ(program.Errors(), "kolvane-amplifier: cannot read /nonexistent: No such file or directory\n");
  EXPECT_EQ(program.Output(), "");
  EXPECT_EQ(program.Wait(), 1);
}

TEST(Program, ASignalEndsReadingAPipe) {
  const base::TempFolder folder;
  const std::string pipe = folder.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const char* option : {"--file", "--replay"}) {
    Program program({"--tcp", "0", option, pipe});
    const base::Descriptor writer(open(pipe.c_str(), O_WRONLY | O_CLOEXEC));
    program.Signal(SIGTERM);
    EXPECT_EQ(program.Errors(), "") << option;
    EXPECT_EQ(program.Wait(), 0) << option;
  }
}

TEST(Program, NamesAFolderGivenAsFile) {
  Program program({"--tcp", "0", "--file", "/"});
  EXPECT_EQ(program.Errors(), "kolvane-amplifier: cannot read /: Is a directory\n");
  EXPECT_EQ(program.Wait(), 1);
}

TEST(Program, ShowsHelpAndVersion) {
  Program help({"--help"});
  EXPECT_TRUE(help.Output().starts_with("usage: kolvane-amplifier --tcp PORT | --pty LINK [options]\n"));
  EXPECT_EQ(help.Wait(), 0);
  Program version({"--version"});
  EXPECT_TRUE(version.Output().starts_with("kolvane-amplifier "));
  EXPECT_EQ(version.Wait(), 0);
}

}  // namespace
}  // namespace kolvane::amplifier
