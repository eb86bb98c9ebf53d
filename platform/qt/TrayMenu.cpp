#include "platform/qt/TrayMenu.h"

#include <QString>

namespace vorlane::platform {

namespace {

// Qt would take a single ampersand as the mark of a shortcut letter.
QString label(const std::string& title)
{
    return QString::fromStdString(title).replace('&', "&&");
}

}  // namespace

TrayMenu::TrayMenu(const std::vector<MenuItem>& items,
                   const std::function<void(MenuAction)>& chosen)
{
    setAttribute(Qt::WA_DeleteOnClose);
    for (const auto& item : items) {
        if (item.title.empty()) {
            addSeparator();
            continue;
        }
        auto* const line = addAction(label(item.title));
        line->setEnabled(item.action != MenuAction::none);
        connect(line, &QAction::triggered, this,
                [chosen, action = item.action] { chosen(action); });
    }
}

}  // namespace vorlane::platform
