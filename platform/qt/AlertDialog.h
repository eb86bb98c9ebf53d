// Shows a question with its buttons as a dialog, and reports the answer through a callback.
#pragma once

#include <QMessageBox>
#include <cstddef>
#include <functional>

#include "App/content/AlertPanelContent.h"

namespace vorlane::platform {

// Escape and closing the window choose the cancel button. A destructive button is never the
// default.
class AlertDialog : public QMessageBox {
    Q_OBJECT

public:
    AlertDialog(const AlertPanelContent& content, QWidget* parent,
                std::function<void(std::size_t button)> answered);

private:
    void finish(const QAbstractButton* chosen);

    std::function<void(std::size_t button)> answered_;
    std::vector<QPushButton*> choices;
};

}  // namespace vorlane::platform
