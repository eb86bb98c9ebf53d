// Notifications through org.freedesktop.Notifications, at most one shown per identifier.
#pragma once

#include "App/services/NotificationCenter.h"
#include "App/services/SoundPlayer.h"
#include "platform/linux/base/Systemd.h"
#include "platform/linux/notifications/NotificationHandover.h"
#include "platform/linux/notifications/NotificationRecords.h"
#include "platform/linux/notifications/NotificationServer.h"

namespace vorlane::platform {

// Waits for the server only in `finish`. If a server dies before it answers a post, the next server
// gets the post; a server that only hangs does not get it again.
class FreedesktopNotificationCenter : public NotificationCenter {
public:
    struct Dependencies {
        sd_bus* session;  // attached to the main loop
        SoundFiles sounds;
        SoundPlayer& player;                  // for servers that play no sounds
        NotificationHandover inherited = {};  // used if its server still runs
    };
    // The session and the player must outlive this object.
    explicit FreedesktopNotificationCenter(Dependencies dependencies);
    FreedesktopNotificationCenter(const FreedesktopNotificationCenter&) = delete;
    FreedesktopNotificationCenter& operator=(const FreedesktopNotificationCenter&) = delete;

    // Call after the main loop has ended. Waits up to a second for unanswered posts: without their
    // ids they can be neither withdrawn nor handed over. Shown notifications stay.
    void finish();

    NotificationHandover handover() const;

    bool available() override;
    void setDelegate(std::weak_ptr<NotificationDelegate> receiver) override;
    void setCategories(std::vector<NotificationCategory> replacement) override;

    // Always authorized: outside a sandbox, no permission is needed.
    void authorizationStatus(std::function<void(AuthorizationStatus)> answer) override;
    void requestAuthorization(AuthorizationOptions options) override;

    void add(const NotificationRequest& request) override;
    void removeDelivered(const std::string& identifier) override;

private:
    void postPending();
    void post(NotificationRecord& record);
    void close(std::uint32_t id);
    void answered(sd_bus_message* reply);
    bool hasPending() const;
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
