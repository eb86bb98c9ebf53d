#include "platform/qt/SwayPlacer.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <chrono>
#include <utility>

namespace vorlane::platform {

namespace {

using namespace std::chrono_literals;

constexpr int mostTries = 100;  // a second

std::optional<SwayIpc> findSway()
{
    if (!QGuiApplication::platformName().startsWith("wayland")) return std::nullopt;
    return SwayIpc::find();
}

}  // namespace

SwayPlacer::SwayPlacer(const QString& title)
    : sway(findSway()), name{.process = QCoreApplication::applicationPid(), .title = title}
{
    retry.setInterval(10ms);
    connect(&retry, &QTimer::timeout, this, &SwayPlacer::tryPlacing);
}

void SwayPlacer::prepare()
{
    if (!sway || prepared) return;
    prepared = true;
    const QString rule(
        "for_window [pid=%1 title=\"^%2$\"] floating enable, border none, opacity 0");
    sway->run(rule.arg(name.process).arg(name.title).toUtf8());
}

void SwayPlacer::placeAtPointer()
{
    if (!sway) return;
    atPointer = true;
    triesLeft = mostTries;
    retry.start();
}

void SwayPlacer::placeAgain()
{
    if (!sway || retry.isActive()) return;
    triesLeft = mostTries;
    retry.start();
}

void SwayPlacer::tryPlacing()
{
    auto shown = find();
    if (!shown && --triesLeft > 0) return;
    retry.stop();
    if (!shown) return;

    const auto ours = QString("[con_id=%1] ").arg(shown->id);
    if (std::exchange(atPointer, false)) {
        // Not in the rule: sway puts a new window into the middle after its rules have run.
        sway->run((ours + "move position mouse").toUtf8());
        if (const auto moved = find()) shown = moved;
    }
    const auto target = shown->position();
    const QString command("move absolute position %1 %2, opacity 1");
    sway->run((ours + command.arg(target.x()).arg(target.y())).toUtf8());
}

}  // namespace vorlane::platform
