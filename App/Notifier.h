// Posts reminders as notifications, asks for the permission to, and hears the snooze action.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "App/AlertKind.h"
#include "App/PendingAlert.h"
#include "App/content/PlatformTexts.h"
#include "App/services/AlertPanel.h"
#include "App/services/Application.h"
#include "App/services/NotificationCenter.h"
#include "App/services/RunLoop.h"

namespace vorlane {

// Where notifications are not available every operation does nothing.
class Notifier : public NotificationDelegate, public std::enable_shared_from_this<Notifier> {
public:
    struct Dependencies {
        NotificationCenter& center;
        AlertPanel& alertPanel;
        Application& application;
        RunLoop& runLoop;
        const PlatformTexts& texts;
    };
    explicit Notifier(Dependencies dependencies);

    // Called on the main thread when the user asks for silence.
    std::function<void()> onSnooze;

    bool available() const;

    // Becomes the center's delegate and registers the category with its snooze action.
    void setup();

    // Asks for permission, with an explanation first, unless the user has decided already.
    void requestIfNeeded();

    // Posts one alert at once. A kind without a sound has the default one.
    void deliver(const PendingAlert& alert, const std::map<AlertKind, std::string>& sounds);

    // Takes back what is still shown of this kind: it is no longer true.
    void withdraw(AlertKind kind);

    PresentationOptions willPresent() override;
    void didReceive(const std::string& actionIdentifier,
                    const std::function<void()>& completion) override;

private:
    void explainAndRequest();

    Dependencies dependencies_;
};

}  // namespace vorlane
