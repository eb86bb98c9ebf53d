#include "platform/linux/files/Files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <utility>

#include "platform/linux/base/FileDescriptor.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

namespace {

constexpr std::size_t pieceSize = 16'384;
constexpr int mostKeptAside = 1000;

// Repeats `call` while signals interrupt it.
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

Expected<> writeAll(int file, std::string_view piece)
{
    while (!piece.empty()) {
        const auto count = uninterrupted([&] { return write(file, piece.data(), piece.size()); });
        if (count <= 0) return lastError();
        piece.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

Expected<> writeAll(int file, const FilePieces& next)
{
    for (auto piece = next(); !piece.empty(); piece = next()) {
        if (auto written = writeAll(file, piece); !written) return written;
    }
    if (uninterrupted([&] { return fdatasync(file); }) != 0) return lastError();
    return {};
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

// Links `path` as `name`, or renames it where a hard link is impossible: for a folder, and on some
// file systems. Never overwrites.
Expected<> keepAs(const std::string& name, const std::string& path)
{
    if (link(path.c_str(), name.c_str()) == 0) return {};
    if (errno == EEXIST) return lastError();
    if (renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) == 0) return {};
    if (errno != EINVAL) return lastError();

    // The file system does not support RENAME_NOREPLACE.
    if (!isFree(name)) return std::errc::file_exists;
    if (rename(path.c_str(), name.c_str()) != 0) return lastError();
    return {};
}

void makeFolder(const std::string& path)
{
    if (mkdir(path.c_str(), S_IRWXU) != 0) return;
    (void)chmod(path.c_str(), S_IRWXU);  // regardless of the umask
}

// Renames `temporary` to `path`. A file cannot replace a folder, so a folder is kept aside first.
Expected<> moveOver(const std::string& temporary, const std::string& path)
{
    const auto move = [&] { return rename(temporary.c_str(), path.c_str()) == 0; };
    if (move()) return {};
    if (errno != EISDIR) return lastError();
    if (auto kept = keepFileAside(path); !kept) return kept;
    if (!move()) return lastError();
    return {};
}

constexpr std::time_t staleAge = 600;     // seconds; writing a file takes milliseconds
constexpr std::size_t randomLetters = 6;  // mkostemp makes this many

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

bool isStale(int folder, const char* name)
{
    struct stat status {};
    return fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == geteuid() && std::time(nullptr) - status.st_mtime > staleAge;
}

// Removes the user's temporary files (`begin` and six letters or digits) in `folder` that are older
// than ten minutes: another session may still be writing a younger one. Errors are ignored.
void removeStaleTemporaries(const std::string& folder, const std::string& begin)
{
    const std::unique_ptr<DIR, Releaser<closedir>> entries(opendir(folder.c_str()));
    if (!entries) return;
    const int number = dirfd(entries.get());
    while (const auto* const entry = readdir(entries.get())) {
        const char* const name = entry->d_name;
        if (isTemporary(name, begin) && isStale(number, name)) (void)unlinkat(number, name, 0);
    }
}

struct Reading {
    std::size_t limit;
    bool anyOwner;  // else only the user's and root's files
};

Expected<> mayBeRead(const struct stat& status, const Reading& reading)
{
    if (!S_ISREG(status.st_mode)) return std::errc::invalid_argument;
    if (status.st_size < 0 || static_cast<std::size_t>(status.st_size) > reading.limit)
        return std::errc::file_too_large;
    const bool isOwn = status.st_uid == geteuid() || status.st_uid == 0;
    if (!isOwn && !reading.anyOwner) return std::errc::operation_not_permitted;
    return {};
}

// Parsers that need padding copy a text that has no spare room at its end.
constexpr std::size_t parserPadding = 64;

Expected<std::string> read(const std::string& path, const Reading& reading)
{
    const auto file = openFile(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    struct stat status {};
    if (!file || fstat(file.get(), &status) != 0) return lastError();
    if (const auto allowed = mayBeRead(status, reading); !allowed) return allowed.error();

    std::string content;
    content.reserve(static_cast<std::size_t>(status.st_size) + parserPadding);
    std::array<char, pieceSize> piece;
    for (;;) {
        const auto count =
            uninterrupted([&] { return ::read(file.get(), piece.data(), piece.size()); });
        if (count < 0) return lastError();
        if (count == 0) return content;
        content.append(piece.data(), static_cast<std::size_t>(count));
        if (content.size() > reading.limit) return std::errc::file_too_large;  // it has grown
    }
}

}  // namespace

Expected<std::string> readFile(const std::string& path, std::size_t limit)
{
    return read(path, {.limit = limit, .anyOwner = true});
}

Expected<std::string> readOwnFile(const std::string& path, std::size_t limit)
{
    return read(path, {.limit = limit, .anyOwner = false});
}

bool countsAsEmpty(std::errc error)
{
    using enum std::errc;
    constexpr std::array reasons{no_such_file_or_directory, not_a_directory,
                                 invalid_argument,          file_too_large,
                                 operation_not_permitted,   too_many_symbolic_link_levels,
                                 no_such_device_or_address, no_such_device};
    return std::ranges::find(reasons, error) != reasons.end();
}

Expected<> replaceFile(const std::string& path, const FilePieces& next)
{
    const auto folder = folderOf(path);
    const auto name = path.substr(path.rfind('/') + 1);
    if (name.empty()) return std::errc::no_such_file_or_directory;

    makeFolders(folder);
    removeStaleTemporaries(folder, "." + name + ".");
    auto temporary = folder + "/." + name + ".XXXXXX";
    const FileDescriptor file(mkostemp(temporary.data(), O_CLOEXEC));
    if (!file) return lastError();

    (void)fchmod(file.get(), S_IRUSR | S_IWUSR);  // regardless of the umask
    auto outcome = writeAll(file.get(), next);
    if (outcome) outcome = moveOver(temporary, path);
    if (!outcome) {
        (void)unlink(temporary.c_str());
        return outcome;
    }
    syncFolder(folder);
    return {};
}

Expected<> replaceFile(const std::string& path, std::string_view content)
{
    return replaceFile(path, [&] { return std::exchange(content, {}); });
}

Expected<> keepFileAside(const std::string& path)
{
    const auto bad = path + ".bad";
    for (int number = 0; number < mostKeptAside; ++number) {
        const auto name = number == 0 ? bad : bad + "." + std::to_string(number);
        const auto kept = keepAs(name, path);
        if (kept || isFree(path)) return {};
        if (kept.error() != std::errc::file_exists) return kept;
        if (sameFile(path, name)) return {};  // already kept aside
    }
    return std::errc::file_exists;
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
