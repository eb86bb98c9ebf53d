// The battery's charge over time: one line per segment, a grid with its labels, and the sample
// under the pointer or chosen by the arrow keys.
#pragma once

#include <QPainterPath>
#include <QWidget>
#include <optional>

#include "App/content/ChartContent.h"
#include "platform/qt/ChartGeometry.h"
#include "platform/qt/LocalTimes.h"
#include "platform/qt/Theme.h"
#include "platform/qt/TimeMarks.h"

namespace vorlane::platform {

class ChartWidget : public QWidget {
    Q_OBJECT

public:
    static constexpr int fixedHeight = 110;

    explicit ChartWidget(QWidget* parent = nullptr);

    void setContent(const ChartContent& next);
    void setTheme(const Theme& next);
    void setTimes(const LocalTimes& next);

    // What is shown beside the chosen sample; empty when there is none.
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
    // What changes only with the record, the size and the letters.
    struct Drawing {
        std::vector<TimeMark> marks;
        std::vector<QPainterPath> lines;  // apart: a path costs more than its parts
        std::vector<QPainterPath> areas;  // between a line and the bottom
        std::vector<QPointF> lonely;      // samples without neighbours
    };

    const Drawing& drawing();
    void addSegment(Drawing& to, const ChartGeometry& at, std::size_t begin, std::size_t end) const;
    const ChartPoint* chosenPoint() const;
    void choose(std::optional<Date> date);
    void redraw();
    void announce();

    void paintNotice(QPainter& painter) const;
    void paintGrid(QPainter& painter, const Drawing& drawn) const;
    void paintLines(QPainter& painter, const Drawing& drawn) const;
    void paintReading(QPainter& painter) const;
    void paintBubble(QPainter& painter) const;
    void paintFocus(QPainter& painter) const;

    ChartContent content;
    Theme theme;
    LocalTimes times;
    std::optional<Drawing> cached;
    std::optional<Date> chosen;  // the sample that is read, by its time
};

}  // namespace vorlane::platform
