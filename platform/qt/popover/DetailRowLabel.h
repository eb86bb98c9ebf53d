// One row of details: label at the left, value at the right, or below the label if the line is too
// short.
#pragma once

#include <QLabel>

#include "App/content/PopoverContent.h"
#include "platform/qt/look/Themed.h"

namespace vorlane::platform {

// A single label, so that a screen reader reads label and value together.
class DetailRowLabel : public Themed<QLabel, &Theme::callout> {
    Q_OBJECT

public:
    explicit DetailRowLabel(QWidget* parent = nullptr);

    void setContent(const DetailRow& next);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool fitsOneLine(int width) const;
    int wrappedHeight(const QString& part, int width) const;

    QString label;
    QString value;
    std::optional<Color> color;
};

}  // namespace vorlane::platform
