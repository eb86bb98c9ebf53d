// Interferes with each system call of a save in turn: the call fails, does half of its work, or is
// the last one before the process is killed. Each test first counts the calls of a save without
// interference.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <memory>

#include "App/HistoryStore.h"
#include "platform/linux/base/SdEventRunLoop.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/XdgFileManager.h"
#include "platform/linux/session/AutostartLoginItem.h"
#include "platform/linux/settings/FileDefaultsStore.h"
#include "tests/App/EncodedSamples.h"
#include "tests/platform/linux/support/TemporaryFolder.h"
#include "tests/platform/linux/support/TracedChild.h"

namespace vorlane::platform {
namespace {

namespace fs = std::filesystem;

using Trouble = TracedChild::Trouble;

constexpr std::size_t limit = 10'000'000;
constexpr Date now{1'800'000'000};

std::string historyOf(int samples, double last)
{
    std::vector<Sample> all;
    all.reserve(static_cast<std::size_t>(samples));
    for (int i = 0; i < samples; ++i) {
        all.push_back({.t = last - 60.0 * (samples - 1 - i), .p = i % 100, .c = false, .a = false});
    }
    return encode(all);
}

// A user's file that the program reads and writes again.
struct SaveCase {
    const char* name;
    const char* file;                   // below the folder
    std::optional<std::string> before;  // its content
    bool isUnderstood;                  // if not, the program must keep it aside
    // Saves in the folder with the planned interference; may be repeated.
    std::function<TracedChild::Outcome(fs::path, TracedChild::Plan)> act;
};

TracedChild::Outcome saveHistory(const fs::path& folder, const TracedChild::Plan& plan)
{
    (void)setenv("XDG_DATA_HOME", folder.c_str(), 1);
    XdgFileManager files;
    BatteryState state;
    state.hasBattery = true;
    state.percent = 50;

    TracedChild::begin(plan);
    HistoryStore history(files, now);
    history.lastSave = now;
    if (history.samplesSince(now).empty()) history.record(state, {.at = now, .force = true});
    history.save(now);
    const auto outcome = TracedChild::end();

    EXPECT_EQ(history.samplesSince(now).size(), 1U);
    return outcome;
}

TracedChild::Outcome setTheLimit(const fs::path& folder, const TracedChild::Plan& plan)
{
    const SdEventRunLoop loop;

    TracedChild::begin(plan);
    auto settings =
        std::make_unique<FileDefaultsStore>(loop.event(), folder / "vorlane/settings.toml");
    settings->set("limit", std::int64_t{85});
    const auto limitNow = settings->integerForKey("limit");
    settings.reset();
    const auto outcome = TracedChild::end();

    EXPECT_EQ(limitNow, 85);
    return outcome;
}

template <bool on>
TracedChild::Outcome launchAtLogin(const fs::path& folder, const TracedChild::Plan& plan)
{
    AutostartLoginItem item({.own = folder / "autostart/v.desktop",
                             .systems = {},
                             .program = "/bin/sh",
                             .desktops = {}});
    TracedChild::begin(plan);
    const auto trouble = item.setEnabled(on);
    const auto outcome = TracedChild::end();

    // Lasting interference can also make the program look as if it could not be started.
    EXPECT_TRUE(trouble || item.enabled() == on || plan.trouble == Trouble::happening ||
                plan.onwards);
    return outcome;
}

std::vector<SaveCase> cases()
{
    const auto month = historyOf(500, now.secondsSince1970 - 60);
    return {
        {"History", "Vorlane/history.json", month, true, saveHistory},
        {"FirstHistory", "Vorlane/history.json", std::nullopt, true, saveHistory},
        {"BrokenHistory", "Vorlane/history.json", "[{\"t\":1,", false, saveHistory},
        {"Settings", "vorlane/settings.toml", "low = 15 # mine\nlimit = 70\n", true, setTheLimit},
        {"FirstSettings", "vorlane/settings.toml", std::nullopt, true, setTheLimit},
        {"BrokenSettings", "vorlane/settings.toml", "limit = = 70\n", false, setTheLimit},
        {"Autostart", "autostart/v.desktop", "[Desktop Entry]\nExec=sh -l\nHidden=true\n", true,
         launchAtLogin<true>},
        {"AutostartOff", "autostart/v.desktop", "[Desktop Entry]\nExec=sh -l\n", true,
         launchAtLogin<false>},
        {"BrokenAutostart", "autostart/v.desktop", "Exec", false, launchAtLogin<true>},
    };
}

SaveCase caseOf(std::string_view name)
{
    const auto all = cases();
    return *std::ranges::find_if(all, [&](const SaveCase& one) { return one.name == name; });
}

class SaveFaultsTest : public testing::TestWithParam<SaveCase> {
protected:
    TemporaryFolder folder{TemporaryFolder::memory};  // on disk, thousands of syncs would be slow
    std::optional<std::string> after;                 // the content without interference

    void SetUp() override
    {
        const auto reason = TracedChild::impossibleBecause();
        if (!reason.empty()) GTEST_SKIP() << reason;
        prepare();
        (void)act({});
        after = content();
        ASSERT_NE(after, GetParam().before);
    }

    TracedChild::Outcome act(const TracedChild::Plan& plan) const
    {
        return GetParam().act(folder.path(), plan);
    }

    fs::path file() const { return folder.path() / GetParam().file; }

    void prepare() const
    {
        for (const auto& entry : fs::directory_iterator(folder.path())) fs::remove_all(entry);
        if (GetParam().before) folder.write(GetParam().file, *GetParam().before);
    }

    static std::optional<std::string> contentOf(const fs::path& path)
    {
        auto content = readFile(path, limit);
        return content ? std::optional(*content) : std::nullopt;
    }

    std::optional<std::string> content() const { return contentOf(file()); }

    // The files in the same folder whose names start with `begin`.
    std::vector<fs::path> beside(const std::string& begin) const
    {
        std::vector<fs::path> found;
        if (!fs::exists(file().parent_path())) return found;
        for (const auto& entry : fs::directory_iterator(file().parent_path())) {
            if (entry.path().filename().string().starts_with(begin)) found.push_back(entry.path());
        }
        return found;
    }

    std::vector<fs::path> temporaries() const
    {
        return beside("." + file().filename().string() + ".");
    }

    bool isKeptAside() const
    {
        const auto kept = beside(file().filename().string() + ".bad");
        return std::ranges::any_of(kept, [](const auto& path) {  //
            return contentOf(path) == GetParam().before;
        });
    }

    // Expects the complete old or new file. Malformed content must be kept, here or aside.
    void expectWhole() const
    {
        const auto found = content();
        EXPECT_TRUE(found == GetParam().before || found == after) << found.value_or("nothing");
        EXPECT_TRUE(GetParam().isUnderstood || found == GetParam().before || isKeptAside());
    }

    void expectRecovery() const
    {
        if (content() == after && temporaries().empty()) return;

        // Makes leftover temporaries old, so that the next save removes them.
        const timespec old[] = {{.tv_sec = 1'000'000'000, .tv_nsec = 0},
                                {.tv_sec = 1'000'000'000, .tv_nsec = 0}};
        for (const auto& left : temporaries()) (void)utimensat(AT_FDCWD, left.c_str(), old, 0);

        (void)act({});

        EXPECT_EQ(content(), after);
        EXPECT_THAT(temporaries(), testing::IsEmpty());
    }

    int callsOfASave() const
    {
        prepare();
        return act({}).calls;
    }

    // Saves once for each system call of a save, with interference at that call; returns the number
    // of those calls.
    int interfereWithEach(TracedChild::Plan plan) const
    {
        for (int calls = callsOfASave(); plan.call < calls; ++plan.call) {
            SCOPED_TRACE("call " + std::to_string(plan.call) + ", error " +
                         std::to_string(plan.error));
            prepare();
            calls = std::max(calls, act(plan).calls);
            expectWhole();
            expectRecovery();
            if (HasFailure()) break;
        }
        return plan.call;
    }
};

TEST_P(SaveFaultsTest, LosesNothingWhenACallFails)
{
    EXPECT_TRUE(TracedChild::holds([&] {
        for (const int error : {EIO, EINTR}) {
            EXPECT_GT(interfereWithEach({.trouble = Trouble::error, .error = error}), 10);
        }
    }));
}

// To the disk this looks as if the process had been killed.
TEST_P(SaveFaultsTest, LosesNothingWhenAllCallsFailFromSomePointOn)
{
    EXPECT_TRUE(TracedChild::holds([&] {
        EXPECT_GT(interfereWithEach({.trouble = Trouble::error, .error = EIO, .onwards = true}),
                  10);
    }));
}

TEST_P(SaveFaultsTest, WritesEverythingWhenACallDoesOnlyHalf)
{
    EXPECT_TRUE(TracedChild::holds([&] {
        EXPECT_GT(interfereWithEach({.trouble = Trouble::shortage}), 10);
        prepare();
        EXPECT_TRUE(act({.trouble = Trouble::shortage, .onwards = true}).interfered);
        EXPECT_EQ(content(), after);
    }));
}

INSTANTIATE_TEST_SUITE_P(EachFile, SaveFaultsTest, testing::ValuesIn(cases()),
                         [](const auto& one) { return std::string(one.param.name); });

// Slow, so only for one file of each kind.
class MomentsOfASaveTest : public SaveFaultsTest {};

TEST_P(MomentsOfASaveTest, LosesNothingWhenItIsKilled)
{
    int kills = 0;
    for (bool killed = true; killed; ++kills) {
        SCOPED_TRACE("call " + std::to_string(kills));
        prepare();
        const int status = TracedChild::statusOf(
            [&] { (void)act({.trouble = Trouble::kill, .call = kills}); }, nullptr);
        killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
        EXPECT_TRUE(killed || (WIFEXITED(status) && WEXITSTATUS(status) == 0));
        expectWhole();
        expectRecovery();
        if (HasFailure()) return;
    }
    EXPECT_GT(kills, 10);
}

TEST_P(MomentsOfASaveTest, LosesNothingOnAFullDisk)
{
    EXPECT_TRUE(TracedChild::holds(
        [&] { EXPECT_GT(interfereWithEach({.trouble = Trouble::error, .error = ENOSPC}), 10); }));
}

TEST_P(MomentsOfASaveTest, CopesWithAFileThatChangesDuringTheSave)
{
    const TemporaryFolder elsewhere(TemporaryFolder::memory);
    const auto other = elsewhere.path() / "other";
    const std::function<void()> changes[] = {
        [&] { fs::resize_file(file(), 0); },
        [&] { std::ofstream(file(), std::ios::app) << std::string(100'000, 'x'); },
        [&] { fs::remove_all(file().parent_path()); },
        [&] {
            std::ofstream(other) << "[]";
            fs::rename(other, file());
        },
        [&] {
            fs::remove_all(file());
            fs::create_directories(file() / "inner");
        },
    };
    for (const auto& change : changes) {
        const auto happening = [&change] {
            try {
                change();
            } catch (const fs::filesystem_error&) {
                // The file or folder did not exist.
            }
        };
        const auto work = [&] {
            int calls = callsOfASave();
            for (int call = 0; call < calls && !HasFailure(); ++call) {
                SCOPED_TRACE("call " + std::to_string(call));
                prepare();
                calls = std::max(calls, act({.trouble = Trouble::happening, .call = call}).calls);
                if (content() != after) (void)act({});
                EXPECT_TRUE(content() || GetParam().name == std::string_view("AutostartOff"));
            }
            EXPECT_GT(calls, 10);
        };
        EXPECT_TRUE(TracedChild::holds(work, happening));
    }
}

INSTANTIATE_TEST_SUITE_P(Each, MomentsOfASaveTest,
                         testing::Values(caseOf("History"), caseOf("Settings"),
                                         caseOf("AutostartOff")),
                         [](const auto& one) { return std::string(one.param.name); });

}  // namespace
}  // namespace vorlane::platform
