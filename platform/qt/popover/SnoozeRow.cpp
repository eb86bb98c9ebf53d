#include "platform/qt/popover/SnoozeRow.h"

namespace vorlane::platform {

namespace {

constexpr int spacing = 4;
constexpr int slack = 1;  // a label whose text just fits must not wrap

}  // namespace

SnoozeRow::SnoozeRow(std::function<void()> cancel, QWidget* parent)
    : QWidget(parent),
      cancel_(std::move(cancel)),
      text(new TextLabel(this)),
      link(new LinkButton(this))
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(link, &LinkButton::clicked, this, [this] { cancel_(); });
}

void SnoozeRow::setContent(const SnoozeLine& content)
{
    text->setContent(content.text);
    link->setText(QString::fromStdString(content.cancel));
    placeParts();
}

void SnoozeRow::setTheme(const Theme& theme)
{
    text->setLook(theme.caption, theme.secondary);
    link->setTheme(theme);
    placeParts();
}

SnoozeRow::Places SnoozeRow::places(int width) const
{
    const auto linkSize = link->sizeHint();
    const int oneLine = text->fontMetrics().horizontalAdvance(text->text()) + slack;
    if (oneLine + spacing + linkSize.width() <= width) {
        return {.text = QRect(0, 0, oneLine, linkSize.height()),
                .link = QRect(QPoint(oneLine + spacing - slack, 0), linkSize)};
    }
    const int textHeight = text->heightForWidth(width);
    return {.text = QRect(0, 0, width, textHeight), .link = QRect(QPoint(0, textHeight), linkSize)};
}

void SnoozeRow::placeParts()
{
    const auto at = places(width());
    text->setGeometry(at.text);
    link->setGeometry(at.link);
    updateGeometry();
}

QSize SnoozeRow::sizeHint() const
{
    const auto linkSize = link->sizeHint();
    return {
        text->fontMetrics().horizontalAdvance(text->text()) + slack + spacing + linkSize.width(),
        linkSize.height()};
}

QSize SnoozeRow::minimumSizeHint() const
{
    return link->sizeHint();
}

bool SnoozeRow::hasHeightForWidth() const
{
    return true;
}

int SnoozeRow::heightForWidth(int width) const
{
    const auto at = places(width);
    return at.text.united(at.link).height();
}

void SnoozeRow::resizeEvent(QResizeEvent*)
{
    placeParts();
}

}  // namespace vorlane::platform
