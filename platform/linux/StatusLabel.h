// The texts of the status item as trays want them: the label beside it, and its name.
#pragma once

#include <string>

#include "App/content/StatusItemContent.h"

namespace vorlane::platform {

// The text beside the image: the title without the space before it.
std::string statusLabel(const StatusItemContent& content);

// As wide as the label can become, so that a panel does not move with each percent.
std::string statusLabelGuide(const std::string& label);

// The program's name and the description, for screen readers.
std::string spokenTitle(const StatusItemContent& content);

}  // namespace vorlane::platform
