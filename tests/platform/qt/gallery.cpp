// Draws the popover in every situation: gallery FOLDER [FONT]. The pictures are for people.
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <array>
#include <cstdio>
#include <functional>

#include "platform/qt/ChartWidget.h"
#include "platform/qt/PopoverPanel.h"
#include "tests/platform/qt/SampleContent.h"

namespace {

using namespace vorlane;
using namespace vorlane::platform;

struct Scene {
    const char* name;
    PopoverContent content;
    std::function<void(PopoverPanel&)> act = [](PopoverPanel&) {};
};

void pointAt(QWidget& widget, const QPointF& position)
{
    QMouseEvent move(QEvent::MouseMove, position, widget.mapToGlobal(position), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &move);
}

void hover(PopoverPanel& panel)
{
    auto* chart = panel.findChild<ChartWidget*>();
    pointAt(*chart, QPointF(chart->width() * 0.42, chart->height() * 0.5));
}

void focusPicker(PopoverPanel& panel)
{
    for (auto* widget = panel.nextInFocusChain(); widget != &panel;
         widget = widget->nextInFocusChain()) {
        if (!widget->inherits("QRadioButton") || !widget->isVisible()) continue;
        widget->setFocus(Qt::TabFocusReason);
        return;
    }
}

void focusChart(PopoverPanel& panel)
{
    panel.findChild<ChartWidget*>()->setFocus(Qt::TabFocusReason);
}

std::vector<Scene> scenes()
{
    return {{"charging", charging()},
            {"on-battery", onBattery()},
            {"snoozed", snoozed()},
            {"worn", wornBattery()},
            {"seven-days", sevenDays()},
            {"collecting", collecting()},
            {"no-battery", noBattery()},
            {"hover", onBattery(), hover},
            {"hover-seven-days", sevenDays(), hover},
            {"keyboard-picker", onBattery(), focusPicker},
            {"keyboard-chart", charging(), focusChart}};
}

QPalette palette(bool dark)
{
    QPalette colors;
    colors.setColor(QPalette::Window, dark ? 0x2a2a2e : 0xf7f7f8);
    colors.setColor(QPalette::Base, dark ? 0x1e1e21 : 0xffffff);
    colors.setColor(QPalette::WindowText, dark ? 0xf4f4f6 : 0x1f1f23);
    colors.setColor(QPalette::Highlight, dark ? 0x4c97f0 : 0x2f7de1);
    return colors;
}

// What a screen of this scale would show.
QImage picture(QWidget& widget, const QColor& behind, double scale)
{
    QImage image(widget.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(behind);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

bool draw(const Scene& scene, const Theme& theme, const QDir& folder)
{
    PopoverPanel panel({.openSettings = [] {},
                        .quit = [] {},
                        .cancelSnooze = [] {},
                        .selectRange = [](std::int64_t) {}});
    panel.setTheme(theme);
    panel.setContent(scene.content);
    panel.show();
    panel.activateWindow();
    QApplication::processEvents();
    scene.act(panel);
    for (const double scale : {1.0, 1.5, 2.0}) {
        const auto name =
            QStringLiteral("popover-%1-%2-%3.png")
                .arg(QLatin1String(scene.name), QLatin1String(theme.dark ? "dark" : "light"))
                .arg(scale);
        if (!picture(panel, theme.window, scale).save(folder.filePath(name))) return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const auto arguments = QApplication::arguments();
    if (arguments.size() < 2) {
        std::fputs("usage: gallery FOLDER [FONT [SIZE]]\n", stderr);
        return 2;
    }
    QFont font(arguments.value(2, QStringLiteral("Sans")));
    font.setPointSizeF(arguments.value(3, QStringLiteral("10")).toDouble());
    const QDir folder(arguments[1]);
    for (const bool dark : {false, true}) {
        const auto theme = Theme::of(palette(dark), font, std::nullopt);
        for (const auto& scene : scenes()) {
            if (draw(scene, theme, folder)) continue;
            std::fprintf(stderr, "gallery: cannot write into %s\n", qPrintable(folder.path()));
            return 1;
        }
    }
    return 0;
}
