#include "platform/linux/UiLoader.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <thread>

#include "FakeUi.h"
#include "TemporaryFolder.h"
#include "platform/UiBuild.h"
#include "platform/linux/FileDescriptor.h"

namespace vorlane::platform {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

std::string contentOf(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

bool isLoaded(const std::string& path)
{
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (library) (void)dlclose(library);
    return library != nullptr;
}

PopoverContent popoverSaying(const std::string& text)
{
    PopoverContent content;
    content.footnote = text;
    return content;
}

const AlertPanelContent question{.message = "Really?",
                                 .informativeText = "",
                                 .buttons = {{.title = "Clear", .role = ButtonRole::destructive},
                                             {.title = "Cancel", .role = ButtonRole::cancel},
                                             {.title = "Later", .role = ButtonRole::standard}}};

// Every test has a copy of the plugin of its own, which the process keeps.
class UiLoaderTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string plugin = (folder.path() / "ui.so").string();
    SdEventRunLoop loop;
    UiLoader loader{loop, {.plugin = plugin, .session = nullptr}};

    void install() const { std::filesystem::copy_file(VORLANE_FAKE_UI, plugin); }

    void install(const std::string& content) const { folder.write("ui.so", content); }

    FakeUi& fake() const
    {
        void* const library = dlopen(plugin.c_str(), RTLD_NOW | RTLD_LOCAL);
        return *reinterpret_cast<FakeUiAccess*>(dlsym(library, fakeUiName))();
    }

    std::unique_ptr<Popover> makePopover() { return loader.makePopover({}); }
};

TEST_F(UiLoaderTest, LoadsNothingBeforeAWindowIsShown)
{
    install();

    const auto popover = makePopover();
    popover->update(popoverSaying("early"));
    popover->performClose();

    EXPECT_FALSE(popover->isShown());
    EXPECT_FALSE(isLoaded(plugin));
}

TEST_F(UiLoaderTest, LoadsThePluginOnceForAllWindows)
{
    install();
    const auto popover = makePopover();
    const auto settings =
        loader.makeSettingsWindow({.title = "Some Settings", .width = 1, .height = 1}, {});

    popover->show(popoverSaying("hello"));
    popover->update(popoverSaying("again"));
    settings->makeKeyAndOrderFront({});
    settings->update({});
    popover->performClose();

    EXPECT_THAT(fake().events,
                ElementsAre("popover shown: hello", "popover updated: again", "Some Settings",
                            "settings shown", "settings updated", "popover closed"));
    EXPECT_EQ(fake().entries, 1);
    EXPECT_TRUE(settings->isShown());
    EXPECT_FALSE(popover->isShown());
}

TEST_F(UiLoaderTest, HandsDialogsToThePlugin)
{
    install();
    std::optional<std::size_t> answer;

    loader.runModal(question, [&](std::size_t button) { answer = button; });

    EXPECT_EQ(answer, 0U);
    EXPECT_THAT(fake().events, ElementsAre("asked: Really?"));
}

TEST_F(UiLoaderTest, HandsTheMenuToThePlugin)
{
    install();
    auto choice = MenuAction::none;

    loader.popUpMenu({{.action = MenuAction::quit, .title = "Quit"}},
                     [&](MenuAction action) { choice = action; });

    EXPECT_EQ(choice, MenuAction::quit);
    EXPECT_THAT(fake().events, ElementsAre("menu: Quit"));
}

TEST_F(UiLoaderTest, OpensNoMenuWithoutAPlugin)
{
    bool answered = false;

    loader.popUpMenu({{.action = MenuAction::quit, .title = "Quit"}},
                     [&](MenuAction /*action*/) { answered = true; });

    EXPECT_FALSE(answered);
}

TEST_F(UiLoaderTest, ShowsNothingWithoutAPlugin)
{
    const auto popover = makePopover();
    const auto settings = loader.makeSettingsWindow({.title = "", .width = 1, .height = 1}, {});

    popover->show({});
    settings->makeKeyAndOrderFront({});

    EXPECT_FALSE(popover->isShown());
    EXPECT_FALSE(settings->isShown());
}

TEST_F(UiLoaderTest, AnswersByTheCancelButtonWithoutAPlugin)
{
    std::optional<std::size_t> answer;

    loader.runModal(question, [&](std::size_t button) {
        answer = button;
        loop.stop();
    });
    EXPECT_EQ(answer, std::nullopt);  // not before the asking has returned
    loop.run();

    EXPECT_EQ(answer, 1U);
}

TEST_F(UiLoaderTest, AnswersByTheLastButtonWhenNoneCancels)
{
    std::optional<std::size_t> answer;

    loader.runModal(
        {.message = "", .informativeText = "", .buttons = {{.title = "A"}, {.title = "B"}}},
        [&](std::size_t button) {
            answer = button;
            loop.stop();
        });
    loop.run();

    EXPECT_EQ(answer, 1U);
}

TEST_F(UiLoaderTest, FindsAPluginThatComesLater)
{
    const auto popover = makePopover();
    popover->show({});
    install();

    popover->show(popoverSaying("now"));

    EXPECT_TRUE(popover->isShown());
    EXPECT_THAT(fake().events, ElementsAre("popover shown: now"));
}

TEST_F(UiLoaderTest, FindsADisplayThatComesLater)
{
    install();
    fake().displayAnswers = false;
    const auto popover = makePopover();
    popover->show({});
    EXPECT_FALSE(popover->isShown());
    fake().displayAnswers = true;

    popover->show(popoverSaying("now"));

    EXPECT_TRUE(popover->isShown());
    EXPECT_EQ(fake().entries, 2);
}

// Takes connections, and says nothing before it is told to.
class HungDisplay {
public:
    HungDisplay()
    {
        const auto number = std::to_string(10'000 + getpid() % 50'000);
        const auto path = "/tmp/.X11-unix/X" + number;
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path + 1, path.data(), path.size());  // an abstract name
        const auto length = offsetof(sockaddr_un, sun_path) + 1 + path.size();
        EXPECT_EQ(bind(listener.get(), reinterpret_cast<const sockaddr*>(&address),
                       static_cast<socklen_t>(length)),
                  0);
        EXPECT_EQ(listen(listener.get(), 8), 0);
        (void)setenv("DISPLAY", (":" + number).c_str(), 1);
        (void)unsetenv("WAYLAND_DISPLAY");
    }
    HungDisplay(const HungDisplay&) = delete;
    HungDisplay& operator=(const HungDisplay&) = delete;
    ~HungDisplay() { (void)unsetenv("DISPLAY"); }

