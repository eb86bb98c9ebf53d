// A time of day, hours and minutes, as the user's country writes it.
#pragma once

#include <QTimeEdit>
#include <functional>

#include "App/content/TimeOfDay.h"
#include "platform/qt/ControlStyle.h"

namespace vorlane::platform {

class TimeBox : public QTimeEdit {
    Q_OBJECT

public:
    // `changed` is called for the user's changes only, and not for what is half typed.
    explicit TimeBox(std::function<void(TimeOfDay)> changed, QWidget* parent = nullptr);

    void setTheme(const Theme& shades);

    // What is half typed stays.
    void setTimeOfDay(TimeOfDay time);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool isHalfTyped() const;
    void typed(QTime time);
    void showStored();
    void measure();

    std::function<void(TimeOfDay)> changed_;
    Theme theme;
    QTime stored;
    int textWidth = 0;
};

}  // namespace vorlane::platform
