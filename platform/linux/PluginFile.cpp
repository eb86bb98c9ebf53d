#include "platform/linux/PluginFile.h"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <optional>

#include "platform/UiBuild.h"
#include "platform/linux/Files.h"
#include "platform/linux/Installation.h"

namespace vorlane::platform {

namespace {

// The section headers are what linkers write last. The dynamic linker maps what the program
// headers promise without asking whether it is there, and dies of a page that is not.
bool isWhole(const std::string& file)
{
    ElfW(Ehdr) header;
    if (file.size() < sizeof header) return false;
    std::memcpy(&header, file.data(), sizeof header);
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_shoff == 0) return false;
    return header.e_shoff <= file.size() &&
           std::uint64_t{header.e_shnum} * header.e_shentsize <= file.size() - header.e_shoff;
}

constexpr std::size_t largest = 64 << 20;  // bytes; a sanitized build takes twenty

bool isOurs(const std::string& file)
{
    return file.find(uiBuild) != std::string::npos;
}

// The one place of the resident part that asks for megabytes at once.
bool isFit(const std::string& path)
{
    try {
        const auto file = readFile(path, largest);
        return file && isWhole(*file) && isOurs(*file);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace

void* openPlugin(const std::string& path, const char* entryName)
{
    if (!isFit(path)) return nullptr;

    // Never closed: a toolkit leaves threads and handlers behind that need its code.
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    return library ? dlsym(library, entryName) : nullptr;
}

std::string usualPluginPath(const std::string& fileName)
{
    return installedPath("lib/vorlane/" + fileName);
}

}  // namespace vorlane::platform
