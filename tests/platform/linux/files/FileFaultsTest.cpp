// The program keeps reminding while its files cannot be read or written, and uses them again
// afterwards.
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>

#include <csignal>

#include "platform/linux/base/FileDescriptor.h"
#include "tests/platform/linux/support/ChildProcess.h"
#include "tests/platform/linux/support/FaultyFilesFixture.h"
#include "tests/platform/linux/support/NoMoreFiles.h"

namespace vorlane::platform {
namespace {

namespace fs = std::filesystem;

using testing::Contains;
using testing::IsSupersetOf;
using testing::SizeIs;

void putSocket(const fs::path& path)
{
    const FileDescriptor file(socket(AF_UNIX, SOCK_STREAM, 0));
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    const auto begin = fs::current_path();
    fs::current_path(path.parent_path());  // a socket's path must be short
    (void)path.filename().string().copy(address.sun_path, sizeof address.sun_path - 1);
    (void)bind(file.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
    fs::current_path(begin);
}

// An object of another kind in the place of a file.
struct Obstacle {
    const char* name;
    std::function<void(const fs::path&)> put;
};

const Obstacle obstacles[] = {
    {"Folder", [](const fs::path& path) { fs::create_directories(path / "inner"); }},
    {"DanglingLink", [](const fs::path& path) { fs::create_symlink("nowhere", path); }},
    {"LinkToItself", [](const fs::path& path) { fs::create_symlink(path.filename(), path); }},
    {"LinkToADevice", [](const fs::path& path) { fs::create_symlink("/dev/zero", path); }},
    {"LinkToAFolder", [](const fs::path& path) { fs::create_symlink("/", path); }},
    {"Pipe", [](const fs::path& path) { (void)mkfifo(path.c_str(), 0600); }},
    {"Socket", putSocket},
    {"Garbage", [](const fs::path& path) { std::ofstream(path) << "\xFF\xFE[[["; }},
    {"Gigabyte",
     [](const fs::path& path) {
         std::ofstream{path};
         fs::resize_file(path, 1'000'000'000);
     }},
};

struct stat identityOf(const fs::path& path)
{
    struct stat status {};
    (void)lstat(path.c_str(), &status);
    return status;
}

class ObstacleTest : public FaultyFilesFixture, public testing::WithParamInterface<Obstacle> {
protected:
    void putBoth() const
    {
        for (const auto& file : {historyFile, settingsFile}) {
            fs::create_directories(fs::path(file).parent_path());
            fs::remove_all(file);
            GetParam().put(file);
            ASSERT_NE(identityOf(file).st_ino, 0U);
        }
    }

    static bool isKept(const std::string& file, ino_t inode)
    {
        return identityOf(file + ".bad").st_ino == inode;
    }
};

TEST_P(ObstacleTest, IsKeptAsideAtTheStart)
{
    putBoth();
    const auto history = identityOf(historyFile).st_ino;
    const auto inSettings = identityOf(settingsFile).st_ino;

    launch();
    expectReminders(85);
    settings->set("low", std::int64_t{15});
    quit();

    EXPECT_TRUE(isKept(historyFile, history));
    EXPECT_TRUE(isKept(settingsFile, inSettings));
    EXPECT_EQ(readFile(settingsFile, limit).value_or("none"), "low = 15\n");
    EXPECT_THAT(savedPercents(), Contains(85));
    launch();
    EXPECT_THAT(keptPercents(), Contains(85));
    EXPECT_EQ(settings->integerForKey("low"), 15);
}

TEST_P(ObstacleTest, DoesNotKeepARunningProgramFromSaving)
{
    writeBoth();
    launch();
    putBoth();
    settle();

    expectReminders(85);
    settings->set("low", std::int64_t{15});
    quit();

    EXPECT_EQ(readFile(settingsFile, limit).value_or("none"), "low = 15\n");
    EXPECT_THAT(savedPercents(), IsSupersetOf({33, 50, 85}));
}

INSTANTIATE_TEST_SUITE_P(Each, ObstacleTest, testing::ValuesIn(obstacles),
                         [](const auto& one) { return std::string(one.param.name); });

class FileFaultsTest : public FaultyFilesFixture {
protected:
    // Expects reminders and settings to work even while the files cannot be written.
    void expectWorkDespiteTrouble()
    {
        expectReminders(75);
        settings->set("limit", std::int64_t{60});
        EXPECT_EQ(settings->integerForKey("limit"), 60);
        expectReminders(65);
        EXPECT_THAT(keptPercents(), IsSupersetOf({33, 50, 75, 65}));
    }

    void expectRecovery()
    {
        expectReminders(62);
        const auto all = keptPercents();
        quit();

        EXPECT_THAT(savedPercents(), SizeIs(all.size()));
        EXPECT_THAT(savedPercents(), IsSupersetOf({33, 50, 75, 65, 62}));
        EXPECT_EQ(readFile(settingsFile, limit).value_or("none"), "limit = 60 # mine\n");
        EXPECT_FALSE(fs::exists(historyFile + ".bad"));
        EXPECT_FALSE(fs::exists(settingsFile + ".bad"));
    }
};

TEST_F(FileFaultsTest, FollowsALinkToReadAndReplacesItToWrite)
{
    folder.write("outside/history", oldHistory);
    folder.write("outside/settings", settingsText);
    fs::create_directories(folder.path() / "Vorlane");
    fs::create_directories(folder.path() / "vorlane");
    fs::create_symlink("../outside/history", historyFile);
    fs::create_symlink("../outside/settings", settingsFile);

    launch();
    expectReminders(75);
    settings->set("limit", std::int64_t{60});
    quit();

    EXPECT_THAT(savedPercents(), IsSupersetOf({33, 50, 75}));
    EXPECT_EQ(readFile(settingsFile, limit).value_or("none"), "limit = 60 # mine\n");
    EXPECT_EQ(readFile(folder.path() / "outside/history", limit).value_or("none"), oldHistory);
    EXPECT_EQ(readFile(folder.path() / "outside/settings", limit).value_or("none"), settingsText);
}

TEST_F(FileFaultsTest, UsesLittleMemoryForAHugeFile)
{
    for (const auto& file : {historyFile, settingsFile}) {
        fs::create_directories(fs::path(file).parent_path());
        std::ofstream(file).close();
        fs::resize_file(file, 1'000'000'000);
    }

    EXPECT_TRUE(holdsInChild([&] {
        rusage before{};
        rusage after{};
        (void)getrusage(RUSAGE_SELF, &before);
        launch();
        (void)getrusage(RUSAGE_SELF, &after);
        EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 20'000);  // KiB
    }));
}

TEST_F(FileFaultsTest, RecreatesItsFolders)
{
    writeBoth();
    launch();
    fs::remove_all(fs::path(historyFile).parent_path());
    fs::remove_all(fs::path(settingsFile).parent_path());

    expectReminders(85);
    settings->set("low", std::int64_t{15});
    quit();

    EXPECT_THAT(savedPercents(), IsSupersetOf({33, 50, 85}));
    EXPECT_EQ(readFile(settingsFile, limit).value_or("none"), "low = 15\n");
}

TEST_F(FileFaultsTest, WorksWhileTheDiskIsFull)
{
    if (const auto reason = cannotMount(); !reason.empty()) GTEST_SKIP() << reason;
    EXPECT_TRUE(holdsInChild([&] {
        ASSERT_TRUE(mountDisk(folder.path(), "64k"));
        writeBoth();
        launch();
        {
            std::ofstream filler(folder.path() / "filler");
            for (int i = 0; i < 1000 && filler; ++i) filler << std::string(1000, 'x') << std::flush;
            ASSERT_FALSE(filler);
        }

        expectWorkDespiteTrouble();
        EXPECT_EQ(readFile(settingsFile, limit).value_or("none"), settingsText);
        EXPECT_THAT(savedPercents(), Contains(33));
        fs::remove(folder.path() / "filler");

        expectRecovery();
    }));
}

TEST_F(FileFaultsTest, WorksWhileTheDiskIsReadOnly)
{
    if (const auto reason = cannotMount(); !reason.empty()) GTEST_SKIP() << reason;
    EXPECT_TRUE(holdsInChild([&] {
        ASSERT_TRUE(mountDisk(folder.path(), "1m"));
        writeBoth();
        ASSERT_TRUE(remount(folder.path(), true));
        launch();

        expectWorkDespiteTrouble();
        EXPECT_EQ(readFile(settingsFile, limit).value_or("none"), settingsText);
        EXPECT_EQ(readFile(historyFile, limit).value_or("none"), oldHistory);
        ASSERT_TRUE(remount(folder.path(), false));

        expectRecovery();
    }));
}

TEST_F(FileFaultsTest, WorksWhileItsFoldersAreReadOnly)
{
    EXPECT_TRUE(holdsInChild([&] {
        writeBoth();
        ASSERT_TRUE(dropRights(folder.path()));
        for (const auto* name : {"Vorlane", "vorlane"})
            (void)chmod((folder.path() / name).c_str(), 0500);
        launch();

        expectWorkDespiteTrouble();
        for (const auto* name : {"Vorlane", "vorlane"})
            (void)chmod((folder.path() / name).c_str(), 0700);

        expectRecovery();
    }));
}

TEST_F(FileFaultsTest, WorksWhileItsFoldersAreInaccessible)
{
    EXPECT_TRUE(holdsInChild([&] {
        writeBoth();
        ASSERT_TRUE(dropRights(folder.path()));
        launch();
        for (const auto* name : {"Vorlane", "vorlane"})
            (void)chmod((folder.path() / name).c_str(), 0);
        settle();

        expectWorkDespiteTrouble();
        for (const auto* name : {"Vorlane", "vorlane"})
            (void)chmod((folder.path() / name).c_str(), 0700);

        expectRecovery();
    }));
}

TEST_F(FileFaultsTest, StartsWithUnreadableFiles)
{
    EXPECT_TRUE(holdsInChild([&] {
        writeBoth();
        ASSERT_TRUE(dropRights(folder.path()));
        for (const auto& file : {historyFile, settingsFile}) (void)chmod(file.c_str(), 0);

        launch();
        expectReminders(85);
        settings->set("low", std::int64_t{15});
        quit();

        EXPECT_EQ(readFile(settingsFile, limit).value_or("none"), "low = 15\n");
        EXPECT_THAT(savedPercents(), Contains(85));
        for (const auto& file : {historyFile, settingsFile}) {
            (void)chmod((file + ".bad").c_str(), 0600);
        }
        EXPECT_EQ(readFile(historyFile + ".bad", limit).value_or("none"), oldHistory);
        EXPECT_EQ(readFile(settingsFile + ".bad", limit).value_or("none"), settingsText);
    }));
}

TEST_F(FileFaultsTest, ReadsItsFilesOnceTheyBecomeReadable)
{
    EXPECT_TRUE(holdsInChild([&] {
        writeBoth();
        ASSERT_TRUE(dropRights(folder.path()));
        for (const auto* name : {"Vorlane", "vorlane"})
            (void)chmod((folder.path() / name).c_str(), 0);
        launch();
        EXPECT_EQ(settings->integerForKey("limit"), 80);
        for (const auto* name : {"Vorlane", "vorlane"})
            (void)chmod((folder.path() / name).c_str(), 0700);
        settings->set("low", std::int64_t{15});

        expectReminders(75);
        quit();

        EXPECT_THAT(savedPercents(), IsSupersetOf({33, 50, 75}));
        EXPECT_EQ(readFile(settingsFile, limit).value_or("none"),
                  std::string(settingsText) + "low = 15\n");
    }));
}

TEST_F(FileFaultsTest, KeepsTheSettingsWhenNoMoreFilesCanBeOpened)
{
    EXPECT_TRUE(holdsInChild([&] {
        writeBoth();
        launch();
        folder.write("vorlane/settings.toml", settingsText + std::string("low = 15\n"));
        auto fault = std::make_unique<NoMoreFiles>();
        settle();

        expectReminders(75);
        settings->set("limit", std::int64_t{60});
        expectReminders(65);
        fault.reset();

        quit();
        EXPECT_EQ(readFile(settingsFile, limit).value_or("none"), "limit = 60 # mine\nlow = 15\n");
        EXPECT_THAT(savedPercents(), IsSupersetOf({33, 50, 75, 65}));
    }));
}

}  // namespace
}  // namespace vorlane::platform
