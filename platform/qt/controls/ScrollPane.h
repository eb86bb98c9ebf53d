// Shows its content in full, or scrolls it vertically when it is too high.
#pragma once

#include <QScrollArea>

namespace vorlane::platform {

class ScrollPane : public QScrollArea {
    Q_OBJECT

public:
    // Takes ownership of the content, whose width must not change.
    explicit ScrollPane(QWidget* content);

    // In device-independent pixels.
    void setHeightLimit(int height);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int heightLimit = QWIDGETSIZE_MAX;
};

}  // namespace vorlane::platform
