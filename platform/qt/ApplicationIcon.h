// The picture of the program on windows, task bars and switchers.
#pragma once

#include <QIcon>

namespace vorlane::platform {

// Drawn here: desktops that look for more find the installed one by our application id, and
// looking for it ourselves would load the icon theme and its libraries.
QIcon applicationIcon();

}  // namespace vorlane::platform
