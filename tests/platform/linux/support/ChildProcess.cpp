#include "tests/platform/linux/support/ChildProcess.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>

namespace vorlane::platform {

namespace {

constexpr unsigned patience = 20;  // seconds

// Gives the process its own mounts. Root may do so directly; other users need a user namespace.
bool ownMounts()
{
    const auto user = std::to_string(getuid());
    if (unshare(CLONE_NEWNS) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
        std::ofstream("/proc/self/uid_map") << user << " " << user << " 1";
    }
    return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

}  // namespace

bool holdsInChild(const std::function<void()>& work)
{
    (void)std::fflush(stdout);
    const auto child = fork();
    if (child == 0) {
        (void)alarm(patience);
        work();
        (void)std::fflush(stdout);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child) return false;
    if (WIFSIGNALED(status)) ADD_FAILURE() << strsignal(WTERMSIG(status));
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::string cannotMount()
{
    const auto child = fork();
    if (child == 0)
        _exit(ownMounts() && mount("none", "/tmp", "tmpfs", 0, "size=4k") == 0 ? 0 : errno);
    int status = 0;
    (void)waitpid(child, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return "";
    return std::string("private mounts are not possible here: ") +
           std::strerror(WEXITSTATUS(status));
}

bool mountDisk(const std::filesystem::path& folder, const std::string& bytes)
{
    return ownMounts() &&
           mount("none", folder.c_str(), "tmpfs", 0, ("size=" + bytes + ",mode=700").c_str()) == 0;
}

bool remount(const std::filesystem::path& folder, bool readOnly)
{
    return mount("none", folder.c_str(), nullptr, (readOnly ? MS_REMOUNT | MS_RDONLY : MS_REMOUNT),
                 nullptr) == 0;
}

bool dropRights(const std::filesystem::path& folder)
{
    if (getuid() != 0) return true;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (lchown(entry.path().c_str(), nobody, nobody) != 0) return false;
    }
    return chown(folder.c_str(), nobody, nobody) == 0 && setgroups(0, nullptr) == 0 &&
           setresgid(nobody, nobody, nobody) == 0 && setresuid(nobody, nobody, nobody) == 0;
}

}  // namespace vorlane::platform