    // To who asks next.
    void answer()
    {
        answering = std::thread([this] {
            const FileDescriptor asked(accept(listener.get(), nullptr, nullptr));
            const FileDescriptor next(accept(listener.get(), nullptr, nullptr));
            (void)send(next.get(), "x", 1, MSG_NOSIGNAL);
        });
    }

    void join()
    {
        (void)shutdown(listener.get(), SHUT_RDWR);  // nobody asks any more
        answering.join();
    }

private:
    FileDescriptor listener{socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    std::thread answering;
};

TEST_F(UiLoaderTest, WaitsForNoDisplayThatHangs)
{
    install();
    HungDisplay display;
    UiLoader hasty(loop,
                   {.plugin = plugin, .session = nullptr, .refused = [] {}, .patience = 20ms});
    const auto popover = hasty.makePopover({});

    popover->show({});

    EXPECT_FALSE(popover->isShown());
    EXPECT_EQ(fake().entries, 0);
}

TEST_F(UiLoaderTest, ShowsItsWindowsOnADisplayThatGoesOn)
{
    install();
    HungDisplay display;
    UiLoader hasty(loop,
                   {.plugin = plugin, .session = nullptr, .refused = [] {}, .patience = 20ms});
    UiLoader patient(loop, {.plugin = plugin, .session = nullptr});
    hasty.makePopover({})->show({});
    display.answer();
    const auto popover = patient.makePopover({});

    popover->show({});
    display.join();

    EXPECT_TRUE(popover->isShown());
}

TEST_F(UiLoaderTest, RefusesAPluginOfAnotherBuild)
{
    auto other = contentOf(VORLANE_FAKE_UI);
    const auto name = other.find(uiBuild);
    ASSERT_NE(name, std::string::npos);
    other[name + std::string(uiBuild).size() - 1] ^= 1;
    install(other);
    const auto popover = makePopover();

    popover->show({});

    EXPECT_FALSE(popover->isShown());
    EXPECT_FALSE(isLoaded(plugin));
}

TEST_F(UiLoaderTest, RefusesAPluginThatIsCutShort)
{
    const auto whole = contentOf(VORLANE_FAKE_UI);
    const auto popover = makePopover();
    for (const auto length :
         {std::size_t{0}, std::size_t{10}, whole.size() / 2, whole.size() - 1}) {
        install(whole.substr(0, length));

        popover->show({});

        EXPECT_FALSE(popover->isShown()) << length;
    }
    EXPECT_FALSE(isLoaded(plugin));
}

TEST_F(UiLoaderTest, RefusesWhatIsNoFileAtAll)
{
    const auto popover = makePopover();

    std::filesystem::create_directory(plugin);
    popover->show({});
    EXPECT_FALSE(popover->isShown());

    std::filesystem::remove(plugin);
    std::filesystem::create_symlink("/dev/zero", plugin);
    popover->show({});
    EXPECT_FALSE(popover->isShown());

    std::filesystem::remove(plugin);
    ASSERT_EQ(mkfifo(plugin.c_str(), 0600), 0);
    popover->show({});
    EXPECT_FALSE(popover->isShown());

    std::filesystem::remove(plugin);
    install();
    popover->show({});
    EXPECT_TRUE(popover->isShown());
}

TEST_F(UiLoaderTest, RefusesAFileThatIsNoPlugin)
{
    install(std::string(4096, 'x') + uiBuild);
    const auto popover = makePopover();

    popover->show({});

    EXPECT_FALSE(popover->isShown());
}

TEST_F(UiLoaderTest, LetsThePluginDriveFromTheEndOfTheTurn)
{
    install();
    const auto popover = makePopover();
    loop.async([&] {
        popover->show(popoverSaying("from a callback"));
        fake().events.emplace_back("callback returned");
    });
    const auto timer = loop.after(1ms, [&] {
        fake().events.emplace_back("timer");
        loop.stop();
    });

    loop.run();

    EXPECT_THAT(fake().events, ElementsAre("popover shown: from a callback", "callback returned",
                                           "driving", "timer"));
}

TEST_F(UiLoaderTest, DrivesNothingWhenTheProgramEndsInTheSameTurn)
{
    install();
    const auto popover = makePopover();
    loop.async([&] {
        popover->show(popoverSaying("last"));
        loop.stop();
    });

    loop.run();

    EXPECT_THAT(fake().events, ElementsAre("popover shown: last"));
}

TEST_F(UiLoaderTest, EndsTheLoopWhenThePluginStopsDriving)
{
    install();
    const auto popover = makePopover();
    popover->show({});
    loop.async([&] { loader.plugin()->leave(); });

    loop.run();

    EXPECT_THAT(fake().events, ElementsAre("popover shown: ", "driving"));
}

}  // namespace
}  // namespace vorlane::platform
