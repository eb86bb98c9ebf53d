#include "platform/qt/popover/DetailRowLabel.h"

#include <QPainter>

namespace vorlane::platform {

namespace {

constexpr int gap = 12;  // minimum, between label and value
constexpr int wrapping = Qt::TextWrapAnywhere | Qt::TextWordWrap;

}  // namespace

DetailRowLabel::DetailRowLabel(QWidget* parent) : Themed(parent)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void DetailRowLabel::setContent(const DetailRow& next)
{
    label = QString::fromStdString(next.label);
    value = QString::fromStdString(next.value);
    color = next.color;
    setText(label + QStringLiteral(": ") + value);
    updateGeometry();
    update();
}

QSize DetailRowLabel::sizeHint() const
{
    const auto metrics = fontMetrics();
    return {metrics.horizontalAdvance(label) + gap + metrics.horizontalAdvance(value),
            metrics.height()};
}

QSize DetailRowLabel::minimumSizeHint() const
{
    return {gap, fontMetrics().height()};
}

bool DetailRowLabel::hasHeightForWidth() const
{
    return true;
}

int DetailRowLabel::heightForWidth(int width) const
{
    if (fitsOneLine(width)) return fontMetrics().height();
    return wrappedHeight(label, width) + wrappedHeight(value, width);
}

bool DetailRowLabel::fitsOneLine(int width) const
{
    return sizeHint().width() <= width;
}

int DetailRowLabel::wrappedHeight(const QString& part, int width) const
{
    return fontMetrics().boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), wrapping, part).height();
}

void DetailRowLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(theme.text);
    painter.drawText(rect(), wrapping | Qt::AlignLeft | Qt::AlignTop, label);
    painter.setPen(theme.shade(color));
    const auto beside = fitsOneLine(width()) ? Qt::AlignTop : Qt::AlignBottom;
    painter.drawText(rect(), wrapping | Qt::AlignRight | beside, value);
}

}  // namespace vorlane::platform
