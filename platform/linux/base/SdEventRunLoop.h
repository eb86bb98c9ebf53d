// The main loop, implemented with sd-event.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <thread>
#include <vector>

#include "App/services/RunLoop.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

// Timers stop while the machine is suspended.
class SdEventRunLoop : public RunLoop {
public:
    SdEventRunLoop();

    sd_event* event() const { return event_.get(); }

    // Returns after `stop`, at the end of that turn.
    void run();
    void stop();

    void async(std::function<void()> work) override;
    Subscription after(Seconds delay, std::function<void()> work) override;
    Subscription repeat(Rhythm rhythm, std::function<void()> work) override;
    bool isMainThread() const override;

private:
    struct Timer {
        std::function<void()> work;
        std::uint64_t interval = 0;  // microseconds; 0: once
        EventSourcePointer source;
        std::weak_ptr<std::map<std::uint64_t, std::shared_ptr<Timer>>> timers;
        std::uint64_t id = 0;
    };
    using Timers = std::map<std::uint64_t, std::shared_ptr<Timer>>;

    struct Schedule {
        Seconds delay;
        Seconds tolerance;
        Seconds interval;
    };
    Subscription addTimer(Schedule schedule, std::function<void()> work);
    static int fire(sd_event_source* source, std::uint64_t due, void* timer);
    static int runPosted(sd_event_source* source, void* self);

    EventPointer event_;
    EventSourcePointer posted_;  // enabled while `queue` holds work
    std::vector<std::function<void()>> queue;
    std::shared_ptr<Timers> timers = std::make_shared<Timers>();
    std::uint64_t nextId = 0;
    bool stopped = false;
    std::thread::id mainThread = std::this_thread::get_id();
};

}  // namespace vorlane::platform
