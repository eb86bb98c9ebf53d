// The settings window's content: a scrolling column of sections.
#pragma once

#include <QBoxLayout>
#include <QScrollArea>
#include <vector>

#include "platform/qt/settings/SettingsSectionView.h"

namespace vorlane::platform {

// Updates its row widgets instead of replacing them; only notes come and go. New content keeps the
// keyboard focus and half-typed text. Reports each of the user's changes once.
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
