#include "platform/qt/popover/NoBatteryPane.h"

#include <QVBoxLayout>

namespace vorlane::platform {

NoBatteryPane::NoBatteryPane(QWidget* parent)
    : QWidget(parent),
      symbol(new BatterySymbol(this)),
      title(new TextLabel(this)),
      text(new TextLabel(this))
{
    title->setAlignment(Qt::AlignHCenter);
    text->setAlignment(Qt::AlignHCenter);
    auto* stack = new QVBoxLayout(this);
    stack->setContentsMargins(0, 20, 0, 20);
    stack->setSpacing(8);
    stack->addWidget(symbol, 0, Qt::AlignHCenter);
    stack->addWidget(title);
    stack->addWidget(text);
}

void NoBatteryPane::setContent(const NoBatteryBlock& content)
{
    title->setContent(content.title);
    text->setContent(content.text);
    updateGeometry();
}

void NoBatteryPane::setTheme(const Theme& theme)
{
    symbol->setTheme(theme);
    title->setLook(theme.headline, theme.text);
    text->setLook(theme.caption, theme.secondary);
    updateGeometry();
}

}  // namespace vorlane::platform
