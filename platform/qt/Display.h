// Finds the display that windows can be shown on before Qt is asked, which ends the process when
// there is none.
#pragma once

#include <QByteArray>
#include <optional>

namespace vorlane::platform {

// The name of the Qt platform to use: the user's choice in QT_QPA_PLATFORM, else Wayland, else X.
// Absent when no display answers that Qt has a working plugin for.
std::optional<QByteArray> reachablePlatform();

// Calls `lost` when the Wayland compositor has gone, just before Qt ends the process by _exit().
// (When it is the X server, Qt calls exit().)
void tellOfLostDisplay(void (*lost)());

}  // namespace vorlane::platform
