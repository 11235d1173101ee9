#include "tests/host/kvl_play_run.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include "host/run_host.h"
#include "tests/support/temp_file.h"

extern char** environ;

namespace hosttest {
namespace {

constexpr uid_t kNobody = 65534;

std::vector<std::string> WithModule(std::vector<std::string> args) {
  if (std::find(args.begin(), args.end(), "--module") == args.end())
    args.insert(args.begin(), {"--module", MKVSOURCE_MODULE_PATH});
  return args;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

std::string Contents(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

// In the child: only async-signal-safe calls until exec.
[[noreturn]] void Exec(char** argv, char** envp, const std::string& out, const std::string& err,
                       bool asNobody) {
  const int outFd = open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  const int errFd = open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  if (outFd < 0 || errFd < 0 || dup2(outFd, STDOUT_FILENO) < 0 || dup2(errFd, STDERR_FILENO) < 0)
    _exit(127);
  if (asNobody && geteuid() == 0 &&
      (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0))
    _exit(kNoNobody);
  execve(argv[0], argv, envp);
  _exit(127);
}

}  // namespace

HostRun RunKvlPlay(std::vector<std::string> args) {
  args = WithModule(std::move(args));
  args.insert(args.begin(), "kvl-play");
  std::vector<const char*> argv;
  for (const std::string& arg : args) argv.push_back(arg.c_str());
  std::ostringstream report, errors;
  const int status = kvlhost::RunHost(static_cast<int>(argv.size()), argv.data(), {report, errors});
  return {status, report.str(), errors.str()};
}

HostRun RunKvlPlayChild(const std::vector<std::string>& args,
                        const std::vector<std::string>& environment, bool asNobody) {
  std::vector<std::string> argTexts = WithModule(args);
  argTexts.insert(argTexts.begin(), KVL_PLAY_PATH);
  std::vector<std::string> envTexts(environment);
  for (char** variable = environ; *variable; ++variable) envTexts.emplace_back(*variable);
  std::vector<char*> argv = Pointers(argTexts);
  std::vector<char*> envp = Pointers(envTexts);
  const std::string out = mkvtest::NewTempPath(".out");
  const std::string err = mkvtest::NewTempPath(".err");

  const pid_t child = fork();
  if (child == 0) Exec(argv.data(), envp.data(), out, err, asNobody);
  int wait = 0;
  if (child < 0 || waitpid(child, &wait, 0) != child) return {-1, "", "fork or wait failed"};
  const int status = WIFEXITED(wait) ? WEXITSTATUS(wait) : 128 + WTERMSIG(wait);
  return {status, Contents(out), Contents(err)};
}

}  // namespace hosttest
