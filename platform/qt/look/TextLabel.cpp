#include "platform/qt/look/TextLabel.h"

namespace vorlane::platform {

TextLabel::TextLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void TextLabel::setContent(const std::string& text)
{
    setText(QString::fromStdString(text));
}

void TextLabel::setLook(const QFont& font, const QColor& color)
{
    auto colors = palette();
    colors.setColor(QPalette::WindowText, color);
    setPalette(colors);
    setFont(font);
}

}  // namespace vorlane::platform
