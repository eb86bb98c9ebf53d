#include "platform/qt/settings/ControlRowView.h"

#include <QBoxLayout>

#include "platform/qt/look/ControlStyle.h"

namespace vorlane::platform {

ControlRowView::ControlRowView() : title(new QLabel(this))
{
    title->setWordWrap(true);
    title->setTextFormat(Qt::PlainText);
    auto* const layout = new QHBoxLayout(this);
    layout->addWidget(title, 1);
}

void ControlRowView::setControl(QWidget* widget)
{
    control = widget;
    layout()->addWidget(control);
    setFocusProxy(control);
    title->setBuddy(control);  // which names it for assistive programs
}

void ControlRowView::setTheme(const Theme& theme)
{
    theme_ = theme;
    const ControlMetrics metrics(theme.body);
    const int margin = qRound(0.4 * metrics.line);
    title->setContentsMargins(0, margin, 0, margin);
    layout()->setContentsMargins(metrics.indent, 0, metrics.indent - ringRoom, 0);
    layout()->setSpacing(metrics.indent);
    setMinimumHeight(metrics.row);
    title->setFont(theme.body);
    colorTitle();
    setControlTheme(theme);
}

void ControlRowView::setTitle(const std::string& text)
{
    const auto shown = QString::fromStdString(text);
    if (title->text() == shown) return;
    title->setText(shown);
    control->setAccessibleName(shown);
}

void ControlRowView::setControlEnabled(bool enabled)
{
    if (control->isEnabled() == enabled) return;
    control->setEnabled(enabled);
    colorTitle();
}

void ControlRowView::colorTitle()
{
    auto colors = title->palette();
    colors.setColor(QPalette::WindowText, textColor(theme_, control->isEnabled()));
    title->setPalette(colors);
}

}  // namespace vorlane::platform
