// The snooze's text, and beside it the link that ends the snooze, or below it if the line is too
// short.
#pragma once

#include <QWidget>

#include "App/content/PopoverContent.h"
#include "platform/qt/controls/LinkButton.h"
#include "platform/qt/look/TextLabel.h"
#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

class SnoozeRow : public QWidget {
    Q_OBJECT

public:
    explicit SnoozeRow(std::function<void()> cancel, QWidget* parent = nullptr);

    void setContent(const SnoozeLine& content);
    void setTheme(const Theme& theme);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Places {
        QRect text;
        QRect link;
    };
    Places places(int width) const;
    void placeParts();

    std::function<void()> cancel_;
    TextLabel* text;
    LinkButton* link;
};

}  // namespace vorlane::platform
