// Arbitrary calls from bus clients to the status item and its menu: each is answered once, as its
// interface says or with an error, and only a click on a menu line performs its action.
#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/AnyMessage.h"
#include "fuzz/LoneBus.h"
#include "fuzz/MenuIds.h"
#include "fuzz/Require.h"
#include "fuzz/Targets.h"
#include "platform/linux/tray/StatusNotifierItem.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeRunLoop.h"

namespace vorlane::fuzz {

namespace {

constexpr const char* client = ":1.9";
constexpr const char* itemPath = "/StatusNotifierItem";
constexpr const char* menuPath = "/StatusNotifierItem/Menu";
constexpr const char* item = "org.kde.StatusNotifierItem";
constexpr const char* menu = "com.canonical.dbusmenu";
constexpr const char* properties = "org.freedesktop.DBus.Properties";
constexpr const char* watcher = "org.kde.StatusNotifierWatcher";
constexpr const char* bus = "org.freedesktop.DBus";

struct Method {
    const char* path;
    const char* interface;
    const char* name;
    const char* takes;
    const char* returns;
};

constexpr std::array methods{
    Method{itemPath, item, "Activate", "ii", ""},
    Method{itemPath, item, "SecondaryActivate", "ii", ""},
    Method{itemPath, item, "ContextMenu", "ii", ""},
    Method{itemPath, item, "Scroll", "is", ""},
    Method{itemPath, item, "XAyatanaSecondaryActivate", "u", ""},
    Method{itemPath, item, "ProvideXdgActivationToken", "s", ""},
    Method{itemPath, properties, "GetAll", "s", "a{sv}"},
    Method{itemPath, properties, "Get", "ss", "v"},
    Method{itemPath, properties, "Set", "ssv", ""},
    Method{menuPath, menu, "GetLayout", "iias", "u(ia{sv}av)"},
    Method{menuPath, menu, "GetGroupProperties", "aias", "a(ia{sv})"},
    Method{menuPath, menu, "GetProperty", "is", "v"},
    Method{menuPath, menu, "Event", "isvu", ""},
    Method{menuPath, menu, "EventGroup", "a(isvu)", "ai"},
    Method{menuPath, menu, "AboutToShow", "i", "b"},
    Method{menuPath, menu, "AboutToShowGroup", "ai", "aiai"},
    Method{menuPath, properties, "GetAll", "s", "a{sv}"},
    Method{menuPath, properties, "Get", "ss", "v"},
    Method{menuPath, "org.freedesktop.DBus.Introspectable", "Introspect", "", "s"},
    Method{"/", "org.freedesktop.DBus.Peer", "Ping", "", ""}};

constexpr std::array words{"clicked",    "hovered",          "opened", "label",  "type",
                           "enabled",    "children-display", item,     menu,     "IconName",
                           "IconPixmap", "ToolTip",          "Menu",   "Version"};
constexpr std::array actions{MenuAction::none,         MenuAction::open,     MenuAction::snooze,
                             MenuAction::cancelSnooze, MenuAction::settings, MenuAction::quit};
constexpr std::array<std::int32_t, 4> sizes{0, 1, 3, 6};
constexpr int longestCase = 40;

class TrayCase {
public:
    explicit TrayCase(Input& bytes)
        : input(bytes),
          any(input, words),
          lone([this](sd_bus_message* call) { answerWatcher(call); }),
          tray(lone.program(), loop)
    {
        tray.onAction([this] { ++activated; });
        tray.onMenu([this](MenuAction action) { chosen.push_back(action); });
        show();
    }

    void run()
    {
        for (int step = 0; step < longestCase && !input.empty(); ++step) {
            apply(input.below(8));
            lone.settle();
        }
        // Run work still queued on the loop.
        loop.settle();
        lone.settle();
        require(activated <= activations, "activations do not exceed the Activate calls");
        require(answers == calls, "each call is answered once");
    }

private:
    // With a valid or an arbitrary reply.
    void answerWatcher(sd_bus_message* call)
    {
        const auto reply = LoneBus::reply(call, ":1.5");
        if (!input.empty()) any.appendMostly(reply.get(), "");
        lone.send(reply);
    }

    void apply(std::size_t action)
    {
        if (action == 0) show();
        if (action == 1) click();
        if (action == 2) sendWatcherSignal();
        if (action == 3) loop.advance(Seconds{static_cast<double>(input.byte())});
        if (action == 4) tray.registerAgain();
        if (action >= 5) call(input.oneOf(methods));
    }

    void show()
    {
        // A choice made before the menu changes is carried out by the old menu.
        loop.settle();
        content.symbol = input.flag() ? std::optional<std::string>("battery.75") : std::nullopt;
        content.title = any.anyString();
        content.percent = input.flag() ? std::optional(input.number()) : std::nullopt;
        content.time = input.flag() ? std::optional(any.anyString()) : std::nullopt;
        content.toolTip = any.anyString();
        content.accessibilityDescription = content.title + ", " + content.toolTip;
        content.needsAttention = !content.symbol;
        content.menu.clear();
        for (auto count = input.oneOf(sizes); count > 0; --count) {
            content.menu.push_back({.action = input.oneOf(actions), .title = any.anyString()});
        }
        tray.show(content);
        lone.settle();
        learnIds();
    }

    // Two empty lists ask for all ids and all properties.
    void learnIds()
    {
        constexpr Method all{menuPath, menu, "GetGroupProperties", "aias", "a(ia{sv})"};
        const auto message = newCall(all);
        (void)sd_bus_message_append(message.get(), "aias", 0, 0);
        expected = &all;
        signatureMatches = true;
        ask(message);
        (void)sd_bus_message_rewind(answer.get(), 1);
        known = readFirstIds(answer.get(), "ia{sv}", "a{sv}");
        require(known.size() == content.menu.size() + 1,
                "each line has an id, and so does the root");
    }

