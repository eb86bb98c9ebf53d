// The shell around the model: launch, the status item, quit.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "App/AppModel.h"
#include "App/Subscription.h"
#include "App/content/StatusItemContent.h"
#include "App/services/Services.h"

namespace vorlane {

class AppDelegate : public std::enable_shared_from_this<AppDelegate> {
public:
    std::shared_ptr<AppModel> model;
    StatusItem* statusItem = nullptr;  // made at launch
    std::vector<Subscription> bag;

    explicit AppDelegate(const Services& services);

    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    // Shows the model's state and the settings as they are now.
    void updateStatusItem();

private:
    void makeStatusItem();
    std::function<void()> redrawSoon();
    void perform(MenuAction action);
    StatusItemContent content() const;

    Services services_;
};

}  // namespace vorlane
