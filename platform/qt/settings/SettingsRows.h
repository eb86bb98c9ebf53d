// Makes the view for each type of settings row.
#pragma once

#include "platform/qt/settings/SettingsRowView.h"

namespace vorlane::platform {

// The view has no content yet; null for a note. `intents` must outlive it.
SettingsRowView* makeSettingsRowView(const SettingsRow& row, const SettingsIntents& intents);

}  // namespace vorlane::platform
