// Plays notification servers with arbitrary replies and signals: each reminder is on the screen
// once at most and disappears when withdrawn, and only actions of our own notifications count.
#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <thread>

#include "fuzz/AnyMessage.h"
#include "fuzz/LoneBus.h"
#include "fuzz/Questions.h"
#include "fuzz/Require.h"
#include "fuzz/ServerScreen.h"
#include "fuzz/Targets.h"
#include "platform/linux/notifications/FreedesktopNotificationCenter.h"

namespace vorlane::fuzz {

namespace {

using platform::FreedesktopNotificationCenter;

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* servicePath = "/org/freedesktop/Notifications";
constexpr const char* bus = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";

constexpr std::array words{service, "actions", "body-markup", "sound", "SNOOZE", ":1.5",
                           ":1.6",  "",        "default"};
constexpr std::array names{":1.5", ":1.6", ""};
constexpr std::array identifiers{"chargeLimit", "low", "tooLong", "health"};
constexpr std::array errors{SD_BUS_ERROR_NO_REPLY, SD_BUS_ERROR_SERVICE_UNKNOWN,
                            SD_BUS_ERROR_DISCONNECTED, SD_BUS_ERROR_FAILED,
                            SD_BUS_ERROR_NAME_HAS_NO_OWNER};
constexpr int longestCase = 60;

struct CountingPlayer : SoundPlayer {
    int plays = 0;
    void play(const std::string& /*name*/) override { ++plays; }
};

struct CountingDelegate : NotificationDelegate {
    int responses = 0;
    PresentationOptions willPresent() override { return {}; }
    void didReceive(const std::string& /*action*/, const std::function<void()>& completion) override
    {
        ++responses;
        completion();
    }
};

class NotificationsCase {
public:
    explicit NotificationsCase(Input& bytes)
        : input(bytes), any(input, words), lone([this](sd_bus_message* call) { hear(call); })
    {
        begin();
    }

    void run()
    {
        for (int step = 0; step < longestCase && !input.empty(); ++step) {
            apply(input.below(12));
            lone.settle();
            check();
        }
    }

private:
    // The notification center's constructor blocks on replies from the bus, so another thread must
    // send them.
    void begin()
    {
        std::atomic<bool> isMade = false;
        std::thread answering([&] {
            while (!isMade) {
                lone.serve();
                answerAll();
            }
        });
        center = std::make_unique<FreedesktopNotificationCenter>(
            FreedesktopNotificationCenter::Dependencies{.session = lone.program(),
                                                        .sounds = platform::SoundFiles("/nowhere"),
                                                        .player = player});
        isMade = true;
        answering.join();
        center->setDelegate(delegate);
        center->setCategories({{.identifier = "VL_ALERT",
                                .actions = {{.identifier = "SNOOZE", .title = "Snooze 1 hour"}}}});
        hasBegun = true;
        lone.settle();
    }

    void answerAll()
    {
        while (!questions.empty()) answer(true);
    }

    void hear(sd_bus_message* call)
    {
        const std::string_view member = sd_bus_message_get_member(call);
        if (member == "CloseNotification") return screen.hearClose(call);
        if (member == "Notify") screen.hearNotify(call);
        questions.keep(call);
    }

    void apply(std::size_t action)
    {
        if (action <= 1) add();
        if (action == 2) withdraw();
        if (action == 3) changeOwner(input.oneOf(names));
        if (action == 4) sendAny();
        if (action <= 7 && action >= 5) answer(false);
        if (action == 8) answer(true);
        if (action == 9) refuse();
        if (action == 10) act();
        if (action == 11) sendSignal(service, "NotificationClosed", "uu");
    }

    // A Notify call does not carry the identifier, so the title is used as one.
    void add()
    {
        const std::string identifier = input.oneOf(identifiers);
        center->add({.identifier = identifier,
                     .title = identifier,
                     .body = any.anyString(),
                     .categoryIdentifier = "VL_ALERT",
                     .sound = input.flag() ? std::optional<std::string>("Glass") : std::nullopt,
                     .urgent = input.flag()});
        ++added;
        withdrawn.erase(identifier);
    }

    void withdraw()
    {
        const std::string identifier = input.oneOf(identifiers);
        center->removeDelivered(identifier);
        withdrawn.insert(identifier);
    }

    // If the program's idea of the owner is uncertain, first reports that the name has no owner.
    void changeOwner(const char* name)
    {
        if (owner != name || isOwnerUncertain) serverIsGone();
        if (isOwnerUncertain) sendOwner("");
        isOwnerUncertain = false;
        sendOwner(name);
    }

