// Runs the whole program with a simulated laptop and real files. The charge limit is 70%.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "App/AppDelegate.h"
#include "App/SampleJson.h"
#include "platform/linux/base/SdEventRunLoop.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/XdgFileManager.h"
#include "platform/linux/settings/FileDefaultsStore.h"
#include "tests/platform/linux/support/TemporaryFolder.h"
#include "tests/support/FakeMachine.h"

namespace vorlane::platform {

class FaultyFilesFixture : public testing::Test {
protected:
    static constexpr std::size_t limit = 10'000'000;
    static constexpr const char* settingsText = "limit = 70 # mine\n";
    static constexpr const char* oldHistory =
        "[{\"t\":1783000000,\"p\":33,\"c\":false,\"a\":false}]";

    void SetUp() override
    {
        (void)setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
        machine.clock.time = Date{1'783'000'060};
    }
    void TearDown() override { (void)unsetenv("XDG_DATA_HOME"); }

    void launch()
    {
        loop = std::make_unique<SdEventRunLoop>();
        settings = std::make_unique<FileDefaultsStore>(loop->event(), settingsFile);
        const auto base = machine.services();
        delegate = std::make_shared<AppDelegate>(Services{.powerSources = base.powerSources,
                                                          .batteryRegistry = base.batteryRegistry,
                                                          .defaults = *settings,
                                                          .files = files,
                                                          .notifications = base.notifications,
                                                          .alertPanel = base.alertPanel,
                                                          .statusBar = base.statusBar,
                                                          .windows = base.windows,
                                                          .application = base.application,
                                                          .loginItem = base.loginItem,
                                                          .soundPlayer = base.soundPlayer,
                                                          .workspace = base.workspace,
                                                          .runLoop = base.runLoop,
                                                          .clock = base.clock,
                                                          .calendar = base.calendar,
                                                          .texts = base.texts});
        delegate->applicationDidFinishLaunching();
        settle();
    }

    void quit()
    {
        delegate->applicationWillTerminate();
        delegate.reset();
        settings.reset();
        loop.reset();
    }

    // Runs everything that is due in both loops.
    void settle()
    {
        while (sd_event_run(loop->event(), 0) > 0) {
        }
        machine.runLoop.settle();
    }

    void writeBoth() const
    {
        folder.write("Vorlane/history.json", oldHistory);
        folder.write("vorlane/settings.toml", settingsText);
    }

    // Expects one more reminder when the battery is charged beyond the limit.
    void expectReminders(std::int64_t beyond)
    {
        const auto before = machine.notifications.posted.size();
        machine.plugIn();
        machine.charge(beyond);
        settle();
        EXPECT_EQ(machine.notifications.posted.size(), before + 1);
        machine.unplug();
        settle();
    }

    std::vector<std::int64_t> savedPercents() const
    {
        std::vector<std::int64_t> percents;
        const auto samples = decodeSamples(readFile(historyFile, limit).value_or(""));
        for (const auto& sample : samples.value_or(std::vector<Sample>())) {
            percents.push_back(sample.p);
        }
        return percents;
    }

    std::vector<std::int64_t> keptPercents() const
    {
        std::vector<std::int64_t> percents;
        for (const auto& sample : delegate->model->history.samples) percents.push_back(sample.p);
        return percents;
    }

    TemporaryFolder folder;
    std::string historyFile = folder.path() / "Vorlane/history.json";
    std::string settingsFile = folder.path() / "vorlane/settings.toml";
    FakeMachine machine;
    XdgFileManager files;
    std::unique_ptr<SdEventRunLoop> loop;
    std::unique_ptr<FileDefaultsStore> settings;
    std::shared_ptr<AppDelegate> delegate;
};

}  // namespace vorlane::platform
