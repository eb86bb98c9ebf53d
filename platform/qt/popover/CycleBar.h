// A thin progress bar for the charge cycles.
#pragma once

#include <QProgressBar>

#include "platform/qt/look/Themed.h"

namespace vorlane::platform {

class CycleBar : public Themed<QProgressBar> {
    Q_OBJECT

public:
    explicit CycleBar(QWidget* parent = nullptr);

    struct Filling {
        std::int64_t value = 0;
        std::int64_t total = 0;
        Color tint = Color::accent;
    };
    void setFilling(const Filling& next);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Color tint = Color::accent;
};

}  // namespace vorlane::platform
