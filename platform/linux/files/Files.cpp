#include "platform/linux/files/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "platform/linux/base/FileDescriptor.h"
#include "platform/linux/files/StaleTemporaries.h"

namespace vorlane::platform {

namespace {

constexpr std::size_t pieceSize = 16'384;
constexpr int mostKeptAside = 1000;

// What `call` returns once no signal interrupts it.
template <typename Call>
auto uninterrupted(Call&& call)
{
    for (;;) {
        const auto result = call();
        if (result >= 0 || errno != EINTR) return result;
    }
}

FileDescriptor openFile(const std::string& path, int flags)
{
    return FileDescriptor(uninterrupted([&] { return open(path.c_str(), flags | O_CLOEXEC); }));
}

bool writeAll(int file, std::string_view piece)
{
    while (!piece.empty()) {
        const auto count = uninterrupted([&] { return write(file, piece.data(), piece.size()); });
        if (count <= 0) return false;
        piece.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool writeAll(int file, const FilePieces& next)
{
    for (auto piece = next(); !piece.empty(); piece = next()) {
        if (!writeAll(file, piece)) return false;
    }
    return uninterrupted([&] { return fdatasync(file); }) == 0;
}

void syncFolder(const std::string& path)
{
    const auto folder = openFile(path, O_RDONLY | O_DIRECTORY);
    if (folder) (void)fsync(folder.get());
}

bool sameFile(const std::string& one, const std::string& other)
{
    struct stat first {};
    struct stat second {};
    return lstat(one.c_str(), &first) == 0 && lstat(other.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

bool isFree(const std::string& path)
{
    struct stat status {};
    return lstat(path.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

// Gives `path` the second name `name`, or moves it there where a second name is impossible: for a
// folder, and on file systems without links. Never overwrites. 0, or what went wrong.
int keepAs(const std::string& name, const std::string& path)
{
    if (link(path.c_str(), name.c_str()) == 0) return 0;
    if (errno == EEXIST) return errno;
    if (renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL) return errno;

    // A file system that cannot refuse to overwrite: look first.
    if (!isFree(name)) return EEXIST;
    return rename(path.c_str(), name.c_str()) == 0 ? 0 : errno;
}

void makeFolder(const std::string& path)
{
    if (mkdir(path.c_str(), S_IRWXU) != 0) return;
    (void)chmod(path.c_str(), S_IRWXU);  // whatever the umask took from it
}

// For a call that sets no errno itself.
bool failed(int reason)
{
    errno = reason;
    return false;
}

// Over whatever stands there; a folder would have to be empty, and is kept aside.
bool moveOver(const std::string& temporary, const std::string& path)
{
    const auto move = [&] { return rename(temporary.c_str(), path.c_str()) == 0; };
    return move() || (errno == EISDIR && keepFileAside(path) && move());
}

struct Reading {
    std::size_t limit;
    bool whosever;  // not only the user's own and root's
};

// 0, or why it is not to be read.
int objection(const struct stat& status, const Reading& reading)
{
    if (!S_ISREG(status.st_mode)) return EINVAL;
    if (status.st_size < 0 || static_cast<std::size_t>(status.st_size) > reading.limit)
        return EFBIG;
    const bool isOwn = status.st_uid == geteuid() || status.st_uid == 0;
    return isOwn || reading.whosever ? 0 : EPERM;
}

// Parsers look a little beyond the end of a text; where there is no room they copy it.
constexpr std::size_t roomForParsers = 64;

std::optional<std::string> read(const std::string& path, const Reading& reading)
{
    const auto file = openFile(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    struct stat status {};
    if (!file || fstat(file.get(), &status) != 0) return std::nullopt;
    errno = objection(status, reading);
    if (errno != 0) return std::nullopt;

    std::string content;
    content.reserve(static_cast<std::size_t>(status.st_size) + roomForParsers);
    std::array<char, pieceSize> piece;
    for (;;) {
        const auto count =
            uninterrupted([&] { return ::read(file.get(), piece.data(), piece.size()); });
        if (count < 0) return std::nullopt;
        if (count == 0) return content;
        content.append(piece.data(), static_cast<std::size_t>(count));
        if (content.size() <= reading.limit) continue;
        errno = EFBIG;  // it grew meanwhile
        return std::nullopt;
    }
}

}  // namespace

std::optional<std::string> readFile(const std::string& path, std::size_t limit)
{
    return read(path, {.limit = limit, .whosever = true});
}

std::optional<std::string> readOwnFile(const std::string& path, std::size_t limit)
{
    return read(path, {.limit = limit, .whosever = false});
}

bool countsAsEmpty(int reason)
{
    constexpr std::array reasons{ENOENT, ENOTDIR, EINVAL, EFBIG, EPERM, ELOOP, ENXIO, ENODEV};
    return std::ranges::find(reasons, reason) != reasons.end();
}

bool replaceFile(const std::string& path, const FilePieces& next)
{
    const auto folder = folderOf(path);
    const auto name = path.substr(path.rfind('/') + 1);
    if (name.empty()) return failed(ENOENT);

    makeFolders(folder);
    removeStaleTemporaries(folder, "." + name + ".");
    auto temporary = folder + "/." + name + ".XXXXXX";
    const FileDescriptor file(mkostemp(temporary.data(), O_CLOEXEC));
    if (!file) return false;

    (void)fchmod(file.get(), S_IRUSR | S_IWUSR);  // whatever the umask took from it
    if (!writeAll(file.get(), next) || !moveOver(temporary, path)) {
        const int reason = errno;
        (void)unlink(temporary.c_str());
        return failed(reason);
    }
    syncFolder(folder);
    return true;
}

bool keepFileAside(const std::string& path)
{
    const auto bad = path + ".bad";
    for (int number = 0; number < mostKeptAside; ++number) {
        const auto name = number == 0 ? bad : bad + "." + std::to_string(number);
        const int error = keepAs(name, path);
        if (error == 0) return true;
        if (error != EEXIST) return isFree(path);
        if (sameFile(path, name)) return true;  // kept before, but never replaced
    }
    return false;
}

void makeFolders(const std::string& path)
{
    for (auto end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1)) {
        makeFolder(path.substr(0, end));
    }
    makeFolder(path);
}

std::string folderOf(const std::string& path)
{
    const auto slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

}  // namespace vorlane::platform
