// The desktop's tray, as one item in it.
#pragma once

#include <memory>

#include "App/services/RunLoop.h"
#include "App/services/StatusBar.h"
#include "platform/linux/SdBus.h"
#include "platform/linux/StatusNotifierItem.h"

namespace vorlane::platform {

class StatusNotifierBar : public StatusBar {
public:
    // `session` is attached to the main loop and outlives this object.
    StatusNotifierBar(sd_bus* session, RunLoop& loop);

    StatusItem* statusItem() override;

    // For when a tray may have lost the item without a word, as after sleep.
    void registerAgain();

private:
    sd_bus* session_;
    RunLoop& loop_;
    std::unique_ptr<StatusNotifierItem> item;
};

}  // namespace vorlane::platform
