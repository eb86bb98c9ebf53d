// The main loop while another loop drives it.
#pragma once

#include "platform/UiPlugin.h"
#include "platform/linux/SdBus.h"

namespace vorlane::platform {

class SdEventDrivenLoop : public DrivenLoop {
public:
    // `event` outlives this object.
    explicit SdEventDrivenLoop(sd_event* event) : event_(event) {}

    int descriptor() const override { return sd_event_get_fd(event_); }

    Step step() override
    {
        if (sd_event_get_state(event_) != SD_EVENT_INITIAL) return Step::nested;

        int pending = sd_event_prepare(event_);
        if (pending == 0) pending = sd_event_wait(event_, 0);
        if (pending <= 0) return Step::idle;
        return sd_event_dispatch(event_) >= 0 ? Step::dispatched : Step::idle;
    }

private:
    sd_event* event_;
};

}  // namespace vorlane::platform
