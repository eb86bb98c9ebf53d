// Plays one sound and ends with it: vorlane-play file PATH, or vorlane-play theme NAME. Without
// the library or a sound server it ends at once; it says nothing and never stays.
#include <dlfcn.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

// Of libcanberra's interface, which has not changed since 2008. Opened, not linked: the program
// is of use without it.
struct Context;
struct Properties;
using Finished = void(Context*, std::uint32_t id, int error, void* data);

constexpr const char* library = "libcanberra.so.0";
constexpr unsigned longest = 10;  // seconds; a sound server may hang

template <typename Function>
Function* find(void* handle, const char* name)
{
    return reinterpret_cast<Function*>(dlsym(handle, name));
}

class Library {
public:
    explicit Library(void* handle)
        : createContext(find<int(Context**)>(handle, "ca_context_create")),
          createProperties(find<int(Properties**)>(handle, "ca_proplist_create")),
          set(find<int(Properties*, const char*, const char*)>(handle, "ca_proplist_sets")),
          changeProperties(
              find<int(Context*, Properties*)>(handle, "ca_context_change_props_full")),
          playFull(find<int(Context*, std::uint32_t, Properties*, Finished*, void*)>(
              handle, "ca_context_play_full"))
    {}

    // False when it cannot be played; otherwise `finished` is called, in another thread.
    bool play(const char* property, const char* sound, Finished* finished) const
    {
        Context* context = nullptr;
        Properties* properties = nullptr;
        return createContext && createProperties && set && changeProperties && playFull &&
               createContext(&context) == 0 && createProperties(&properties) == 0 &&
               set(properties, "application.name", "Vorlane") == 0 &&
               set(properties, "application.id", "org.vorlane.Vorlane") == 0 &&
               changeProperties(context, properties) == 0 &&
               set(properties, "media.role", "event") == 0 &&
               set(properties, "canberra.cache-control", "never") == 0 &&
               set(properties, property, sound) == 0 &&
               playFull(context, 1, properties, finished, nullptr) == 0;
    }

private:
    int (*createContext)(Context**);
    int (*createProperties)(Properties**);
    int (*set)(Properties*, const char*, const char*);
    int (*changeProperties)(Context*, Properties*);
    int (*playFull)(Context*, std::uint32_t, Properties*, Finished*, void*);
};

// All that the sound took goes with the process.
[[noreturn]] void end(Context* /*context*/, std::uint32_t /*id*/, int error, void* /*data*/)
{
    _exit(error == 0 ? EXIT_SUCCESS : EXIT_FAILURE);
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3) return EXIT_FAILURE;
    alarm(longest);
    void* const handle = dlopen(library, RTLD_NOW);
    if (!handle) return EXIT_FAILURE;

    const bool isFile = argv[1] == std::string_view("file");
    if (!Library(handle).play(isFile ? "media.filename" : "event.id", argv[2], end)) {
        _exit(EXIT_FAILURE);
    }
    for (;;) (void)pause();
}
