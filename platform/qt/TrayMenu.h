// The tray item's menu, for trays that do not show menus themselves.
#pragma once

#include <QMenu>
#include <functional>
#include <vector>

#include "App/content/StatusItemContent.h"

namespace vorlane::platform {

// Deletes itself when it closes.
class TrayMenu : public QMenu {
    Q_OBJECT

public:
    TrayMenu(const std::vector<MenuItem>& items, const std::function<void(MenuAction)>& chosen);
};

}  // namespace vorlane::platform
