#include "platform/qt/look/LineBreaks.h"

#include <QRect>
#include <QRegularExpression>
#include <QWidget>

namespace vorlane::platform {

QString brokenAtPauses(const QString& text, const QFontMetrics& metrics, int width)
{
    const auto height = [&](const QString& words) {
        return metrics.boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), Qt::TextWordWrap, words)
            .height();
    };
    const int plain = height(text);
    if (plain <= metrics.height()) return text;

    static const QRegularExpression pause(QStringLiteral("([.,…]) "));
    auto broken = text;
    broken.replace(pause, QStringLiteral("\\1\n"));
    return height(broken) <= plain ? broken : text;
}

}  // namespace vorlane::platform
