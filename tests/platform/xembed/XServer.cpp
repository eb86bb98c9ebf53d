#include "tests/platform/xembed/XServer.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>

namespace vorlane::platform {

namespace {

// Calls only functions that are safe between fork and exec.
[[noreturn]] void runServer(const char* display)
{
    (void)prctl(PR_SET_PDEATHSIG, SIGKILL);  // even if the test crashes
    (void)dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
    (void)execlp("Xvfb", "Xvfb", "-displayfd", display, "-screen", "0", "400x300x24", "-nolisten",
                 "tcp", "-noreset", nullptr);
    _exit(127);
}

}  // namespace

XServer::XServer()
{
    start();
}

void XServer::start()
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    (void)fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    const auto writing = std::to_string(ends[1]);
    process = fork();
    if (process == 0) runServer(writing.c_str());
    (void)close(ends[1]);
    ASSERT_GT(process, 0);

    // The server prints its display number once it listens.
    std::string number;
    for (char digit = 0; read(ends[0], &digit, 1) == 1 && digit != '\n';) number += digit;
    (void)close(ends[0]);
    ASSERT_FALSE(number.empty()) << "Xvfb did not start";
    (void)setenv("DISPLAY", (":" + number).c_str(), 1);
}

XServer::~XServer()
{
    end();
}

void XServer::stop() const
{
    if (process > 0) (void)kill(process, SIGSTOP);
}

void XServer::resume() const
{
    if (process > 0) (void)kill(process, SIGCONT);
}

void XServer::end()
{
    if (process <= 0) return;
    (void)kill(process, SIGKILL);
    (void)waitpid(process, nullptr, 0);
    process = 0;
}

}  // namespace vorlane::platform
