// Where a text breaks into lines.
#pragma once

#include <QFontMetrics>
#include <QString>

namespace vorlane::platform {

// Broken where the sense pauses, if the text needs more than one line and no more of them for it.
QString brokenAtPauses(const QString& text, const QFontMetrics& metrics, int width);

}  // namespace vorlane::platform
