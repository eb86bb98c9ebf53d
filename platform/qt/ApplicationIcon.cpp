#include "platform/qt/ApplicationIcon.h"

#include <QCoreApplication>
#include <QString>

namespace vorlane::platform {

QIcon applicationIcon()
{
    const QString file =
        QCoreApplication::applicationDirPath() +
        QStringLiteral("/../../share/icons/hicolor/%1x%1/apps/org.vorlane.Vorlane.png");
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) icon.addFile(file.arg(size));
    return icon;
}

}  // namespace vorlane::platform
