// Shows its content whole where there is room, and scrolls it up and down where there is not.
#pragma once

#include <QScrollArea>

namespace vorlane::platform {

class ScrollPane : public QScrollArea {
    Q_OBJECT

public:
    // Takes the content, whose width never changes.
    explicit ScrollPane(QWidget* content);

    // In device-independent pixels.
    void setMostHeight(int height);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int mostHeight = QWIDGETSIZE_MAX;
};

}  // namespace vorlane::platform
