// A save survives a power cut: the content is on the disk before the file gets its name, and the
// name is there before the save returns. Replaces the C library's functions to see their order.
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

std::vector<std::string> calls;

// "content" for a file, "folder" for a folder.
const char* kindOf(int file)
{
    return std::filesystem::is_directory("/proc/self/fd/" + std::to_string(file)) ? "folder"
                                                                                  : "content";
}

}  // namespace

extern "C" {

int fdatasync(int file)
{
    calls.push_back(std::string("sync ") + kindOf(file));
    return static_cast<int>(syscall(SYS_fdatasync, file));
}

int fsync(int file)
{
    calls.push_back(std::string("sync ") + kindOf(file));
    return static_cast<int>(syscall(SYS_fsync, file));
}

int rename(const char* from, const char* to) noexcept
{
    calls.emplace_back("rename");
    return static_cast<int>(syscall(SYS_renameat, AT_FDCWD, from, AT_FDCWD, to));
}
}

namespace vorlane::platform {
namespace {

using testing::ElementsAre;

TEST(DurabilityTest, WritesTheContentToTheDiskBeforeTheNameAndThenTheFolder)
{
    const TemporaryFolder folder;
    calls.clear();

    ASSERT_TRUE(replaceFile(folder.path() / "settings.toml", "limit = 80\n"));

    EXPECT_THAT(calls, ElementsAre("sync content", "rename", "sync folder"));
}

}  // namespace
}  // namespace vorlane::platform
