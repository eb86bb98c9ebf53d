#include "platform/linux/files/StaleTemporaries.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <memory>
#include <string_view>

namespace vorlane::platform {

namespace {

constexpr std::time_t oldEnough = 600;    // seconds; to write a file takes some milliseconds
constexpr std::size_t randomLetters = 6;  // which mkostemp makes

struct Closer {
    void operator()(DIR* folder) const { (void)closedir(folder); }
};

bool isLetterOrDigit(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

bool isTemporary(std::string_view name, std::string_view begin)
{
    if (!name.starts_with(begin)) return false;
    const auto rest = name.substr(begin.size());
    return rest.size() == randomLetters && std::ranges::all_of(rest, isLetterOrDigit);
}

bool isLeft(int folder, const char* name)
{
    struct stat status {};
    return fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == geteuid() && std::time(nullptr) - status.st_mtime > oldEnough;
}

}  // namespace

void removeStaleTemporaries(const std::string& folder, const std::string& begin)
{
    const std::unique_ptr<DIR, Closer> entries(opendir(folder.c_str()));
    if (!entries) return;
    const int number = dirfd(entries.get());
    while (const auto* const entry = readdir(entries.get())) {
        const char* const name = entry->d_name;
        if (isTemporary(name, begin) && isLeft(number, name)) (void)unlinkat(number, name, 0);
    }
}

}  // namespace vorlane::platform
