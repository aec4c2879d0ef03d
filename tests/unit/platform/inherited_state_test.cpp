#include "platform/inherited_state.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace varnhold::testing {
namespace {

// Each of these changes what belongs to the whole process, so each looks in a child of its own,
// which exits with 0 if all is well.
int exitOf(int (*work)()) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(work());
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

TEST(InheritedState, LeavesNoSignalBlocked) {
    EXPECT_EQ(exitOf([] {
                  sigset_t all;
                  ::sigfillset(&all);
                  ::sigprocmask(SIG_SETMASK, &all, nullptr);
                  platform::shedInheritedState();
                  std::raise(SIGTERM);
                  return 1;
              }),
              128 + SIGTERM);
}

TEST(InheritedState, LetsTheEndsOfChildrenBeWaitedFor) {
    EXPECT_EQ(exitOf([] {
                  std::signal(SIGCHLD, SIG_IGN);
                  platform::shedInheritedState();
                  return exitOf([] { return 7; });
              }),
              7);
}

TEST(InheritedState, KeepsASignalIgnoredThatWasIgnoredOnPurpose) {
    EXPECT_EQ(exitOf([] {
                  std::signal(SIGHUP, SIG_IGN);
                  platform::shedInheritedState();
                  std::raise(SIGHUP);
                  return 0;
              }),
              0);
}

TEST(InheritedState, GivesClosedStandardStreamsSomewhereToGo) {
    EXPECT_EQ(exitOf([] {
                  ::close(STDIN_FILENO);
                  ::close(STDERR_FILENO);
                  platform::shedInheritedState();
                  const int next = ::open("/dev/zero", O_RDONLY);
                  return next > STDERR_FILENO ? 0 : 1;
              }),
              0);
}

TEST(InheritedState, LeavesStandardStreamsThatAreOpenAlone) {
    EXPECT_EQ(exitOf([] {
                  int ends[2] = {-1, -1};
                  if (::pipe(ends) != 0 || ::dup2(ends[1], STDOUT_FILENO) < 0) {
                      return 1;
                  }
                  platform::shedInheritedState();
                  char byte = 0;
                  return ::write(STDOUT_FILENO, "x", 1) == 1 && ::read(ends[0], &byte, 1) == 1 ? 0
                                                                                               : 2;
              }),
              0);
}

TEST(InheritedState, ForgetsTheWidthOfATerminal) {
    EXPECT_EQ(exitOf([] {
                  ::setenv("COLUMNS", "80", 1);
                  platform::shedInheritedState();
                  return std::getenv("COLUMNS") == nullptr ? 0 : 1;
              }),
              0);
}

} // namespace
} // namespace varnhold::testing
