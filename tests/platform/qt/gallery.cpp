// Saves pictures of the windows in every situation for people to look at: gallery FOLDER [FONT].
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>

#include "platform/qt/chart/ChartWidget.h"
#include "platform/qt/popover/PopoverPanel.h"
#include "platform/qt/settings/SettingsForm.h"
#include "tests/platform/qt/support/SampleContent.h"
#include "tests/platform/qt/support/SettingsSample.h"

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
    return {{"popover-charging", charging()},
            {"popover-on-battery", onBattery()},
            {"popover-snoozed", snoozed()},
            {"popover-worn", wornBattery()},
            {"popover-seven-days", sevenDays()},
            {"popover-collecting", collecting()},
            {"popover-no-battery", noBattery()},
            {"popover-hover", onBattery(), hover},
            {"popover-hover-seven-days", sevenDays(), hover},
            {"popover-keyboard-picker", onBattery(), focusPicker},
            {"popover-keyboard-chart", charging(), focusChart}};
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

// The widget as a screen of this scale shows it.
QImage picture(QWidget& widget, const QColor& behind, double scale)
{
    QImage image(widget.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(behind);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

bool savePictures(QWidget& widget, const char* scene, const Theme& theme, const QDir& folder)
{
    const auto shade = QLatin1String(theme.dark ? "dark" : "light");
    return std::ranges::all_of(std::array{1.0, 1.5, 2.0}, [&](double scale) {
        const auto name =
            QStringLiteral("%1-%2-%3.png").arg(QLatin1String(scene), shade).arg(scale);
        return picture(widget, theme.window, scale).save(folder.filePath(name));
    });
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
    return savePictures(panel, scene.name, theme, folder);
}

// A settings form as wide as its window and as high as its whole content.
struct FormScene {
    const char* name;
    SettingsContent content;
    int focused = -1;  // the index of the focused control in Tab order; -1: none
};

bool draw(const FormScene& scene, const Theme& theme, const QDir& folder)
{
    SettingsForm form({.setToggle = [](const std::string&, bool) {},
                       .setNumber = [](const std::string&, std::int64_t) {},
                       .setTime = [](const std::string&, TimeOfDay) {},
                       .chooseSound = [](const std::string&, const std::string&) {},
                       .setLaunchAtLogin = [](bool) {},
                       .resetHistory = [] {}});
    form.setTheme(theme);
    form.setContent(scene.content);
    form.resize(480, 640);
    form.show();
    form.activateWindow();
    QApplication::processEvents();
    const auto* page = form.widget();
    form.resize(480, page->sizeHint().height());
    QApplication::processEvents();
    auto* focused = static_cast<QWidget*>(&form);
    for (int count = scene.focused; count >= 0; focused = focused->nextInFocusChain()) {
        if (focused->focusPolicy() != Qt::StrongFocus || focused->focusProxy()) continue;
        if (count-- == 0) focused->setFocus(Qt::TabFocusReason);
    }
    return savePictures(form, scene.name, theme, folder);
}

SettingsContent quietHours()
{
    auto content = sampleSettings();
    content.sections[4] = sampleQuietHours(true);
    return content;
}

std::vector<FormScene> formScenes()
{
    return {{.name = "settings", .content = sampleSettings(), .focused = -1},
            {.name = "settings-troubled", .content = sampleTroubledSettings(), .focused = -1},
            {.name = "settings-keyboard-switch", .content = sampleSettings(), .focused = 0},
            {.name = "settings-keyboard-stepper", .content = sampleSettings(), .focused = 1},
            {.name = "settings-keyboard-sound", .content = sampleSettings(), .focused = 3},
            {.name = "settings-keyboard-time", .content = quietHours(), .focused = 13}};
}

template <typename Scenes>
bool drawAll(const Scenes& scenes, const Theme& theme, const QDir& folder)
{
    return std::ranges::all_of(scenes,
                               [&](const auto& scene) { return draw(scene, theme, folder); });
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
        if (drawAll(scenes(), theme, folder) && drawAll(formScenes(), theme, folder)) continue;
        std::fprintf(stderr, "gallery: cannot write into %s\n", qPrintable(folder.path()));
        return 1;
    }
    return 0;
}
