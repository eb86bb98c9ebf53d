// The desktop's tray, as one item in it.
#pragma once

#include "App/services/RunLoop.h"
#include "App/services/StatusBar.h"
#include "platform/linux/SdBus.h"
#include "platform/linux/StatusNotifierItem.h"

namespace vorlane::platform {

class StatusNotifierBar : public StatusBar {
public:
    // `session` is attached to the main loop and outlives this object. The tray is told of the item
    // at once: it makes room while the program gets ready, and asks what to show in the main loop.
    StatusNotifierBar(sd_bus* session, RunLoop& loop);

    StatusItem* statusItem() override;

    // For when a tray may have lost the item without a word, as after sleep.
    void registerAgain();

private:
    StatusNotifierItem item;
};

}  // namespace vorlane::platform
