// UPower's replies and signals, valid or not, from itself or from others: an estimate is plausible,
// fits the charge status, is recent and comes from UPower, or is absent.
#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "fuzz/AnyMessage.h"
#include "fuzz/LoneBus.h"
#include "fuzz/Questions.h"
#include "fuzz/Require.h"
#include "fuzz/Targets.h"
#include "platform/linux/power/MachineBattery.h"
#include "platform/linux/power/UPowerEstimates.h"

namespace vorlane::fuzz {

namespace {

using platform::ChargeStatus;

constexpr const char* service = "org.freedesktop.UPower";
constexpr const char* device = "/org/freedesktop/UPower/devices/DisplayDevice";
constexpr const char* deviceInterface = "org.freedesktop.UPower.Device";
constexpr const char* properties = "org.freedesktop.DBus.Properties";
constexpr const char* bus = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";

constexpr std::array words{deviceInterface, service, "TimeToFull", "TimeToEmpty", "State",
                           ":1.5",          ":1.6",  "",           "UpdateTime"};
constexpr std::array names{":1.5", ":1.6", ""};
constexpr std::array spans{1.0, 60.0, 239.0, 240.0, 299.0, 301.0};
constexpr std::int64_t longestTime = 14400;  // ten days, in minutes
constexpr int longestCase = 60;

class UpowerCase {
public:
    explicit UpowerCase(Input& bytes)
        : input(bytes),
          any(input, words),
          lone([this](sd_bus_message* call) { questions.keep(call); }),
          estimates(lone.program(), [this] { return uptime; })
    {
        changes = estimates.observe([] {});
    }

    void run()
    {
        for (int step = 0; step < longestCase && !input.empty(); ++step) {
            apply(input.below(8));
            lone.settle();
            check();
            lone.settle();  // the checks may have sent new calls
        }
    }

private:
    void apply(std::size_t action)
    {
        if (action == 0) changeOwner(input.oneOf(names));
        if (action == 1) sendSignal(bus, busPath, bus, "NameOwnerChanged", "sss");
        if (action == 2 || action == 3) sendProperties();
        if (action == 4) uptime = uptime + Seconds{input.oneOf(spans)};
        if (action == 5) answer();
        if (action == 6) refuse();
        if (action == 7) answerWell();
    }

    void changeOwner(const char* name)
    {
        const auto signal = lone.signal(bus, busPath, bus, "NameOwnerChanged");
        (void)sd_bus_message_append(signal.get(), "sss", service, owner.c_str(), name);
        lone.send(signal);
        if (owner != name || isUncertain) {
            known = false;
            questions.forgetAllButTheBus();
        }
        owner = name;
        isUncertain = false;
    }

    void sendSignal(const char* sender, const char* path, const char* interface, const char* member,
                    const std::string& signature)
    {
        const auto signal = lone.signal(sender, path, interface, member);
        any.appendMostly(signal.get(), signature);
        lone.send(signal);
        isUncertain = true;
        known = false;
    }

    void sendProperties()
    {
        const char* const sender = input.flag() ? ":1.5" : ":1.6";
        sendSignal(sender, device, properties, "PropertiesChanged", "sa{sv}as");
    }

    void answer()
    {
        const auto question = questions.next();
        if (!question) return;
        const auto reply = LoneBus::reply(question->call.get(), question->asked);
        any.appendMostly(reply.get(), question->asked == bus ? "s" : "a{sv}");
        lone.send(reply);
        isUncertain = true;
        known = false;
    }

    void refuse()
    {
        const auto question = questions.next();
        if (!question) return;
        const auto error = platform::owned<MessagePointer>([&](sd_bus_message** message) {
            return sd_bus_message_new_method_errorf(question->call.get(), message,
                                                    SD_BUS_ERROR_FAILED, "%s", "no");
        });
        lone.send(error);
    }

    // Sends a valid reply. If it comes from the known owner of the name, and no other call to that
    // owner is pending, the program must use it.
    void answerWell()
    {
        const auto question = questions.next();
        if (!question || question->asked == bus) return;
        const auto reply = LoneBus::reply(question->call.get(), question->asked);
        const std::uint32_t state = input.flag() ? 1 : 2;
        const auto full = input.number();
        const auto empty = input.number();
        (void)sd_bus_message_append(reply.get(), "a{sv}", 3, "State", "u", state, "TimeToFull", "x",
                                    full, "TimeToEmpty", "x", empty);
        lone.send(reply);
        known = question->asked == owner && !isUncertain && !questions.isAsked(owner);
        if (!known) return;
        seconds = state == 1 ? full : empty;
        status = state == 1 ? ChargeStatus::charging : ChargeStatus::discharging;
        heard = uptime;
    }

    void check()
    {
        for (const auto now :
             {ChargeStatus::unknown, ChargeStatus::charging, ChargeStatus::discharging,
              ChargeStatus::notCharging, ChargeStatus::full}) {
            const auto minutes = estimates.estimate(now);
            require(!minutes || now == ChargeStatus::charging || now == ChargeStatus::discharging,
                    "only a battery that charges or discharges has a remaining time");
            require(!minutes || (*minutes >= 0 && *minutes <= longestTime), "a time is plausible");
        }
        checkKnown();
    }

    void checkKnown()
    {
        if (owner.empty() && !isUncertain) {
            require(!estimates.estimate(ChargeStatus::charging) &&
                        !estimates.estimate(ChargeStatus::discharging),
                    "without an owner there is no estimate");
        }
        if (!known) return;
        const auto time = estimates.estimate(status);
        const bool isRecent = uptime < heard + Seconds{300};
        const auto plausible =
            seconds == 0 ? std::nullopt : platform::plausibleMinutes(static_cast<double>(seconds));
        require(time == (isRecent ? plausible : std::nullopt),
                "a recent plausible estimate of UPower is used");
    }

    Input& input;
    AnyMessage any;
    Questions questions;
    LoneBus lone;
    Seconds uptime{1000};
    platform::UPowerEstimates estimates;
    Subscription changes;

    // What the program must know by now.
    std::string owner;
    bool isUncertain = false;  // an arbitrary message may have changed any of it
    bool known = false;
    std::int64_t seconds = 0;
    ChargeStatus status = ChargeStatus::unknown;
    Seconds heard{0};
};

}  // namespace

void upower(Input input)
{
    UpowerCase(input).run();
}

}  // namespace vorlane::fuzz
