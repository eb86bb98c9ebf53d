#include <gmock/gmock.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "App/SampleJson.h"
#include "tests/App/SettingsViewFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The button "Reset History" and its confirmation.
class SettingsResetTest : public SettingsViewFixture {};

TEST_F(SettingsResetTest, ConfirmsBeforeResettingTheHistory)
{
    model->history.samples = {plugged(start)};

    intents.resetHistory();

    ASSERT_TRUE(machine.alertPanel.open);
    EXPECT_EQ(machine.alertPanel.open->message, "Reset history?");
    EXPECT_EQ(machine.alertPanel.open->informativeText,
              "This deletes all saved battery samples used for the chart.");
    EXPECT_THAT(machine.alertPanel.open->buttons,
                ElementsAre(AlertButton{.title = "Reset", .role = ButtonRole::destructive},
                            AlertButton{.title = "Cancel", .role = ButtonRole::cancel}));
    EXPECT_TRUE(view->confirmReset);
    EXPECT_EQ(model->history.samples.size(), 1);
}

TEST_F(SettingsResetTest, DeletesTheHistoryOnReset)
{
    model->history.samples = {plugged(start)};
    const auto version = model->historyVersion.get();
    intents.resetHistory();

    ASSERT_TRUE(machine.alertPanel.press("Reset"));

    EXPECT_FALSE(view->confirmReset);
    EXPECT_THAT(model->history.samples, IsEmpty());
    EXPECT_EQ(decodeSamples(machine.files.contents.at(FakeMachine::historyFile)),
              std::vector<Sample>{});
    EXPECT_EQ(model->historyVersion.get(), version + 1);
}

TEST_F(SettingsResetTest, ChangesNothingOnCancel)
{
    model->history.samples = {plugged(start)};
    const auto version = model->historyVersion.get();
    intents.resetHistory();

    ASSERT_TRUE(machine.alertPanel.press("Cancel"));

    EXPECT_FALSE(view->confirmReset);
    EXPECT_EQ(model->history.samples.size(), 1);
    EXPECT_THAT(machine.files.contents, IsEmpty());
    EXPECT_EQ(model->historyVersion.get(), version);
}

TEST_F(SettingsResetTest, ShowsOneConfirmationAtATime)
{
    struct CountingPanel : FakeAlertPanel {
        int runs = 0;

        void runModal(const AlertPanelContent& content,
                      std::function<void(std::size_t)> next) override
        {
            ++runs;
            FakeAlertPanel::runModal(content, std::move(next));
        }
    };
    CountingPanel panel;
    view = std::make_shared<SettingsView>(
        model, SettingsView::Dependencies{.defaults = machine.defaults,
                                          .batteryRegistry = machine.batteryRegistry,
                                          .loginItem = machine.loginItem,
                                          .soundPlayer = machine.soundPlayer,
                                          .alertPanel = panel,
                                          .clock = machine.clock,
                                          .calendar = machine.calendar,
                                          .texts = machine.texts});
    intents = view->intents();

    intents.resetHistory();
    intents.resetHistory();
    EXPECT_EQ(panel.runs, 1);

    ASSERT_TRUE(panel.press("Cancel"));
    intents.resetHistory();
    EXPECT_EQ(panel.runs, 2);
}

}  // namespace
}  // namespace vorlane
