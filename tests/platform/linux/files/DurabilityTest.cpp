// A save survives a power cut: the content is on the disk before the file gets its name, and the
// name is there before the save returns. Replaces the C library's functions to see the order of the
// calls.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/linux/files/Files.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace {

std::vector<std::string>* calls = nullptr;  // null while other tests run

void note(const std::string& call)
{
    if (calls) calls->push_back(call);
}

void noteSync(int file)
{
    if (!calls) return;
    const bool isFolder = std::filesystem::is_directory("/proc/self/fd/" + std::to_string(file));
    note(isFolder ? "sync folder" : "sync content");
}

}  // namespace

extern "C" {

int fdatasync(int file)
{
    noteSync(file);
    return static_cast<int>(syscall(SYS_fdatasync, file));
}

int fsync(int file)
{
    noteSync(file);
    return static_cast<int>(syscall(SYS_fsync, file));
}

int rename(const char* from, const char* to) noexcept
{
    note("rename");
    return static_cast<int>(syscall(SYS_renameat, AT_FDCWD, from, AT_FDCWD, to));
}
}

namespace vorlane::platform {
namespace {

using testing::ElementsAre;

TEST(DurabilityTest, WritesTheContentToTheDiskBeforeTheNameAndThenTheFolder)
{
    const TemporaryFolder folder;
    std::vector<std::string> seen;

    calls = &seen;
    const auto saved = replaceFile(folder.path() / "settings.toml", "limit = 80\n");
    calls = nullptr;

    EXPECT_TRUE(saved);
    EXPECT_THAT(seen, ElementsAre("sync content", "rename", "sync folder"));
}

}  // namespace
}  // namespace vorlane::platform
