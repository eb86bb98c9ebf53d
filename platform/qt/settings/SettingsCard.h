// Rows on one sheet with round corners, a hairline between each two of them.
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

    // Belongs to the row above it. `after`: how many rows are above.
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
