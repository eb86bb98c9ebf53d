#include "platform/qt/settings/SettingsFrame.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QScreen>

namespace vorlane::platform {
namespace {

SettingsWindowFrame frameOf(int height)
{
    return {.title = "Vorlane Settings", .width = 480, .height = height};
}

TEST(SettingsFrameTest, HasItsSizeWhenThereIsRoom)
{
    SettingsFrame frame(frameOf(640), new QWidget, [] {});

    frame.bringToFront();

    EXPECT_EQ(frame.size(), QSize(480, 640));
}

TEST(SettingsFrameTest, StaysInsideALowScreen)
{
    const auto room = QGuiApplication::primaryScreen()->availableGeometry();
    SettingsFrame frame(frameOf(room.height() + 500), new QWidget, [] {});

    frame.bringToFront();

    EXPECT_EQ(frame.width(), 480);
    EXPECT_TRUE(room.contains(frame.geometry())) << frame.height();
}

TEST(SettingsFrameTest, LeavesTheFocusToAnOpenDialog)
{
    SettingsFrame frame(frameOf(640), new QWidget, [] {});
    frame.bringToFront();
    QDialog question(&frame);
    question.open();
    QApplication::processEvents();

    frame.bringToFront();
    QApplication::processEvents();

    EXPECT_EQ(QApplication::activeWindow(), &question);
}

}  // namespace
}  // namespace vorlane::platform
