#include "platform/qt/settings/SettingsFrame.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr int titleBar = 40;  // approximate height of the desktop's title bar

}  // namespace

SettingsFrame::SettingsFrame(SettingsWindowFrame frame, QWidget* content,
                             std::function<void()> closedByUser)
    : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      closedByUser_(std::move(closedByUser))
{
    setWindowTitle(QString::fromUtf8(frame.title));
    setFixedSize(frame.width, frame.height);
    auto* const box = new QVBoxLayout(this);
    box->setContentsMargins(0, 0, 0, 0);
    box->addWidget(content);
}

void SettingsFrame::bringToFront()
{
    const auto* const screen = QGuiApplication::screenAt(QCursor::pos());
    if (screen && !centred) {
        // On a low screen the form scrolls.
        const auto room = screen->availableGeometry().size() - QSize(0, titleBar);
        setFixedSize(size().boundedTo(room));
        QRect place(QPoint(), size() + QSize(0, titleBar));
        place.moveCenter(screen->availableGeometry().center());
        move(place.topLeft());
        centred = true;
    }
    // Window managers can minimize a window even without the button.
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    if (auto* const question = QApplication::activeModalWidget()) {
        question->raise();
        question->activateWindow();
    }
}

void SettingsFrame::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    closedByUser_();
}

void SettingsFrame::keyPressEvent(QKeyEvent* event)
{
    if (!event->matches(QKeySequence::Close)) return QWidget::keyPressEvent(event);
    close();
}

}  // namespace vorlane::platform
