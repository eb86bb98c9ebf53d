// Builds the status item's content from the model and the settings.
#pragma once

#include <memory>

#include "App/AppModel.h"
#include "App/content/StatusItemContent.h"
#include "App/services/Calendar.h"
#include "App/services/DefaultsStore.h"
#include "App/services/StatusBar.h"

namespace vorlane {

struct StatusItemView {
    std::shared_ptr<const AppModel> model;
    const Calendar& calendar;

    // The symbol is the first of the state's symbols that `item` has.
    StatusItemContent content(DefaultsStore& defaults, const StatusItem& item) const;
};

}  // namespace vorlane
