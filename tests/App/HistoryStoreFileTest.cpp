#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/App/HistoryStoreFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;
using namespace std::chrono_literals;

using HistoryStoreFileTest = HistoryStoreFixture;

const std::string malformed = "[{\"t\":1767603600,\"p\":50,\"c\":true}]";

// Loading

TEST_F(HistoryStoreFileTest, StartsEmptyWithoutAFile)
{
    const auto store = open();

    EXPECT_THAT(store.samples, IsEmpty());
    EXPECT_EQ(store.lastSave, distantPast);
}

TEST_F(HistoryStoreFileTest, CreatesItsFolderAndNothingElse)
{
    (void)open();

    EXPECT_THAT(files.folders, ElementsAre("/home/user/share/Vorlane"));
    EXPECT_THAT(files.contents, IsEmpty());
}

TEST_F(HistoryStoreFileTest, LivesInTheFirstOfSeveralFolders)
{
    files.supportFolders = {"/first", "/second"};
    auto store = open();

    store.save(start);

    EXPECT_THAT(files.contents, ElementsAre(Pair("/first/Vorlane/history.json", "[]")));
}

TEST_F(HistoryStoreFileTest, ReadsWhatItSaved)
{
    auto store = open();
    store.record(onBattery(50), {.at = start + 125ms});
    store.record(charging(51), {.at = start + 1min});

    EXPECT_EQ(open(start + 2min).samples, store.samples);
    EXPECT_EQ(store.samples.size(), 2U);
}

TEST_F(HistoryStoreFileTest, DoesNotSaveWhenItLoads)
{
    const auto store = openOn(R"([ {"a":true,"c":true,"p":50,"t":1767603600} ])");

    EXPECT_THAT(store.samples, ElementsAre(plugged(start)));
    EXPECT_EQ(files.replacements, 0);
    EXPECT_EQ(store.lastSave, distantPast);
}

TEST_F(HistoryStoreFileTest, SortsTheFileByTime)
{
    const auto store = openOn(
        R"([{"t":1767603602,"p":1,"c":false,"a":false},{"t":1767603600,"p":2,"c":false,"a":false},)"
        R"({"t":1767603601,"p":3,"c":false,"a":false},{"t":1767603600,"p":4,"c":false,"a":false},)"
        R"({"t":1767603600,"p":5,"c":false,"a":false},{"t":1767603602,"p":6,"c":false,"a":false}])");

    EXPECT_THAT(store.samples,
                ElementsAre(at(start, 2), at(start, 4), at(start, 5), at(start + 1s, 3),
                            at(start + 2s, 1), at(start + 2s, 6)));
}

TEST_F(HistoryStoreFileTest, DropsOldSamplesWhenItLoads)
{
    const std::string content =
        R"([{"t":1767603599,"p":1,"c":false,"a":false},{"t":1767603600,"p":2,"c":false,"a":false}])";

    EXPECT_THAT(openOn(content, start + 30 * 24h).samples, ElementsAre(at(start, 2)));
    EXPECT_THAT(openOn(content, start + 31 * 24h).samples, IsEmpty());
}

TEST_F(HistoryStoreFileTest, StartsEmptyIfOneElementIsMalformed)
{
    const std::string good = R"({"t":1767603600,"p":50,"c":true,"a":true})";
    const std::string noAdapter = R"({"t":1767603601,"p":50,"c":true})";

    EXPECT_THAT(openOn("[" + good + "]").samples, ElementsAre(plugged(start)));
    EXPECT_THAT(openOn("[" + good + "," + noAdapter + "]").samples, IsEmpty());
    EXPECT_THAT(openOn("[" + noAdapter + "," + good + "]").samples, IsEmpty());
}

TEST_F(HistoryStoreFileTest, LeavesAMalformedFileUntilItSaves)
{
    auto store = openOn(malformed);
    EXPECT_THAT(store.samples, IsEmpty());
    store.record(BatteryState{}, {.at = start, .force = true});

    EXPECT_THAT(files.contents, ElementsAre(Pair(url, malformed)));
}

// Saving

TEST_F(HistoryStoreFileTest, SavesAnEmptyHistoryAsAnEmptyArray)
{
    auto store = openOn(R"([{"t":1767603600,"p":50,"c":true,"a":true}])");
    store.samples.clear();

    store.save(start + 1min);

    EXPECT_EQ(file(), "[]");
    EXPECT_EQ(store.lastSave, start + 1min);
}

TEST_F(HistoryStoreFileTest, SavesALongHistoryWhole)
{
    auto store = open();
    for (int minute = 0; minute < 5000; ++minute) {
        store.samples.push_back(at(start + minute * 1min, minute % 101));
    }

    store.save(start);

    EXPECT_EQ(saved(), store.samples);
}

TEST_F(HistoryStoreFileTest, WritesNothingIfATimeIsNotFinite)
{
    for (const double odd :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        auto store = openOn("[]");
        store.samples = {at(start, 50), at(Date{odd}, 51)};

        store.save(start + 1min);

        EXPECT_EQ(file(), "[]");
        EXPECT_EQ(store.lastSave, start + 1min);
    }
    EXPECT_EQ(files.replacements, 0);
}

TEST_F(HistoryStoreFileTest, KeepsTheOldFileWhenTheDiskIsFull)
{
    auto store = openOn("[]");
    files.full = true;

    store.record(onBattery(50), {.at = start});

    EXPECT_THAT(files.contents, ElementsAre(Pair(url, "[]")));
    EXPECT_EQ(store.samples.size(), 1U);
}