    // Group calls must report which ids do not exist.
    void checkUnknown(sd_bus_message* question)
    {
        const std::string_view name = expected->name;
        const bool isEvents = name == "EventGroup";
        if (!signatureMatches || (!isEvents && name != "AboutToShowGroup")) return;
        if (!isWhole(question)) {
            const bool isRefused = sd_bus_message_is_method_error(answer.get(), nullptr) > 0;
            return require(isRefused, "an unreadable call is refused");
        }
        (void)sd_bus_message_rewind(question, 1);
        auto asked = isEvents ? readFirstIds(question, "isvu", "svu") : readIds(question);
        std::erase_if(asked, [this](std::int32_t id) { return known.contains(id); });
        (void)sd_bus_message_rewind(answer.get(), 1);
        if (!isEvents) require(readIds(answer.get()).empty(), "no menu needs an update");
        require(readIds(answer.get()) == asked, "unknown ids are reported");
    }

    // Variants nested too deeply for the bus are detected only by reading them.
    static bool isWhole(sd_bus_message* message)
    {
        (void)sd_bus_message_rewind(message, 1);
        return sd_bus_message_skip(message, sd_bus_message_get_signature(message, 1)) >= 0;
    }

    void sendWatcherSignal()
    {
        const bool changes = input.flag();
        const auto signal = changes
                                ? lone.signal(bus, "/org/freedesktop/DBus", bus, "NameOwnerChanged")
                                : lone.signal(":1.5", "/StatusNotifierWatcher", watcher,
                                              "StatusNotifierHostRegistered");
        any.appendMostly(signal.get(), changes ? "sss" : "");
        lone.send(signal);
    }

    MessagePointer newCall(const Method& method)
    {
        auto message = platform::owned<MessagePointer>([&](sd_bus_message** call) {
            return sd_bus_message_new_method_call(lone.desktop(), call, ":1.1", method.path,
                                                  method.interface, method.name);
        });
        (void)sd_bus_message_set_sender(message.get(), client);
        return message;
    }

    void call(const Method& method)
    {
        const auto message = newCall(method);
        const auto given = any.appendMostly(message.get(), method.takes);
        const bool isActivate = std::string_view(method.name) == "Activate" && given == "ii";
        activations += isActivate ? 1 : 0;
        expected = &method;
        signatureMatches = given == method.takes;
        const auto before = chosen.size();
        ask(message);
        checkUnknown(message.get());
        loop.settle();
        const bool isEvent = std::string_view(method.name).starts_with("Event");
        require(isEvent || chosen.size() == before, "only menu events choose a line");
        for (auto i = before; i < chosen.size(); ++i) requireInMenu(chosen[i]);
    }

    void ask(const MessagePointer& message)
    {
        ++calls;
        const int asked =
            sd_bus_call_async(lone.desktop(), nullptr, message.get(), onAnswer, this, UINT64_MAX);
        require(asked >= 0, "the call can be sent");
        lone.settle();
        require(answers == calls, "each call is answered at once");
    }

    static int onAnswer(sd_bus_message* reply, void* userdata, sd_bus_error* /*error*/)
    {
        auto& self = *static_cast<TrayCase*>(userdata);
        ++self.answers;
        self.answer.reset(sd_bus_message_ref(reply));
        if (sd_bus_message_is_method_error(reply, nullptr) > 0) return 0;
        const std::string_view interface = self.expected->interface;
        if (interface != item && interface != menu)
            return 0;  // an interface that sd-bus implements
        require(self.signatureMatches, "a call with the wrong signature is refused");
        require(sd_bus_message_has_signature(reply, self.expected->returns) > 0,
                "a reply has the signature of its interface");
        return 0;
    }

    // A click or a hover on any line, as a tray sends it.
    void click()
    {
        const std::int32_t id = input.byte() % 64;
        constexpr Method event{menuPath, menu, "Event", "isvu", ""};
        const auto message = newCall(event);
        const char* const name = input.flag() ? "clicked" : "hovered";
        (void)sd_bus_message_append(message.get(), "isvu", id, name, "i", 0, 0U);
        expected = &event;
        signatureMatches = true;
        const auto before = chosen.size();
        ask(message);
        require(chosen.size() == before, "a choice runs in a later turn of the loop");
        loop.settle();
        require(chosen.size() <= before + 1, "a click chooses at most once");
        require(chosen.size() == before || name == std::string_view("clicked"),
                "hovering does not choose");
        if (chosen.size() > before) requireInMenu(chosen.back());
    }

    void requireInMenu(MenuAction action) const
    {
        const auto isIt = [action](const MenuItem& line) {
            return line.action == action && !line.title.empty();
        };
        require(action != MenuAction::none && std::ranges::any_of(content.menu, isIt),
                "the chosen action is in the menu");
    }

    Input& input;
    AnyMessage any;
    FakeClock clock;
    FakeRunLoop loop{clock};
    LoneBus lone;
    platform::StatusNotifierItem tray;
    StatusItemContent content;
    const Method* expected = nullptr;
    bool signatureMatches = true;
    MessagePointer answer;  // the last reply
    MenuIds known;          // ids in the current menu
    std::vector<MenuAction> chosen;
    int calls = 0;
    int answers = 0;
    int activations = 0;
    int activated = 0;
};

}  // namespace

void tray(Input input)
{
    TrayCase(input).run();
}

}  // namespace vorlane::fuzz
