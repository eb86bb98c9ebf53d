// Draws the battery's charge over time: one line per segment, a grid with labels, and the sample
// under the pointer or chosen by the arrow keys.
#pragma once

#include <QWidget>
#include <optional>

#include "App/content/ChartContent.h"
#include "platform/qt/chart/ChartDrawing.h"
#include "platform/qt/chart/LocalTimes.h"
#include "platform/qt/look/Themed.h"

namespace vorlane::platform {

class ChartWidget : public Themed<QWidget, &Theme::caption2> {
    Q_OBJECT

public:
    static constexpr int fixedHeight = 110;

    explicit ChartWidget(QWidget* parent = nullptr);

    void setContent(const ChartContent& next);

    // The text beside the chosen sample; empty when there is none.
    QString shownReading() const;

    // Where the lines are drawn, and where the reading is written.
    QRectF plot() const;
    QRectF bubble() const;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    const ChartDrawing& drawing();
    LocalTimes times() const { return {.locale = locale()}; }
    const ChartPoint* chosenPoint() const;
    void choose(std::optional<Date> date);
    void redraw();
    void announce();

    void paintNotice(QPainter& painter) const;
    void paintGrid(QPainter& painter, const ChartDrawing& drawn) const;
    void paintLines(QPainter& painter, const ChartDrawing& drawn) const;
    void paintReading(QPainter& painter) const;
    void paintBubble(QPainter& painter) const;
    void paintFocus(QPainter& painter) const;

    ChartContent content;
    std::optional<ChartDrawing> cached;
    std::optional<Date> chosen;  // the time of the sample whose reading is shown
};

}  // namespace vorlane::platform
