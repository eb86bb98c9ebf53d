// A field for a time of day, written as in the user's locale. Accepts everything that
// `TimeNotation` parses; anything else restores the previous time.
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
    // `changed` is called for the user's changes only, once editing is finished.
    explicit TimeBox(std::function<void(TimeOfDay)> changed, QWidget* parent = nullptr);

    void setTheme(const Theme& shades);

    // Does not replace text that the user is editing.
    void setTimeOfDay(TimeOfDay time);

    // Steps the hours, the minutes or AM/PM, depending on where the cursor is.
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
    bool isBeingEdited() const;
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
