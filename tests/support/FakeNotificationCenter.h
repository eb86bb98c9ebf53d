// A fake notification service, and the user who answers it.
#pragma once

#include <algorithm>
#include <map>
#include <utility>

#include "App/services/NotificationCenter.h"

namespace vorlane {

class FakeNotificationCenter : public NotificationCenter {
public:
    bool reachable = true;
    AuthorizationStatus status = AuthorizationStatus::authorized;
    bool answersLater = false;  // the status is reported only by `answer()`

    std::weak_ptr<NotificationDelegate> delegate;
    std::vector<NotificationCategory> categories;
    std::vector<AuthorizationOptions> prompts;         // permissions requested
    std::vector<NotificationRequest> posted;           // everything ever shown
    std::map<std::string, NotificationRequest> shown;  // what is on screen, by identifier
    int completions = 0;                               // responses that were handled

    bool available() override { return reachable; }

    void setDelegate(std::weak_ptr<NotificationDelegate> next) override
    {
        delegate = std::move(next);
    }

    void setCategories(std::vector<NotificationCategory> next) override
    {
        categories = std::move(next);
    }

    void authorizationStatus(std::function<void(AuthorizationStatus)> callback) override
    {
        questions.push_back(std::move(callback));
        if (!answersLater) answer();
    }

    void answer()
    {
        for (const auto& callback : std::exchange(questions, {})) callback(status);
    }

    void requestAuthorization(AuthorizationOptions options) override { prompts.push_back(options); }

    void add(const NotificationRequest& request) override
    {
        if (!reachable || status != AuthorizationStatus::authorized) return;
        posted.push_back(request);
        shown.insert_or_assign(request.identifier, request);
    }

    void removeDelivered(const std::string& identifier) override { shown.erase(identifier); }

    // The user presses the button `title` on the notification `identifier`. False if no such
    // notification is shown or it has no such button.
    bool press(const std::string& identifier, const std::string& title)
    {
        const auto notification = shown.find(identifier);
        if (notification == shown.end()) return false;
        const auto category = std::ranges::find(categories, notification->second.categoryIdentifier,
                                                &NotificationCategory::identifier);
        if (category == categories.end()) return false;
        const auto action = std::ranges::find(category->actions, title, &NotificationAction::title);
        if (action == category->actions.end()) return false;

        shown.erase(notification);
        respond(action->identifier);
        return true;
    }

    void respond(const std::string& actionIdentifier)
    {
        if (const auto receiver = delegate.lock()) {
            receiver->didReceive(actionIdentifier, [this] { ++completions; });
        }
    }

private:
    std::vector<std::function<void(AuthorizationStatus)>> questions;
};

}  // namespace vorlane
