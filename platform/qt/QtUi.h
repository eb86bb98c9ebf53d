// The plugin as the resident program sees it: makes the windows and runs Qt's loop.
#pragma once

#include <QApplication>
#include <QByteArray>
#include <QPointer>
#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "platform/UiPlugin.h"
#include "platform/qt/ThemeSource.h"

namespace vorlane::platform {

// Never deleted, and neither is its application: both gain nothing at the end of a process, and
// Qt's own threads outlive `exec`.
class QtUi final : public UiPlugin {
public:
    // Needs a display that answers.
    QtUi(const UiHost& host, QByteArray platformName);

    std::unique_ptr<Popover> makePopover(PopoverIntents intents) override;
    std::unique_ptr<SettingsWindow> makeSettingsWindow(SettingsWindowFrame frame,
                                                       SettingsIntents intents) override;
    void runModal(const AlertPanelContent& content,
                  std::function<void(std::size_t button)> answered) override;

    void exec() override;
    void leave() override;
    void setAppearance(const Appearance& appearance) override;
    void popUpMenu(const std::vector<MenuItem>& items,
                   std::function<void(MenuAction)> chosen) override;

private:
    // The application refers to its arguments for as long as it lives.
    struct Arguments {
        QByteArray platformName;
        std::array<char, 8> program{"vorlane"};
        std::array<char, 10> option{"-platform"};
        std::array<char*, 4> values{program.data(), option.data(), platformName.data(), nullptr};
        int count = 3;
    };

    DrivenLoop& loop_;
    Arguments arguments;
    QApplication application;
    ThemeSource themes;
    QPointer<QWidget> settings;
};

}  // namespace vorlane::platform
