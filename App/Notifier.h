// Posts alerts as notifications, asks for permission and handles the snooze action. Which alerts
// are due is left to `AlertEngine`.
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

// While the notification service is unavailable nothing is posted and no permission requested.
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

    // Called on the main thread when the user chooses to snooze.
    std::function<void()> onSnooze;

    bool available() const;

    // Registers this object as the service's delegate, and the category with the snooze action.
    void setup();

    // Explains, then asks for permission, unless the user has already decided.
    void requestIfNeeded();

    // Posts one alert. A kind that is not in `sounds` plays the default sound.
    void deliver(const PendingAlert& alert, const std::map<AlertKind, std::string>& sounds);

    // Removes the notification of this kind.
    void withdraw(AlertKind kind);

    PresentationOptions willPresent() override;
    void didReceive(const std::string& actionIdentifier,
                    const std::function<void()>& completion) override;

private:
    void explainAndRequest();

    Dependencies dependencies_;
};

}  // namespace vorlane
