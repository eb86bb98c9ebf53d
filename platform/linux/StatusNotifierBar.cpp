#include "platform/linux/StatusNotifierBar.h"

namespace vorlane::platform {

StatusNotifierBar::StatusNotifierBar(sd_bus* session, RunLoop& loop)
    : session_(session), loop_(loop)
{}

StatusItem* StatusNotifierBar::statusItem()
{
    if (!item) item = std::make_unique<StatusNotifierItem>(session_, loop_);
    return item.get();
}

void StatusNotifierBar::registerAgain()
{
    if (item) item->registerAgain();
}

}  // namespace vorlane::platform
