// The settings window's inside: the sections below each other, scrolled when there is no room.
#pragma once

#include <QBoxLayout>
#include <QScrollArea>
#include <vector>

#include "platform/qt/settings/SettingsSectionView.h"

namespace vorlane::platform {

// Rows are made once and updated where they are; only notes come and go. The keyboard's focus and
// what is half typed stay. An intent tells of the user's own change, once.
class SettingsForm : public QScrollArea {
    Q_OBJECT

public:
    explicit SettingsForm(SettingsIntents intents);
    ~SettingsForm() override;

    void setContent(const SettingsContent& content);
    void setTheme(const Theme& theme);

private:
    bool fits(const SettingsContent& content) const;
    void build(const SettingsContent& content);
    void reveal(QWidget* focused);
    void setMargins();

    SettingsIntents intents_;
    Theme theme_;
    QWidget* page;
    QVBoxLayout* stack;
    std::vector<SettingsSectionView*> sections;
};

}  // namespace vorlane::platform
