// The busy cursor or task bar entry that a desktop shows while it waits for a program's window.
#pragma once

#include <QWidget>
#include <string>

namespace vorlane::platform {

// Call after showing the window. Ends the feedback on X11, by the startup notification protocol;
// Qt does it only for the first window of a process.
void endLaunchFeedback(const QWidget& shown, const std::string& startupId);

}  // namespace vorlane::platform
