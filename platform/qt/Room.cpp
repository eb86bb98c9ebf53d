#include "platform/qt/Room.h"

#include <pthread.h>
#include <sys/mman.h>

#include <mutex>
#include <vector>

namespace vorlane::platform {

namespace {

void* waitForTheRest(void* gate)
{
    const std::lock_guard passing(*static_cast<std::mutex*>(gate));
    return nullptr;
}

bool canStartThreads(std::size_t count)
{
    std::mutex gate;
    std::vector<pthread_t> threads(count);
    std::size_t started = 0;
    {
        const std::lock_guard closed(gate);  // until all are there at once
        while (started < count &&
               pthread_create(&threads[started], nullptr, waitForTheRest, &gate) == 0) {
            ++started;
        }
    }
    for (std::size_t i = 0; i < started; ++i) (void)pthread_join(threads[i], nullptr);
    return started == count;
}

}  // namespace

bool hasRoom(const Room& wanted)
{
    void* const memory =
        mmap(nullptr, wanted.bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return false;
    const bool threadsToo = canStartThreads(wanted.threads);
    (void)munmap(memory, wanted.bytes);
    return threadsToo;
}

}  // namespace vorlane::platform
