#include "platform/qt/WindowsServer.h"

#include <gmock/gmock.h>
#include <sys/socket.h>

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <optional>
#include <string>
#include <variant>

#include "platform/Frames.h"
#include "platform/linux/base/FileDescriptor.h"
#include "platform/qt/AlertDialog.h"
#include "tests/platform/qt/support/SampleContent.h"
#include "tests/platform/qt/support/SettingsSample.h"

namespace vorlane::platform {
namespace {

using namespace std::chrono_literals;

struct SocketPair {
    SocketPair()
    {
        int ends[2];
        if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) std::abort();
        program = FileDescriptor(ends[0]);
        windows = FileDescriptor(ends[1]);
    }

    FileDescriptor program;
    FileDescriptor windows;
};

QWidget* visible(const char* title)
{
    for (auto* const widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->windowTitle() == title) return widget;
    }
    return nullptr;
}

// Counts how often timers with this interval expire.
class TimerCount : public QObject {
public:
    explicit TimerCount(std::chrono::milliseconds interval) : interval_(interval)
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto* const timer = qobject_cast<QTimer*>(watched);
        if (timer && event->type() == QEvent::Timer && timer->intervalAsDuration() == interval_) {
            ++expired;
        }
        return false;
    }

    int expired = 0;

private:
    std::chrono::milliseconds interval_;
};

// The test plays the resident program.
class WindowsServerTest : public testing::Test {
protected:
    template <typename Message>
    void send(const Message& message)
    {
        ASSERT_TRUE(sendFrame(sockets.program.get(), wire::encodeAs<ToWindows>(message)));
        QCoreApplication::processEvents();
    }

    void showPopover(std::uint64_t opening)
    {
        send(ShowPopover{.content = charging(), .token = "", .opening = opening});
    }

    void showSettings(std::uint64_t opening)
    {
        send(ShowSettings{.title = "Some Settings",
                          .width = 500,
                          .height = 700,
                          .content = sampleSettings(),
                          .token = "",
                          .opening = opening});
    }

    // Runs Qt's loop until a message of this type arrives; absent when none does.
    template <typename Message>
    std::optional<Message> receive()
    {
        std::optional<Message> found;
        (void)QTest::qWaitFor([&] {
            while (!found && receiveFrame(sockets.program.get(), frame, 4096) == Receiving::frame) {
                const auto message = wire::decode<FromWindows>(frame);
                const auto* const wanted = message ? std::get_if<Message>(&*message) : nullptr;
                if (wanted) found = *wanted;
            }
            return found.has_value();
        });
        return found;
    }

    static void click(const QWidget* window, const QString& title)
    {
        for (auto* const button : window->findChildren<QAbstractButton*>()) {
            if (button->text() == title) return button->click();
        }
        ADD_FAILURE() << "no button " << title.toStdString();
    }

    static constexpr auto idleness = 50ms;

    SocketPair sockets;
    std::string frame;
    WindowsServer server{sockets.windows.get(), idleness};
};

TEST_F(WindowsServerTest, CountsHandledMessages)
{
    send(Appearance{});
    showPopover(1);

    EXPECT_EQ(receive<Handled>()->messages, 1U);
    EXPECT_EQ(receive<Handled>()->messages, 2U);
    EXPECT_NE(visible("Vorlane"), nullptr);
}

TEST_F(WindowsServerTest, ShowsTheSettingsBesideThePopover)
{
    showPopover(1);
    showSettings(1);

    EXPECT_NE(visible("Some Settings"), nullptr);
    send(ClosePopover{});
    EXPECT_EQ(visible("Vorlane"), nullptr);
    EXPECT_NE(visible("Some Settings"), nullptr);
}

TEST_F(WindowsServerTest, ReportsWhichOpeningTheUserClosed)
{
    showPopover(3);
    QTest::keyClick(visible("Vorlane"), Qt::Key_Escape);
    const auto popover = receive<PopoverClosed>();
    ASSERT_TRUE(popover);
    EXPECT_EQ(popover->opening, 3U);
    EXPECT_FALSE(popover->byPress);

    showSettings(4);
    visible("Some Settings")->close();
    const auto settings = receive<SettingsClosed>();
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->opening, 4U);
}

TEST_F(WindowsServerTest, ReportsAPressedButton)
{
    showPopover(1);

    click(visible("Vorlane"), "Quit");

    EXPECT_TRUE(receive<Quit>());
}

TEST_F(WindowsServerTest, ReportsTheAnswerOfADialog)
{
    send(Ask{.id = 9,
             .content = {.message = "Clear history?",
                         .informativeText = "",
                         .buttons = {{.title = "Clear", .role = vorlane::ButtonRole::destructive},
                                     {.title = "Cancel", .role = vorlane::ButtonRole::cancel}}}});
    const auto* const dialog = qobject_cast<AlertDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);

    click(dialog, "Clear");

    const auto answer = receive<Answered>();
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->id, 9);
    EXPECT_EQ(answer->button, 0U);
}

TEST_F(WindowsServerTest, IgnoresUpdatesOfWindowsThatWereNeverShown)
{
    send(UpdatePopover{noBattery()});
    send(UpdateSettings{sampleSettings()});
    send(ClosePopover{});

    EXPECT_EQ(receive<Handled>()->messages, 1U);
    EXPECT_EQ(visible("Vorlane"), nullptr);
}

TEST_F(WindowsServerTest, DoesNotReopenAClosedWindowOnUpdate)
{
    showPopover(1);
    QTest::keyClick(visible("Vorlane"), Qt::Key_Escape);

    send(UpdatePopover{noBattery()});

    EXPECT_EQ(visible("Vorlane"), nullptr);
}

TEST_F(WindowsServerTest, FollowsTheThemeWhileAWindowIsOpen)
{
    showPopover(1);
    const auto shade = [] {
        return visible("Vorlane")->grab().toImage().pixelColor(3, 3).lightness();
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return shade() > 200; }));

    send(Appearance{.scheme = Appearance::Scheme::dark, .accent = std::nullopt});
    EXPECT_TRUE(QTest::qWaitFor([&] { return shade() < 60; }));

    send(Appearance{});
    EXPECT_TRUE(QTest::qWaitFor([&] { return shade() > 200; }));
}

TEST_F(WindowsServerTest, ReportsThatItIsIdleOnlyWithoutAWindow)
{
    showPopover(1);
    EXPECT_TRUE(receive<Handled>());
    const TimerCount idling(idleness);
    ASSERT_TRUE(QTest::qWaitFor([&] { return idling.expired > 0; }));
    EXPECT_EQ(receiveFrame(sockets.program.get(), frame, 4096), Receiving::nothing);

    send(ClosePopover{});

    EXPECT_TRUE(receive<Idle>());
}

// Expects this exit code once Qt has handled what was sent.
void expectExit(const SocketPair& sockets, int code)
{
    const auto run = [&] {
        WindowsServer server(sockets.windows.get());
        QTest::qWait(5000);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(code), "");
}

TEST(WindowsServerDeathTest, ExitsWhenTheProgramClosesTheSocket)
{
    SocketPair sockets;
    sockets.program.reset();

    expectExit(sockets, EXIT_SUCCESS);
}

TEST(WindowsServerDeathTest, ExitsOnAnInvalidMessage)
{
    for (const std::string bytes : {"", "\xff", "\x01"}) {
        const SocketPair sockets;
        ASSERT_TRUE(sendFrame(sockets.program.get(), bytes));

        expectExit(sockets, EXIT_SUCCESS);
    }
}

}  // namespace
}  // namespace vorlane::platform
