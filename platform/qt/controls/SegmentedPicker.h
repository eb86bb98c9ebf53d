// Two choices side by side, one of them selected. The arrow keys change the selection.
#pragma once

#include <QRadioButton>
#include <functional>
#include <vector>

#include "App/content/PopoverContent.h"
#include "platform/qt/controls/TextButton.h"

namespace vorlane::platform {

class Segment : public TextButton<QRadioButton, &Theme::callout> {
    Q_OBJECT

public:
    explicit Segment(QWidget* parent = nullptr);

protected:
    bool hitButton(const QPoint& position) const override;
    void paintEvent(QPaintEvent* event) override;
};

class SegmentedPicker : public QWidget {
    Q_OBJECT

public:
    static constexpr std::size_t choicesAtMost = 2;

    // `pick` is called with the index that the user chose.
    explicit SegmentedPicker(std::function<void(std::int64_t)> pick, QWidget* parent = nullptr);

    void setContent(const RangePicker& content);
    void setTheme(const Theme& next);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void addSegment();

    std::function<void(std::int64_t)> pick_;
    std::vector<Segment*> segments;
    Theme theme;
};

}  // namespace vorlane::platform
