#include "platform/qt/AlertDialog.h"

#include <QPushButton>
#include <algorithm>
#include <utility>

namespace vorlane::platform {

namespace {

QMessageBox::ButtonRole role(vorlane::ButtonRole ours)
{
    switch (ours) {
        case ButtonRole::standard:
            return QMessageBox::AcceptRole;
        case ButtonRole::destructive:
            return QMessageBox::DestructiveRole;
        case ButtonRole::cancel:
            return QMessageBox::RejectRole;
    }
    return QMessageBox::AcceptRole;
}

}  // namespace

AlertDialog::AlertDialog(const AlertPanelContent& content, QWidget* parent,
                         std::function<void(std::size_t button)> answered)
    : QMessageBox(parent), answered_(std::move(answered))
{
    setWindowTitle("Vorlane");
    setIcon(QMessageBox::Question);
    setTextFormat(Qt::PlainText);
    setText(QString::fromStdString(content.message));
    setInformativeText(QString::fromStdString(content.informativeText));
    setAttribute(Qt::WA_DeleteOnClose);

    for (const auto& button : content.buttons) {
        auto* const choice = addButton(QString::fromStdString(button.title), role(button.role));
        choice->setAutoDefault(false);
        if (button.role == vorlane::ButtonRole::cancel) setEscapeButton(choice);
        choices.push_back(choice);
    }
    const auto harmless = std::ranges::find_if(content.buttons, [](const AlertButton& button) {
        return button.role != vorlane::ButtonRole::destructive;
    });
    if (harmless != content.buttons.end()) {
        setDefaultButton(choices[static_cast<std::size_t>(harmless - content.buttons.begin())]);
    }
    connect(this, &QDialog::finished, this, [this] { finish(clickedButton()); });
}

void AlertDialog::finish(const QAbstractButton* chosen)
{
    // When the window is closed, Qt sets clickedButton() only after this signal.
    const auto found = std::ranges::find(choices, chosen ? chosen : escapeButton());
    if (found == choices.end()) return;
    if (const auto answered = std::exchange(answered_, nullptr)) {
        answered(static_cast<std::size_t>(found - choices.begin()));
    }
}

}  // namespace vorlane::platform
