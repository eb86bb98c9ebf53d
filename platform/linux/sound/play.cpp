// Plays one sound and exits: vorlane-play file PATH, or vorlane-play theme NAME. Without a sound
// server it exits at once. It prints nothing and runs for at most ten seconds.
#include <canberra.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

constexpr unsigned longest = 10;  // seconds; a sound server may hang

// The end of the process frees everything.
[[noreturn]] void end(ca_context* /*context*/, std::uint32_t /*id*/, int error, void* /*data*/)
{
    _exit(error == CA_SUCCESS ? EXIT_SUCCESS : EXIT_FAILURE);
}

// False when the sound cannot be played; otherwise `end` is called later, on another thread.
bool play(const char* property, const char* sound)
{
    ca_context* context = nullptr;
    ca_proplist* properties = nullptr;
    return ca_context_create(&context) == CA_SUCCESS &&
           ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "Vorlane",
                                   CA_PROP_APPLICATION_ID, "org.vorlane.Vorlane",
                                   nullptr) == CA_SUCCESS &&
           ca_proplist_create(&properties) == CA_SUCCESS &&
           ca_proplist_sets(properties, CA_PROP_MEDIA_ROLE, "event") == CA_SUCCESS &&
           ca_proplist_sets(properties, CA_PROP_CANBERRA_CACHE_CONTROL, "never") == CA_SUCCESS &&
           ca_proplist_sets(properties, property, sound) == CA_SUCCESS &&
           ca_context_play_full(context, 1, properties, end, nullptr) == CA_SUCCESS;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3) return EXIT_FAILURE;
    alarm(longest);

    const bool isFile = argv[1] == std::string_view("file");
    if (!play(isFile ? CA_PROP_MEDIA_FILENAME : CA_PROP_EVENT_ID, argv[2])) _exit(EXIT_FAILURE);
    for (;;) (void)pause();
}
