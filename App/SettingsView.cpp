#include "App/SettingsView.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "App/SoundPicker.h"

namespace vorlane {

namespace {

constexpr std::array<std::string_view, 4> alertToggles{
    rowOf(&Prefs::limitEnabled).key, rowOf(&Prefs::lowEnabled).key, rowOf(&Prefs::longEnabled).key,
    rowOf(&Prefs::healthEnabled).key};

struct Range {
    std::string_view key;
    std::int64_t minimum;
    std::int64_t maximum;
};

constexpr Range limitRange{rowOf(&Prefs::limit).key, 50, 100};
constexpr Range lowRange{rowOf(&Prefs::low).key, 5, 50};
constexpr Range longRange{rowOf(&Prefs::longHours).key, 1, 48};

StepperRow stepper(const Range& range, std::int64_t value, std::string title)
{
    return {.key = std::string(range.key),
            .title = std::move(title),
            .value = value,
            .minimum = range.minimum,
            .maximum = range.maximum};
}

ToggleRow toggle(const Prefs& prefs, SettingsKey<bool> row, std::string_view title)
{
    return {.key = row.key, .title = std::string(title), .value = prefs.*row.field};
}

template <typename Row>
Row enabledWhen(bool on, Row row)
{
    row.enabled = on;
    return row;
}

// If the firmware stops charging at or below the limit, the reminder may be pointless.
std::optional<NoteRow> ownLimitNote(const Prefs& prefs, const PropertyDictionary& battery)
{
    const auto threshold = battery.integer("ChargeThreshold");
    if (!threshold && battery.boolean("KeepsBelowFull") == true) {
        return NoteRow{.text = "This laptop keeps its charge below 100% by itself.", .color = {}};
    }
    if (!threshold || *threshold > prefs.limit) return std::nullopt;
    return NoteRow{.text = "This laptop stops charging at " + std::to_string(*threshold) +
                           "% by itself. A limit of " + std::to_string(*threshold + 1) +
                           "% reminds you only if it does not.",
                   .color = {}};
}

SettingsSection chargeLimit(const Prefs& prefs, const DefaultsStore& defaults,
                            const std::optional<NoteRow>& note)
{
    const bool on = prefs.limitEnabled;
    const auto text = "Alert when charging reaches " + std::to_string(prefs.limit) + "%";
    SettingsSection section{.header = "Alerts",
                            .rows = {toggle(prefs, rowOf(&Prefs::limitEnabled), "Charge limit"),
                                     enabledWhen(on, stepper(limitRange, prefs.limit, text))}};
    if (note) section.rows.push_back(*note);
    section.rows.push_back(enabledWhen(
        on, toggle(prefs, rowOf(&Prefs::repeatReminder), "Repeat every 5 minutes, up to 3 times")));
    section.rows.push_back(
        enabledWhen(on, SoundPicker{rowOf(AlertKind::chargeLimit).key}.content(defaults)));
    return section;
}

SettingsSection lowBattery(const Prefs& prefs, const DefaultsStore& defaults)
{
    const bool on = prefs.lowEnabled;
    const auto text = "Alert on battery at " + std::to_string(prefs.low) + "% or less";
    return {.header = "",
            .rows = {toggle(prefs, rowOf(&Prefs::lowEnabled), "Low battery"),
                     enabledWhen(on, stepper(lowRange, prefs.low, text)),
                     enabledWhen(on, SoundPicker{rowOf(AlertKind::low).key}.content(defaults))}};
}

SettingsSection tooLong(const Prefs& prefs, const DefaultsStore& defaults)
{
    const bool on = prefs.longEnabled;
    const auto text =
        "Alert after " + std::to_string(prefs.longHours) + " h plugged in above the charge limit";
    return {
        .header = "",
        .rows = {toggle(prefs, rowOf(&Prefs::longEnabled), "Plugged in too long"),
                 enabledWhen(on, stepper(longRange, prefs.longHours, text)),
                 enabledWhen(on, SoundPicker{rowOf(AlertKind::tooLong).key}.content(defaults))}};
}

SettingsSection health(const Prefs& prefs, const DefaultsStore& defaults)
{
    const bool on = prefs.healthEnabled;
    return {.header = "",
            .rows = {toggle(prefs, rowOf(&Prefs::healthEnabled), "Battery health below 80% (once)"),
                     enabledWhen(on, SoundPicker{rowOf(AlertKind::health).key}.content(defaults))}};
}

SettingsSection menuBar(const Prefs& prefs, const PlatformTexts& texts)
{
    return {.header = std::string(texts.menuBar),
            .rows = {toggle(prefs, rowOf(&Prefs::showPercent), texts.showPercent),
                     toggle(prefs, rowOf(&Prefs::showTime), "Show time remaining")}};
}

}  // namespace

SettingsView::SettingsView(std::shared_ptr<AppModel> shared, Dependencies dependencies)
    : model(std::move(shared)),
      launchAtLogin(dependencies.loginItem.enabled()),
      dependencies_(dependencies)
{}

SettingsContent SettingsView::content() const
{
    const auto& defaults = dependencies_.defaults;
    const auto prefs = Prefs::current(dependencies_.defaults);
    const auto battery = dependencies_.batteryRegistry.properties().value_or(PropertyDictionary());
    return {.sections = {chargeLimit(prefs, defaults, ownLimitNote(prefs, battery)),
                         lowBattery(prefs, defaults),
                         tooLong(prefs, defaults),
                         health(prefs, defaults),
                         quietHours(prefs),
                         menuBar(prefs, dependencies_.texts),
                         general(),
                         {.header = "",
                          .rows = {NoteRow{.text = std::string(dependencies_.texts.closingNote),
                                           .color = std::nullopt}}}}};
}

SettingsIntents SettingsView::intents()
{
    const auto weakly = [weak = weak_from_this()](auto action) {
        return [weak, action](const auto&... values) {
            if (const auto view = weak.lock()) (*view.*action)(values...);
        };
    };
    return {
        .setToggle = weakly(&SettingsView::setToggle),
        .setNumber = weakly(&SettingsView::setNumber),
        .setTime = weakly(&SettingsView::setTime),
        .chooseSound = weakly(&SettingsView::chooseSound),
        .setLaunchAtLogin = weakly(&SettingsView::setLaunchAtLogin),
        .resetHistory = weakly(&SettingsView::resetHistory),
    };
}

SettingsSection SettingsView::quietHours(const Prefs& prefs) const
{
    const bool on = prefs.quietEnabled;
    return {.header = "Quiet hours",
            .rows = {toggle(prefs, rowOf(&Prefs::quietEnabled), "Hold alerts during quiet hours"),
                     TimeRow{.key = rowOf(&Prefs::quietStart).key,
                             .title = "From",
                             .time = minutesBinding(prefs.quietStart),
                             .enabled = on},
                     TimeRow{.key = rowOf(&Prefs::quietEnd).key,
                             .title = "Until",
                             .time = minutesBinding(prefs.quietEnd),
                             .enabled = on}}};
}

SettingsSection SettingsView::general() const
{
    SettingsSection section{
        .header = "General",
        .rows = {LoginItemRow{.title = "Launch at Login", .value = launchAtLogin.get()}}};
    if (const auto& error = loginError.get()) {
        section.rows.push_back(NoteRow{.text = *error, .color = Color::red});
    }
    section.rows.push_back(ResetRow{.title = "Reset History…"});
    if (!model->notifier->available()) {
        section.rows.push_back(
            NoteRow{.text = std::string(dependencies_.texts.notificationsUnavailable),
                    .color = Color::orange});
    }
    return section;
}

// A time that today skips is shown as the next valid one; an impossible time as the current time.
TimeOfDay SettingsView::minutesBinding(std::int64_t minutes) const
{
    const auto now = dependencies_.clock.now();
    const auto hour = minutes / 60;
    const auto today =
        dependencies_.calendar.today(now, {.hour = hour, .minute = minutes - hour * 60});
    return dependencies_.calendar.timeOfDay(today.value_or(now));
}

void SettingsView::setToggle(const std::string& key, bool value)
{
    const bool changed = value != dependencies_.defaults.boolForKey(key);
    dependencies_.defaults.set(key, value);
    const bool isAlert = std::ranges::find(alertToggles, key) != alertToggles.end();
    if (isAlert && changed && value) model->notifier->requestIfNeeded();
}

// A number edited by hand in the file may lie outside the range; the next press of the stepper
// moves it to the nearest end.
void SettingsView::setNumber(const std::string& key, std::int64_t value)
{
    for (const auto& range : {limitRange, lowRange, longRange}) {
        if (range.key != key) continue;
        dependencies_.defaults.set(key, std::clamp(value, range.minimum, range.maximum));
    }
}

void SettingsView::setTime(const std::string& key, TimeOfDay time)
{
    const auto hour = std::clamp<std::int64_t>(time.hour, 0, 23);
    const auto minute = std::clamp<std::int64_t>(time.minute, 0, 59);
    dependencies_.defaults.set(key, hour * 60 + minute);
}

void SettingsView::chooseSound(const std::string& key, const std::string& sound)
{
    SoundPicker{key}.choose(
        sound, {.defaults = dependencies_.defaults, .player = dependencies_.soundPlayer});
}

// After a failure the toggle shows the real state, and the error stays until a change succeeds.
void SettingsView::setLaunchAtLogin(bool on)
{
    std::optional<std::string> error;
    if (const auto failure = dependencies_.loginItem.setEnabled(on)) {
        error = "Could not change Launch at Login: " + *failure;
    }
    loginError.set(error);
    launchAtLogin.set(dependencies_.loginItem.enabled());
}

void SettingsView::resetHistory()
{
    if (confirmReset) return;
    confirmReset = true;
    dependencies_.alertPanel.runModal(
        {.message = "Reset history?",
         .informativeText = "This deletes all saved battery samples used for the chart.",
         .buttons = {{.title = "Reset", .role = ButtonRole::destructive},
                     {.title = "Cancel", .role = ButtonRole::cancel}}},
        [weak = weak_from_this()](std::size_t button) {
            const auto view = weak.lock();
            if (!view) return;
            view->confirmReset = false;
            if (button == 0) view->model->resetHistory();
        });
}

}  // namespace vorlane