TEST_F(HistoryStoreFileTest, KeepsRecordingWithoutItsFolder)
{
    auto store = open();
    files.folders.clear();

    store.record(onBattery(50), {.at = start});

    EXPECT_EQ(store.samples.size(), 1U);
    EXPECT_THAT(files.contents, IsEmpty());
}

// A file that could not be loaded

TEST_F(HistoryStoreFileTest, RenamesAMalformedFileBeforeTheFirstSave)
{
    auto store = openOn(malformed);

    store.save(start);
    store.record(onBattery(50), {.at = start + 1h});
    store.save(start + 2h);

    EXPECT_EQ(aside(), malformed);
    EXPECT_EQ(saved().size(), 1U);
    EXPECT_EQ(files.contents.size(), 2U);
}

TEST_F(HistoryStoreFileTest, DoesNotOverwriteAnEarlierRenamedFile)
{
    auto first = openOn("first");
    first.save(start);
    auto second = openOn("second");
    second.save(start);

    EXPECT_THAT(files.contents,
                UnorderedElementsAre(Pair(url, "[]"), Pair(std::string(url) + ".bad", "first"),
                                     Pair(std::string(url) + ".bad2", "second")));
}

TEST_F(HistoryStoreFileTest, RenamesAnUnreadableFile)
{
    files.contents[url] = "secret";
    files.readable = false;
    auto store = open();
    files.readable = true;

    store.save(start);

    EXPECT_EQ(aside(), "secret");
    EXPECT_EQ(file(), "[]");
}

TEST_F(HistoryStoreFileTest, LoadsAFileThatBecomesReadableBeforeTheSave)
{
    {
        auto before = open(start);
        before.record(onBattery(50), {.at = start});
    }
    files.readable = false;
    auto store = open(start + 1min);
    files.readable = true;

    store.record(onBattery(49), {.at = start + 1min});

    EXPECT_THAT(store.samples, ElementsAre(at(start, 50), at(start + 1min, 49)));
    EXPECT_EQ(saved(), store.samples);
    EXPECT_EQ(aside(), std::nullopt);
}

TEST_F(HistoryStoreFileTest, KeepsTheSamplesOfAFileThatBecomesReadable)
{
    const auto content = "[{\"t\":1767603600,\"p\":50,\"c\":true,\"a\":true}]";
    files.contents[url] = content;
    files.readable = false;
    auto store = open();
    files.readable = true;

    store.save(start);

    EXPECT_EQ(file(), content);
    EXPECT_EQ(aside(), std::nullopt);
}

TEST_F(HistoryStoreFileTest, StaysEmptyIfClearedBeforeTheFileIsReadable)
{
    files.contents[url] = "[{\"t\":1767603600,\"p\":50,\"c\":true,\"a\":true}]";
    files.readable = false;
    auto store = open();
    files.readable = true;

    store.clear();
    store.save(start);
    store.save(start + 1h);

    EXPECT_THAT(store.samples, IsEmpty());
    EXPECT_EQ(file(), "[]");
}

TEST_F(HistoryStoreFileTest, DoesNotRenameAFileThatItLoaded)
{
    auto store = openOn("[]");

    store.save(start);
    store.save(start + 1h);

    EXPECT_THAT(files.contents, ElementsAre(Pair(url, "[]")));
}

TEST_F(HistoryStoreFileTest, RenamesNothingIfThereWasNoFile)
{
    auto store = open();

    store.save(start);
    store.save(start + 1h);

    EXPECT_THAT(files.contents, ElementsAre(Pair(url, "[]")));
}

TEST_F(HistoryStoreFileTest, DoesNotOverwriteAFileThatItCouldNotRename)
{
    auto store = openOn(malformed);
    files.pinned = true;

    store.record(onBattery(50), {.at = start});
    store.save(start + 1h);
    EXPECT_THAT(files.contents, ElementsAre(Pair(url, malformed)));

    files.pinned = false;
    store.save(start + 2h);
    EXPECT_EQ(aside(), malformed);
    EXPECT_EQ(saved().size(), 1U);
}

TEST_F(HistoryStoreFileTest, KeepsAMalformedFileInPlaceWhileTheHistoryCannotBeEncoded)
{
    auto store = openOn(malformed);
    store.samples = {at(Date{std::numeric_limits<double>::infinity()}, 50)};

    store.save(start);

    EXPECT_THAT(files.contents, ElementsAre(Pair(url, malformed)));
}

TEST_F(HistoryStoreFileTest, RenamesAMalformedFileOnlyOnceWhenTheDiskIsFull)
{
    auto store = openOn(malformed);
    files.full = true;
    store.save(start);
    EXPECT_EQ(aside(), malformed);

    files.full = false;
    store.save(start + 1h);

    EXPECT_THAT(files.contents,
                UnorderedElementsAre(Pair(url, "[]"), Pair(std::string(url) + ".bad", malformed)));
}

using HistoryStoreDeathTest = HistoryStoreFixture;

TEST_F(HistoryStoreDeathTest, StopsWithoutAnApplicationSupportFolder)
{
    files.supportFolders.clear();

    EXPECT_DEATH((void)open(), "^No application-support folder\n$");
}

}  // namespace
}  // namespace vorlane
