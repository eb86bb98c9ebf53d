// The text of the status item as trays with labels want it.
#pragma once

#include <string>

#include "App/content/StatusItemContent.h"

namespace vorlane::platform {

// The text beside the image: the title without the space before it.
std::string statusLabel(const StatusItemContent& content);

// As wide as the label can become, so that a panel does not move with each percent.
std::string statusLabelGuide(const std::string& label);

}  // namespace vorlane::platform
