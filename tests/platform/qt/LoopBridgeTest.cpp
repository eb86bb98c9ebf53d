#include "platform/qt/LoopBridge.h"

#include <gmock/gmock.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <csignal>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/DesktopApplication.h"
#include "platform/linux/SdEventDrivenLoop.h"
#include "platform/linux/SdEventRunLoop.h"
#include "tests/platform/linux/PrivateBus.h"

namespace vorlane::platform {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

// Something that Qt's loop does on a later turn.
void post(std::function<void()> work)
{
    QMetaObject::invokeMethod(qApp, std::move(work), Qt::QueuedConnection);
}

// A test whose event never comes runs until the tests are given up.
class LoopBridgeTest : public testing::Test {
protected:
    SdEventRunLoop loop;
    SdEventDrivenLoop driven{loop.event()};
    std::vector<std::string> done;

    LoopBridgeTest()
    {
        loop.handOver({.drive =
                           [this] {
                               const LoopBridge bridge(driven);
                               (void)QApplication::exec();
                           },
                       .leave = [] { post([] { QCoreApplication::exit(); }); }});
    }

    std::function<void()> note(std::string what)
    {
        return [this, what = std::move(what)] { done.push_back(what); };
    }

    std::function<void()> noteAndStop(std::string what)
    {
        return [this, what = std::move(what)] {
            done.push_back(what);
            loop.stop();
        };
    }
};

TEST_F(LoopBridgeTest, DoesWorkThatWasPostedBeforeAndByItself)
{
    loop.async([this] {
        done.emplace_back("posted before");
        loop.async(noteAndStop("posted by the first"));
    });

    loop.run();

    EXPECT_THAT(done, ElementsAre("posted before", "posted by the first"));
}

TEST_F(LoopBridgeTest, KeepsTimersGoingInTheirOrder)
{
    const auto late = loop.after(30ms, noteAndStop("late"));
    const auto early = loop.after(1ms, note("early"));

    loop.run();

    EXPECT_THAT(done, ElementsAre("early", "late"));
}

TEST_F(LoopBridgeTest, HasTimersThatQtAdds)
{
    Subscription timer;
    QTimer::singleShot(1ms, qApp, [&] { timer = loop.after(1ms, noteAndStop("timer")); });

    loop.run();

    EXPECT_THAT(done, ElementsAre("timer"));
}

TEST_F(LoopBridgeTest, DoesWorkThatEachSidePostsToTheOther)
{
    loop.async([&] {
        post([&] {
            done.emplace_back("in Qt");
            loop.async([&] {
                done.emplace_back("in ours");
                post(noteAndStop("in Qt again"));
            });
        });
    });

    loop.run();

    EXPECT_THAT(done, ElementsAre("in Qt", "in ours", "in Qt again"));
}

TEST_F(LoopBridgeTest, LeavesQtItsTurnsHoweverBusyOursIs)
{
    std::function<void()> again = [&] { loop.async(again); };
    loop.async(again);
    QTimer::singleShot(5ms, qApp, noteAndStop("Qt's timer"));

    loop.run();

    EXPECT_THAT(done, ElementsAre("Qt's timer"));
}

TEST_F(LoopBridgeTest, GoesOnInsideALoopThatAQtSlotRuns)
{
    QEventLoop modal;
    Subscription timer;
    post([&] {
        timer = loop.after(1ms, [&] {
            done.emplace_back("timer inside");
            modal.quit();
        });
        (void)modal.exec();
        noteAndStop("dialog over")();
    });

    loop.run();

    EXPECT_THAT(done, ElementsAre("timer inside", "dialog over"));
}

TEST_F(LoopBridgeTest, WaitsForALoopOfQtsInsideOneOfItsHandlersAndThenGoesOn)
{
    QEventLoop modal;
    Subscription timer;
    loop.async([&] {
        timer = loop.after(1ms, noteAndStop("timer"));
        QTimer::singleShot(20ms, &modal, &QEventLoop::quit);
        (void)modal.exec();
        done.emplace_back("handler over");
    });

    loop.run();

    EXPECT_THAT(done, ElementsAre("handler over", "timer"));
}

TEST_F(LoopBridgeTest, SleepsWhileAHandlerOfOursRunsALoopOfQts)
{
    QEventLoop modal;
    int turns = 0;
    const auto timer = loop.after(1ms, note("timer"));
    loop.async([&] {
        const auto count = QObject::connect(QAbstractEventDispatcher::instance(),
                                            &QAbstractEventDispatcher::awake, [&] { ++turns; });
        QTimer::singleShot(50ms, &modal, &QEventLoop::quit);
        (void)modal.exec();
        (void)QObject::disconnect(count);
        loop.stop();
    });

    loop.run();

    EXPECT_LT(turns, 20);  // thousands when the descriptor is still watched
}

TEST_F(LoopBridgeTest, StopsWhenASignalAsksForIt)
{
    const PrivateBus bus;
    const auto session = bus.connect(loop);
    const DesktopApplication application(loop, session.get());
    post([] { (void)std::raise(SIGTERM); });

    loop.run();
}

class LoopBridgeBusTest : public LoopBridgeTest {
protected:
    PrivateBus bus;
    BusPointer session = bus.connect(loop);
    SlotPointer ticks;

    LoopBridgeBusTest()
    {
        ticks = owned<SlotPointer>([this](sd_bus_slot** slot) {
            return sd_bus_match_signal(
                session.get(), slot, nullptr, "/", "org.vorlane.Test", "Tick",
                onMessage<LoopBridgeBusTest, &LoopBridgeBusTest::ticked>, this);
        });
    }

    void ticked(sd_bus_message* /*message*/)
    {
        done.emplace_back("tick");
        if (done.size() == 3) loop.stop();
    }

    void tick() const
    {
        EXPECT_GE(sd_bus_emit_signal(session.get(), "/", "org.vorlane.Test", "Tick", ""), 0);
    }

    // Waits for the bus itself to answer; what arrives meanwhile is read ahead.
    void callAndWait() const
    {
        EXPECT_GE(sd_bus_call_method(session.get(), "org.freedesktop.DBus", "/",
                                     "org.freedesktop.DBus", "GetId", nullptr, nullptr, ""),
                  0);
    }
};

TEST_F(LoopBridgeBusTest, ServesTheBus)
{
    for (int i = 0; i < 3; ++i) tick();

    loop.run();

    EXPECT_THAT(done, ElementsAre("tick", "tick", "tick"));
}

TEST_F(LoopBridgeBusTest, SendsWhatAQtSlotPutsOnTheBus)
{
    QTimer::singleShot(1ms, qApp, [&] {
        for (int i = 0; i < 3; ++i) tick();
    });

    loop.run();

    EXPECT_THAT(done, ElementsAre("tick", "tick", "tick"));
}

TEST_F(LoopBridgeBusTest, HandsOutWhatABlockingCallInAQtSlotReadAhead)
{
    QTimer::singleShot(1ms, qApp, [&] {
        for (int i = 0; i < 3; ++i) tick();
        callAndWait();
    });

    loop.run();

    EXPECT_THAT(done, ElementsAre("tick", "tick", "tick"));
}

}  // namespace
}  // namespace vorlane::platform
