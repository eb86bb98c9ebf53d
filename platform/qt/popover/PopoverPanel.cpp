#include "platform/qt/popover/PopoverPanel.h"

#include <QVBoxLayout>

#include "platform/qt/controls/PanelButton.h"
#include "platform/qt/look/Divider.h"
#include "platform/qt/look/TextLabel.h"
#include "platform/qt/popover/BatteryPane.h"
#include "platform/qt/popover/NoBatteryPane.h"

namespace vorlane::platform {

PopoverPanel::PopoverPanel(PopoverIntents given, QWidget* parent)
    : QWidget(parent),
      intents(std::move(given)),
      noBattery(new NoBatteryPane(this)),
      battery(new BatteryPane(intents, this)),
      divider(new Divider(this)),
      footnote(new TextLabel(this)),
      settings(new PanelButton(this)),
      quit(new PanelButton(this))
{
    setFocusPolicy(Qt::ClickFocus);
    connect(settings, &PanelButton::clicked, this, [this] { intents.openSettings(); });
    connect(quit, &PanelButton::clicked, this, [this] { intents.quit(); });

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(16);
    buttons->addWidget(settings);
    buttons->addStretch();
    buttons->addWidget(quit);

    auto* stack = new QVBoxLayout(this);
    stack->setContentsMargins(16, 16, 16, 16);
    stack->setSpacing(14);
    for (auto* item : std::initializer_list<QWidget*>{noBattery, battery, divider, footnote})
        stack->addWidget(item);
    stack->addLayout(buttons);
}

void PopoverPanel::setContent(const PopoverContent& content)
{
    const auto* blocks = std::get_if<BatteryBlocks>(&content.blocks);
    noBattery->setVisible(!blocks);
    battery->setVisible(blocks);
    if (blocks) {
        battery->setContent(*blocks);
    } else {
        noBattery->setContent(std::get<NoBatteryBlock>(content.blocks));
    }
    footnote->setContent(content.footnote);
    settings->setText(QString::fromStdString(content.settings));
    quit->setText(QString::fromStdString(content.quit));
    fitHeight();
}

void PopoverPanel::setTheme(const Theme& theme)
{
    noBattery->setTheme(theme);
    battery->setTheme(theme);
    divider->setTheme(theme);
    footnote->setLook(theme.caption2, theme.secondary);
    settings->setTheme(theme);
    quit->setTheme(theme);
    fitHeight();
}

void PopoverPanel::showEvent(QShowEvent* event)
{
    // No control has the focus until the user moves it there by keyboard.
    setFocus();
    QWidget::showEvent(event);
}

void PopoverPanel::fitHeight()
{
    setFixedSize(fixedWidth, heightForWidth(fixedWidth));
}

}  // namespace vorlane::platform