    void sendOwner(const char* name)
    {
        const auto signal = lone.signal(bus, busPath, bus, "NameOwnerChanged");
        (void)sd_bus_message_append(signal.get(), "sss", service, owner.c_str(), name);
        lone.send(signal);
        owner = name;
    }

    // Discards the pending calls and notifications of a server that has ended.
    void serverIsGone()
    {
        questions.forgetAllButTheBus();
        screen.clear();
        ++changes;
    }

    // A signal from the bus with arbitrary contents. After NameOwnerChanged the owner is uncertain.
    void sendAny()
    {
        const bool ofOwner = input.flag();
        const auto signal = lone.signal(
            bus, busPath, bus, ofOwner ? "NameOwnerChanged" : "ActivatableServicesChanged");
        any.appendMostly(signal.get(), ofOwner ? "sss" : "");
        if (ofOwner) serverIsGone();
        isOwnerUncertain = isOwnerUncertain || ofOwner;
        lone.send(signal);
    }

    void sendSignal(const char* interface, const char* member, const std::string& signature)
    {
        const char* const sender = input.flag() ? ":1.5" : ":1.6";
        const auto signal = lone.signal(sender, servicePath, interface, member);
        any.appendMostly(signal.get(), signature);
        lone.send(signal);
    }

    void answer(bool mayBeAny)
    {
        const auto question = questions.next();
        if (!question) return;
        const auto reply = LoneBus::reply(question->call.get(), question->asked);
        if (question->member == "Notify") {
            answerNotify(*question, reply, mayBeAny);
        } else {
            const bool isName = question->member == "GetNameOwner";
            if (isName && !hasBegun && !mayBeAny) return;
            any.appendMostly(reply.get(), isName ? "s" : "as");
            if (isName) isOwnerUncertain = true;  // the reply may name any owner
        }
        lone.send(reply);
    }

    void answerNotify(const Question& question, const MessagePointer& reply, bool isAny)
    {
        if (!isAny) {
            (void)sd_bus_message_append(reply.get(), "u", screen.show(question.call.get()));
            return;
        }
        (void)screen.settle(question.call.get());
        auto signature = any.anySignature();
        if (signature.starts_with('u'))
            signature.insert(0, "s");  // so that the reply never contains an id unknown to `screen`
        any.append(reply.get(), signature);
    }

    void refuse()
    {
        const auto question = questions.next();
        if (!question) return;
        if (question->member == "Notify") (void)screen.settle(question->call.get());
        const auto error = platform::owned<MessagePointer>([&](sd_bus_message** message) {
            return sd_bus_message_new_method_errorf(question->call.get(), message,
                                                    input.oneOf(errors), "%s", "no");
        });
        lone.send(error);
        ++refused;
    }

    void act()
    {
        const int before = delegate->responses;
        const std::string sender = input.flag() ? ":1.5" : ":1.6";
        const auto signal = lone.signal(sender.c_str(), servicePath, service, "ActionInvoked");
        const std::uint32_t id = input.byte() % (screen.nextId + 1);
        if (!input.flag()) {
            any.appendMostly(signal.get(), "sus");
            lone.send(signal);
            lone.settle();
            require(delegate->responses == before, "a malformed action is ignored");
            return;
        }
        (void)sd_bus_message_append(signal.get(), "us", id, "SNOOZE");
        lone.send(signal);
        lone.settle();
        const bool counts =
            isOwnerUncertain ? screen.everGave(id) : screen.gave(id) && sender == owner;
        require(delegate->responses <= before + (counts ? 1 : 0),
                "only actions of our own notifications count");
        if (!isOwnerUncertain && counts && screen.shows(id)) {
            require(delegate->responses == before + 1,
                    "an action of a visible notification counts");
        }
    }

    void check() const
    {
        require(screen.notified <= added + refused + changes * static_cast<int>(identifiers.size()),
                "nothing is posted twice to the same server");
        require(player.plays <= screen.notified, "no sound plays without a notification");
        screen.check(withdrawn);
    }

    Input& input;
    AnyMessage any;
    Questions questions;
    ServerScreen screen;
    CountingPlayer player;
    std::shared_ptr<CountingDelegate> delegate = std::make_shared<CountingDelegate>();
    LoneBus lone;
    std::unique_ptr<FreedesktopNotificationCenter> center;
    bool hasBegun = false;

    // What the program must know by now.
    std::string owner;
    bool isOwnerUncertain = true;  // the program may assume any owner
    std::set<std::string> withdrawn;
    int added = 0;
    int changes = 0;
    int refused = 0;  // each allows another Notify: some errors mean that the server has ended
};

}  // namespace

void notifications(Input input)
{
    NotificationsCase(input).run();
}

}  // namespace vorlane::fuzz
