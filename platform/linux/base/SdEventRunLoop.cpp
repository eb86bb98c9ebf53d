#include "platform/linux/base/SdEventRunLoop.h"

#include <algorithm>
#include <ctime>
#include <utility>

#include "App/FatalError.h"
#include "platform/linux/base/OutOfMemory.h"

namespace vorlane::platform {

namespace {

// Too short for users to notice, long enough for the kernel to coalesce wake-ups.
constexpr Seconds usualTolerance{0.02};

std::uint64_t microseconds(Seconds span)
{
    return span.count() > 0 ? static_cast<std::uint64_t>(span.count() * 1e6) : 0;
}

// To sd-event an accuracy of 0 means its default, a quarter of a second.
std::uint64_t accuracy(Seconds tolerance)
{
    return std::max<std::uint64_t>(microseconds(tolerance), 1);
}

}  // namespace

SdEventRunLoop::SdEventRunLoop() : event_(owned<EventPointer>(sd_event_new))
{
    if (!event_) fatalError("Cannot make an event loop");
    posted_ = owned<EventSourcePointer>([this](sd_event_source** source) {
        return sd_event_add_defer(event_.get(), source, runPosted, this);
    });
    if (!posted_) fatalError("Cannot add to the event loop");
    (void)sd_event_source_set_enabled(posted_.get(), SD_EVENT_OFF);
}

void SdEventRunLoop::run()
{
    while (!stopped) {
        if (sd_event_run(event_.get(), UINT64_MAX) < 0) return;
    }
}

void SdEventRunLoop::stop()
{
    stopped = true;
}

void SdEventRunLoop::async(std::function<void()> work)
{
    queue.push_back(std::move(work));
    (void)sd_event_source_set_enabled(posted_.get(), SD_EVENT_ONESHOT);
}

Subscription SdEventRunLoop::after(Seconds delay, std::function<void()> work)
{
    return addTimer({.delay = delay, .tolerance = usualTolerance, .interval = Seconds{0}},
                    std::move(work));
}

Subscription SdEventRunLoop::repeat(Rhythm rhythm, std::function<void()> work)
{
    return addTimer(
        {.delay = rhythm.interval, .tolerance = rhythm.tolerance, .interval = rhythm.interval},
        std::move(work));
}

bool SdEventRunLoop::isMainThread() const
{
    return std::this_thread::get_id() == mainThread;
}

Subscription SdEventRunLoop::addTimer(Schedule schedule, std::function<void()> work)
{
    const auto timer = std::make_shared<Timer>();
    timer->work = std::move(work);
    timer->interval = microseconds(schedule.interval);
    timer->timers = timers;
    timer->id = nextId++;
    timer->source = owned<EventSourcePointer>([&](sd_event_source** source) {
        return sd_event_add_time_relative(event_.get(), source, CLOCK_MONOTONIC,
                                          microseconds(schedule.delay),
                                          accuracy(schedule.tolerance), fire, timer.get());
    });
    if (!timer->source) return {};

    timers->emplace(timer->id, timer);
    return Subscription([weak = std::weak_ptr(timers), id = timer->id] {
        if (const auto alive = weak.lock()) alive->erase(id);
    });
}

int SdEventRunLoop::fire(sd_event_source* source, std::uint64_t due, void* userdata)
{
    const auto* const firing = static_cast<Timer*>(userdata);
    const auto timers = firing->timers.lock();
    if (!timers) return 0;
    const auto timer = timers->at(firing->id);  // keeps it alive if its work ends the subscription

    if (timer->interval == 0) {
        timers->erase(timer->id);
    } else {
        // Counts from when the timer was due, not from now, so that delays do not add up. Skips
        // missed repetitions.
        std::uint64_t now = due;
        (void)sd_event_now(sd_event_source_get_event(source), CLOCK_MONOTONIC, &now);
        const auto missed = now > due ? (now - due) / timer->interval : 0;
        (void)sd_event_source_set_time(source, due + (missed + 1) * timer->interval);
        (void)sd_event_source_set_enabled(source, SD_EVENT_ONESHOT);
    }
    (void)hasMemoryFor(timer->work);
    return 0;
}

int SdEventRunLoop::runPosted(sd_event_source* /*source*/, void* self)
{
    // Work that is posted from here on runs in the next turn.
    const auto work = std::exchange(static_cast<SdEventRunLoop*>(self)->queue, {});
    for (const auto& item : work) (void)hasMemoryFor(item);
    return 0;
}

}  // namespace vorlane::platform
