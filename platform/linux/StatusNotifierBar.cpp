#include "platform/linux/StatusNotifierBar.h"

namespace vorlane::platform {

StatusNotifierBar::StatusNotifierBar(sd_bus* session, RunLoop& loop) : item(session, loop) {}

StatusItem* StatusNotifierBar::statusItem()
{
    return &item;
}

void StatusNotifierBar::registerAgain()
{
    item.registerAgain();
}

}  // namespace vorlane::platform
