// The picture of the program on windows, task bars and switchers.
#pragma once

#include <QIcon>

namespace vorlane::platform {

// From the files beside the program, installed or in its build tree; empty without them. Looking
// for it by its name would load the icon theme and its libraries.
QIcon applicationIcon();

}  // namespace vorlane::platform
