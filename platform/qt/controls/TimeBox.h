// A time of day, hours and minutes, as the user's country writes it. It may be typed in any way
// that `TimeNotation` reads; of anything else, the old time comes back.
#pragma once

#include <QAbstractSpinBox>
#include <QTime>
#include <functional>

#include "App/content/TimeOfDay.h"
#include "platform/qt/look/ControlStyle.h"
#include "platform/qt/look/TimeNotation.h"

namespace vorlane::platform {

class TimeBox : public QAbstractSpinBox {
    Q_OBJECT

public:
    // `changed` is called for the user's changes only, and not for what is half typed.
    explicit TimeBox(std::function<void(TimeOfDay)> changed, QWidget* parent = nullptr);

    void setTheme(const Theme& shades);

    // What is half typed stays.
    void setTimeOfDay(TimeOfDay time);

    // The hours, the minutes or the half of the day, where the cursor is.
    void stepBy(int steps) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    enum class Section { hour, minute, half };

    TimeNotation notation() const { return {.locale = locale()}; }
    bool isHalfTyped() const;
    bool isWholeSelected() const;
    Section section() const;
    void select(Section section);
    void commit();
    void take(QTime time);
    void showStored();
    void measure();

    std::function<void(TimeOfDay)> changed_;
    Theme theme;
    QTime stored{0, 0};
    int textWidth = 0;
};

}  // namespace vorlane::platform
