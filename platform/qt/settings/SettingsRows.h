// Creates the view for a settings row.
#pragma once

#include "platform/qt/settings/SettingsRowView.h"

namespace vorlane::platform {

// The view is empty until `showRow`; null for a note. `intents` must outlive the view.
SettingsRowView* makeSettingsRowView(const SettingsRow& row, const SettingsIntents& intents);

}  // namespace vorlane::platform
