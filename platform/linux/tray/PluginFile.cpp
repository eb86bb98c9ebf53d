#include "platform/linux/tray/PluginFile.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>

#include "platform/linux/base/FileDescriptor.h"

namespace vorlane::platform {

namespace {

// The section headers are at the end of the file. The dynamic linker does not check the file's
// length: it maps what the program headers promise, and the process crashes on a missing page.
bool isWhole(const std::string& path)
{
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat info {};
    if (!file || fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode)) return false;
    ElfW(Ehdr) header;
    if (pread(file.get(), &header, sizeof header, 0) != sizeof header) return false;
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_shoff == 0) return false;
    const auto sectionHeaders = std::uint64_t{header.e_shnum} * header.e_shentsize;
    return header.e_shoff + sectionHeaders <= static_cast<std::uint64_t>(info.st_size);
}

}  // namespace

void* openPlugin(const std::string& path, const char* entryName)
{
    if (!isWhole(path)) return nullptr;

    // The plugin is never closed, because the objects that it created use its code.
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    return library ? dlsym(library, entryName) : nullptr;
}

}  // namespace vorlane::platform
