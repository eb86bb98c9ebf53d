// An event loop whose time passes only in `advance`, which also moves the clock.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "App/services/RunLoop.h"
#include "FakeClock.h"

namespace vorlane {

class FakeRunLoop : public RunLoop {
public:
    bool onMainThread = true;
    bool lazy = false;  // repeating timers fire as late as their tolerance allows

    explicit FakeRunLoop(FakeClock& clock) : clock_(clock) {}

    void async(std::function<void()> work) override { queue.push_back(std::move(work)); }

    Subscription after(Seconds delay, std::function<void()> work) override
    {
        return add({.due = elapsed + delay, .rhythm = std::nullopt, .work = std::move(work)});
    }

    Subscription repeat(Rhythm rhythm, std::function<void()> work) override
    {
        return add({.due = elapsed + rhythm.interval, .rhythm = rhythm, .work = std::move(work)});
    }

    bool isMainThread() const override { return onMainThread; }

    // One turn: runs the work that was queued before it.
    void turn()
    {
        for (const auto& work : std::exchange(queue, {})) work();
    }

    // Turns until the queue is empty.
    void settle()
    {
        while (!queue.empty()) turn();
    }

    // Lets time pass: every timer fires when due, and the work it queues runs at once.
    void advance(Seconds span)
    {
        settle();
        const auto end = elapsed + span;
        for (auto next = earliest(); next && firing(timers.at(*next)) <= end; next = earliest()) {
            fire(*next);
            settle();
        }
        passTo(end);
    }

private:
    struct Timer {
        Seconds due;
        std::optional<Rhythm> rhythm;
        std::function<void()> work;
    };

    Subscription add(Timer timer)
    {
        timers.emplace(newest, std::move(timer));
        return Subscription([this, id = newest++] { timers.erase(id); });
    }

    Seconds firing(const Timer& timer) const
    {
        return lazy && timer.rhythm ? timer.due + timer.rhythm->tolerance : timer.due;
    }

    // The next timer to fire; of timers due at the same time, the one registered first.
    std::optional<std::uint64_t> earliest() const
    {
        const auto found = std::ranges::min_element(
            timers, {}, [this](const auto& entry) { return firing(entry.second); });
        if (found == timers.end()) return std::nullopt;
        return found->first;
    }

    void fire(std::uint64_t id)
    {
        auto& timer = timers.at(id);
        passTo(std::max(elapsed, firing(timer)));
        const auto work = timer.work;
        if (timer.rhythm) {
            timer.due += timer.rhythm->interval;
        } else {
            timers.erase(id);
        }
        work();
    }

    void passTo(Seconds moment)
    {
        clock_.time = clock_.time + (moment - elapsed);
        elapsed = moment;
    }

    Seconds elapsed{0};
    std::vector<std::function<void()>> queue;
    std::map<std::uint64_t, Timer> timers;
    std::uint64_t newest = 0;
    FakeClock& clock_;
};

}  // namespace vorlane
