#include "platform/qt/settings/SettingsForm.h"

#include <QApplication>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "platform/qt/look/ControlStyle.h"

namespace vorlane::platform {

namespace {

constexpr int barWidth = 12;

// Just a thumb, without arrows: the form is short, and the bar fits into its margin.
QString barStyle(const Theme& theme)
{
    const auto thumb = [&theme](int alpha) {
        const auto& text = theme.text;
        return QStringLiteral("rgba(%1,%2,%3,%4)")
            .arg(text.red())
            .arg(text.green())
            .arg(text.blue())
            .arg(alpha);
    };
    return QStringLiteral(
               "QScrollBar { background: %1; width: %2px; border: none; margin: 0; }"
               "QScrollBar::handle { background: %3; min-height: 40px; margin: 2px;"
               " border-radius: %4px; }"
               "QScrollBar::handle:hover { background: %5; }"
               "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }"
               "QScrollBar::add-page, QScrollBar::sub-page { background: none; }")
        .arg(theme.window.name())
        .arg(barWidth)
        .arg(thumb(70))
        .arg(barWidth / 2 - 2)
        .arg(thumb(120));
}

}  // namespace

SettingsForm::SettingsForm(SettingsIntents intents)
    : intents_(std::move(intents)), page(new QWidget), stack(new QVBoxLayout(page))
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(page);
    page->setAutoFillBackground(true);

    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &SettingsForm::setMargins);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*before*/, QWidget* now) { reveal(now); });
    setTheme(Theme::of(palette(), font(), std::nullopt));
}

// Deleting a focused child changes the focus, and the handler would use this half-destroyed object.
SettingsForm::~SettingsForm()
{
    disconnect(qApp, nullptr, this, nullptr);
}

void SettingsForm::setContent(const SettingsContent& content)
{
    if (!fits(content)) build(content);
    for (std::size_t i = 0; i < sections.size(); ++i) sections[i]->showSection(content.sections[i]);
}

void SettingsForm::setTheme(const Theme& theme)
{
    theme_ = theme;
    auto colors = page->palette();
    colors.setColor(QPalette::Window, theme.window);
    page->setPalette(colors);

    verticalScrollBar()->setStyleSheet(barStyle(theme));
    stack->setSpacing(ControlMetrics(theme.body).line);
    setMargins();
    for (auto* const section : sections) section->setTheme(theme);
}

// Keeps the margins at both sides equal, with and without the scroll bar.
void SettingsForm::setMargins()
{
    // Capped, because large fonts need the width.
    const int side = std::min(qRound(1.25 * ControlMetrics(theme_.body).line), 24);
    const bool hasBar = verticalScrollBar()->maximum() > 0;
    stack->setContentsMargins(side, side / 2, side - (hasBar ? barWidth : 0), side);
}

bool SettingsForm::fits(const SettingsContent& content) const
{
    return std::ranges::equal(
        sections, content.sections,
        [](const auto* view, const SettingsSection& section) { return view->fits(section); });
}

void SettingsForm::build(const SettingsContent& content)
{
    for (auto* const section : sections) delete section;
    sections.clear();
    while (auto* const item = stack->takeAt(0)) delete item;

    for (const auto& section : content.sections) {
        sections.push_back(new SettingsSectionView(section, intents_));
        sections.back()->setTheme(theme_);
        stack->addWidget(sections.back());
    }
    stack->addStretch();
}

void SettingsForm::reveal(QWidget* focused)
{
    if (!focused || !page->isAncestorOf(focused)) return;
    auto* row = focused;
    while (row && !qobject_cast<SettingsRowView*>(row)) row = row->parentWidget();
    if (row) ensureWidgetVisible(row, 0, ControlMetrics(theme_.body).line);
}

}  // namespace vorlane::platform
