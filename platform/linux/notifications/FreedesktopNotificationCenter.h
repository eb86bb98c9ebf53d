// Notifications on org.freedesktop.Notifications, one shown for each identifier.
#pragma once

#include "App/services/NotificationCenter.h"
#include "App/services/SoundPlayer.h"
#include "platform/linux/base/Systemd.h"
#include "platform/linux/notifications/NotificationHandover.h"
#include "platform/linux/notifications/NotificationRecords.h"
#include "platform/linux/notifications/NotificationServer.h"

namespace vorlane::platform {

// Never waits for the server. What its server did not live to answer is posted to the next one;
// a server that hangs holds up only itself, and gets nothing twice.
class FreedesktopNotificationCenter : public NotificationCenter {
public:
    struct Dependencies {
        sd_bus* session;  // attached to the main loop
        SoundFiles sounds;
        SoundPlayer& player;                  // where the server plays no sounds
        NotificationHandover inherited = {};  // counts as shown while its server is the one
    };
    // The session and the player outlive this object.
    explicit FreedesktopNotificationCenter(Dependencies dependencies);
    FreedesktopNotificationCenter(const FreedesktopNotificationCenter&) = delete;
    FreedesktopNotificationCenter& operator=(const FreedesktopNotificationCenter&) = delete;

    // Call it once the main loop has ended. Waits up to a second for unanswered posts: without
    // their ids they can be neither withdrawn nor handed over. What is shown stays.
    void finish();

    NotificationHandover handover() const;

    bool available() override;
    void setDelegate(std::weak_ptr<NotificationDelegate> receiver) override;
    void setCategories(std::vector<NotificationCategory> replacement) override;

    // Outside a sandbox nobody is asked for permission.
    void authorizationStatus(std::function<void(AuthorizationStatus)> answer) override;
    void requestAuthorization(AuthorizationOptions options) override;

    void add(const NotificationRequest& request) override;
    void removeDelivered(const std::string& identifier) override;

private:
    void postWaiting();
    void post(NotificationRecord& record);
    void close(std::uint32_t id);
    void answered(sd_bus_message* reply);
    bool isAnswerDue() const;
    void serverChanged();
    void actionInvoked(sd_bus_message* signal);

    sd_bus* session_;
    SoundFiles sounds;
    SoundPlayer& player_;
    NotificationServer server;
    NotificationRecords records;
    std::vector<NotificationCategory> categories;
    std::weak_ptr<NotificationDelegate> delegate;
    SlotPointer actionSignal;
};

}  // namespace vorlane::platform
