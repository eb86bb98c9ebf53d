#include "platform/linux/ExitHook.h"

#include <cstdlib>
#include <utility>

namespace vorlane::platform {

namespace {

// The one thing that the C library lets a process keep for its exit: a function without data.
std::function<void()>& pending()
{
    static auto* const work = new std::function<void()>;  // outlives the exit
    return *work;
}

}  // namespace

ExitHook::ExitHook(std::function<void()> work)
{
    static const bool registered = std::atexit(runNow) == 0;
    (void)registered;
    pending() = std::move(work);
}

ExitHook::~ExitHook()
{
    pending() = nullptr;
}

void ExitHook::runNow()
{
    if (const auto work = std::exchange(pending(), nullptr)) work();
}

}  // namespace vorlane::platform
