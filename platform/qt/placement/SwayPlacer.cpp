#include "platform/qt/placement/SwayPlacer.h"

#include <QCoreApplication>
#include <chrono>
#include <utility>

namespace vorlane::platform {

using namespace std::chrono_literals;

SwayPlacer::SwayPlacer(const QString& title, std::optional<SwayIpc> ipc)
    : sway(std::move(ipc)), name{.process = QCoreApplication::applicationPid(), .title = title}
{
    retry.setInterval(10ms);
    connect(&retry, &QTimer::timeout, this, &SwayPlacer::tryPlacing);
}

bool SwayPlacer::prepare()
{
    if (!sway) return false;
    sway->tryAgain();
    if (!hasRule) {
        const QString rule("for_window [pid=%1 title=\"^%2$\"] floating enable, border none");
        sway->run(rule.arg(name.process).arg(name.title).toUtf8());
        hasRule = sway->answers();
    }
    return sway->answers();
}

void SwayPlacer::placeAtPointer()
{
    atPointer = true;
    start();
}

void SwayPlacer::placeAgain()
{
    if (!retry.isActive()) start();
}

void SwayPlacer::start()
{
    if (!sway || !sway->answers()) return;
    patience.setRemainingTime(1s);
    retry.start();
}

void SwayPlacer::tryPlacing()
{
    const auto shown = find();
    if (!shown && sway->answers() && !patience.hasExpired()) return;
    retry.stop();
    if (shown) place(*shown);
    Q_EMIT placed();
}

void SwayPlacer::place(SwayWindow shown)
{
    const auto ours = QString("[con_id=%1] ").arg(shown.id);
    if (std::exchange(atPointer, false)) {
        // Not part of the rule, because sway centres a new window after it has applied the rules.
        sway->run((ours + "move position mouse").toUtf8());
        if (const auto moved = find()) shown = *moved;
    }
    const auto target = shown.position();
    const QString command("move absolute position %1 %2");
    sway->run((ours + command.arg(target.x()).arg(target.y())).toUtf8());
}

}  // namespace vorlane::platform
