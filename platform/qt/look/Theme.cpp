#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

namespace {

// With enough contrast for small text on a light or a dark window.
struct Signals {
    QRgb green;
    QRgb orange;
    QRgb red;
};
constexpr Signals onLight{0xff1b7a33, 0xffb35300, 0xffcf1b2b};
constexpr Signals onDark{0xff3ccf62, 0xffffa42e, 0xffff6e64};

// For areas, which need less contrast than text.
constexpr Signals fillOnLight{0xff2a9d48, 0xffe07800, 0xffe0343f};
constexpr Signals fillOnDark{0xff34c759, 0xffff9f0a, 0xffff5f57};

QColor mixed(const QColor& below, const QColor& above, float share)
{
    const auto mix = [share](float a, float b) { return a + (b - a) * share; };
    return QColor::fromRgbF(mix(below.redF(), above.redF()), mix(below.greenF(), above.greenF()),
                            mix(below.blueF(), above.blueF()));
}

QFont sized(QFont font, double factor, QFont::Weight weight = QFont::Normal)
{
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * factor);
    } else {
        font.setPixelSize(qRound(font.pixelSize() * factor));
    }
    font.setWeight(weight);
    return font;
}

struct Choices {
    QColor accent;
    QColor green;
    QColor orange;
    QColor red;
};

QColor chosen(Color color, const Choices& from)
{
    switch (color) {
        case Color::accent:
            return from.accent;
        case Color::green:
            return from.green;
        case Color::orange:
            return from.orange;
        case Color::red:
            return from.red;
    }
    return from.accent;
}

}  // namespace

Theme Theme::of(const QPalette& palette, const QFont& base, std::optional<QColor> accent)
{
    const auto window = palette.color(QPalette::Window);
    const auto text = palette.color(QPalette::WindowText);
    const bool dark = window.lightnessF() < text.lightnessF();
    const auto& strong = dark ? onDark : onLight;
    const auto& vivid = dark ? fillOnDark : fillOnLight;
    return {.dark = dark,
            .window = window,
            .card = dark ? mixed(window, text, 0.06F) : palette.color(QPalette::Base),
            .text = text,
            .secondary = mixed(window, text, 0.66F),
            .separator = mixed(window, text, 0.14F),
            .track = mixed(window, text, 0.16F),
            .control = mixed(window, text, dark ? 0.12F : 0.08F),
            .controlHover = mixed(window, text, dark ? 0.17F : 0.12F),
            .controlPressed = mixed(window, text, dark ? 0.23F : 0.18F),
            .raised = dark ? mixed(window, text, 0.30F) : palette.color(QPalette::Base),
            .shadow = QColor(0, 0, 0, dark ? 0x50 : 0x30),
            .accent = accent.value_or(palette.color(QPalette::Highlight)),
            .green = QColor::fromRgb(strong.green),
            .orange = QColor::fromRgb(strong.orange),
            .red = QColor::fromRgb(strong.red),
            .greenFill = QColor::fromRgb(vivid.green),
            .orangeFill = QColor::fromRgb(vivid.orange),
            .redFill = QColor::fromRgb(vivid.red),
            .body = base,
            .headline = sized(base, 1.1, QFont::DemiBold),
            .callout = sized(base, 0.96),
            .caption = sized(base, 0.88),
            .caption2 = sized(base, 0.84),
            .gauge = sized(base, 2.0, QFont::DemiBold)};
}

QColor Theme::shade(std::optional<Color> color) const
{
    if (!color) return secondary;
    return chosen(*color, {.accent = accent, .green = green, .orange = orange, .red = red});
}

QColor Theme::fill(Color color) const
{
    return chosen(color,
                  {.accent = accent, .green = greenFill, .orange = orangeFill, .red = redFill});
}

}  // namespace vorlane::platform
