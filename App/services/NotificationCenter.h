#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vorlane {

struct NotificationAction {
    std::string identifier;
    std::string title;

    friend bool operator==(const NotificationAction&, const NotificationAction&) = default;
};

struct NotificationCategory {
    std::string identifier;
    std::vector<NotificationAction> actions;

    friend bool operator==(const NotificationCategory&, const NotificationCategory&) = default;
};

// A notification to show. A later one with the same identifier replaces it.
struct NotificationRequest {
    std::string identifier;
    std::string title;
    std::string body;
    std::string categoryIdentifier;
    // "default" is the platform's own sound, any other text a sound's name; absent: silent.
    std::optional<std::string> sound;
    bool urgent = false;  // may override "do not disturb"
    // Shown beside the text; absent: the program's icon.
    std::optional<std::string> symbol = std::nullopt;

    friend bool operator==(const NotificationRequest&, const NotificationRequest&) = default;
};

enum class AuthorizationStatus { notDetermined, denied, authorized };

struct AuthorizationOptions {
    bool alert = false;
    bool sound = false;
    bool badge = false;

    friend bool operator==(const AuthorizationOptions&, const AuthorizationOptions&) = default;
};

// How a notification is shown while the program is frontmost.
struct PresentationOptions {
    bool banner = false;
    bool sound = false;
    bool list = false;
    bool badge = false;

    friend bool operator==(const PresentationOptions&, const PresentationOptions&) = default;
};

class NotificationDelegate {
public:
    virtual ~NotificationDelegate() = default;

    virtual PresentationOptions willPresent() = 0;

    // Called when the user chooses an action of a notification. Must call `completion` exactly
    // once.
    virtual void didReceive(const std::string& actionIdentifier,
                            const std::function<void()>& completion) = 0;
};

// The desktop's notification service.
class NotificationCenter {
public:
    virtual ~NotificationCenter() = default;

    // Whether the service can be reached now.
    virtual bool available() = 0;

    virtual void setDelegate(std::weak_ptr<NotificationDelegate> delegate) = 0;

    // Replaces earlier categories.
    virtual void setCategories(std::vector<NotificationCategory> categories) = 0;

    // May call `answer` before or after it returns.
    virtual void authorizationStatus(std::function<void(AuthorizationStatus)> answer) = 0;
    virtual void requestAuthorization(AuthorizationOptions options) = 0;

    // A failure is silent.
    virtual void add(const NotificationRequest& request) = 0;

    // Removes the notification from the screen, or from the queue if it is not shown yet.
    virtual void removeDelivered(const std::string& identifier) = 0;
};

}  // namespace vorlane
