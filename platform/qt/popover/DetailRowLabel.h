// One row of details: what it is at the left, its value at the right. Where both do not fit into
// one line, the value moves below.
#pragma once

#include <QLabel>

#include "App/content/PopoverContent.h"
#include "platform/qt/look/Themed.h"

namespace vorlane::platform {

// One label with one text, so that a screen reader says name and value together.
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
