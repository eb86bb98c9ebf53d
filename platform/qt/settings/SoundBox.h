// A drop-down list of sounds.
#pragma once

#include <QComboBox>
#include <functional>
#include <string>
#include <vector>

#include "App/content/SettingsContent.h"
#include "platform/qt/look/ControlStyle.h"
#include "platform/qt/look/Themed.h"

namespace vorlane::platform {

class SoundBox : public Themed<QComboBox> {
    Q_OBJECT

public:
    // `chosen` is called for the user's changes only.
    explicit SoundBox(std::function<void(const std::string&)> chosen, QWidget* parent = nullptr);

    void setEntries(const std::vector<SoundEntry>& sounds);

    // A sound that is not on the list is shown, but not selected.
    void setSound(const std::string& sound);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void choose(int index);
    void paintArrows(QPainter& painter, const QRectF& room) const;

    std::function<void(const std::string&)> chosen_;
    FocusRing ring{*this};
    std::vector<SoundEntry> entries;
    std::string value;
};

}  // namespace vorlane::platform
