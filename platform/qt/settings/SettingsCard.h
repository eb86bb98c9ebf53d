// Shows rows on a card with round corners, separated by hairlines.
#pragma once

#include <QBoxLayout>
#include <QLabel>
#include <QWidget>

#include "platform/qt/settings/SettingsRowView.h"

namespace vorlane::platform {

class SettingsCard : public QWidget {
    Q_OBJECT

public:
    explicit SettingsCard(QWidget* parent = nullptr);

    void addRow(SettingsRowView* row);

    // Inserts the note below the first `after` rows.
    void insertNote(QLabel* note, std::size_t after);

    void setTheme(const Theme& theme);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<SettingsRowView*> rows;
    QVBoxLayout* stack;
    Theme theme_;
};

}  // namespace vorlane::platform
