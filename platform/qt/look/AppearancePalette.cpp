#include "platform/qt/look/AppearancePalette.h"

#include <QStyle>
#include <QStyleFactory>
#include <memory>

namespace vorlane::platform {

namespace {

struct Shades {
    QRgb window;
    QRgb base;
    QRgb button;
    QRgb text;
    QRgb dimmed;  // placeholders and disabled text
    QRgb highlight;
    QRgb link;
};
constexpr Shades light{.window = 0xfff6f6f7,
                       .base = 0xffffffff,
                       .button = 0xfffdfdfd,
                       .text = 0xff1d1d1f,
                       .dimmed = 0xff8e8e93,
                       .highlight = 0xff2f6fd0,
                       .link = 0xff1f5fbf};
constexpr Shades dark{.window = 0xff26262a,
                      .base = 0xff2f2f33,
                      .button = 0xff3a3a3f,
                      .text = 0xfff2f2f4,
                      .dimmed = 0xff8e8e93,
                      .highlight = 0xff3f7fdf,
                      .link = 0xff7fb0ff};

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightnessF() <
           palette.color(QPalette::WindowText).lightnessF();
}

QPalette paletteOf(const Shades& shades)
{
    // Qt derives the colours of bevels from the button colour.
    QPalette palette{QColor(shades.button), QColor(shades.window)};
    const auto set = [&palette](QRgb color, std::initializer_list<QPalette::ColorRole> roles) {
        for (const auto role : roles) palette.setColor(role, QColor(color));
    };
    set(shades.window, {QPalette::Window, QPalette::AlternateBase});
    set(shades.base, {QPalette::Base, QPalette::ToolTipBase});
    set(shades.text,
        {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText});
    set(shades.dimmed, {QPalette::PlaceholderText});
    set(shades.highlight, {QPalette::Highlight});
    set(0xffffffff, {QPalette::HighlightedText});
    set(shades.link, {QPalette::Link, QPalette::LinkVisited});
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor(shades.dimmed));
    }
    return palette;
}

}  // namespace

// Compares with Fusion's palette, because a desktop's own style may have the user's colours as its
// standard palette, as Breeze has.
bool isBuiltIn(const QPalette& palette)
{
    const std::unique_ptr<const QStyle> fusion(QStyleFactory::create("fusion"));
    const auto grey = fusion->standardPalette();
    const auto equal = [&](QPalette::ColorRole role) {
        return palette.color(role) == grey.color(role);
    };
    return equal(QPalette::Window) && equal(QPalette::Base);
}

std::optional<QPalette> ownPalette(const Appearance& appearance, const DesktopPalette& desktop)
{
    using Scheme = Appearance::Scheme;
    const bool desktopIsDark = isDark(desktop.palette);
    const bool wantsDark = appearance.scheme == Scheme::noPreference
                               ? desktopIsDark
                               : appearance.scheme == Scheme::dark;
    if (!desktop.builtIn && wantsDark == desktopIsDark) return std::nullopt;

    auto palette = paletteOf(wantsDark ? dark : light);
    if (const auto accent = accentColor(appearance)) {
        palette.setColor(QPalette::Highlight, *accent);
        palette.setColor(QPalette::HighlightedText,
                         accent->lightnessF() > 0.65F ? Qt::black : Qt::white);
    }
    return palette;
}

std::optional<QColor> accentColor(const Appearance& appearance)
{
    if (!appearance.accent) return std::nullopt;
    return QColor(appearance.accent->red, appearance.accent->green, appearance.accent->blue);
}

}  // namespace vorlane::platform
