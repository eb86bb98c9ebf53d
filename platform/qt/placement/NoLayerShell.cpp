// Replaces LayerShell.cpp in builds without LayerShellQt.
#include "platform/qt/placement/LayerShell.h"

namespace vorlane::platform {

std::unique_ptr<LayerShell> LayerShell::find()
{
    return nullptr;
}

void LayerShell::cover() {}

void LayerShell::uncover() {}

void LayerShell::place(QWidget& /*popover*/, QPoint /*pointer*/, int /*margin*/) {}

}  // namespace vorlane::platform
