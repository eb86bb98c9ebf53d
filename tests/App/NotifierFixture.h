// A notifier with a fake notification service, dialog and run loop.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "App/Notifier.h"
#include "tests/support/FakeAlertPanel.h"
#include "tests/support/FakeApplication.h"
#include "tests/support/FakeNotificationCenter.h"
#include "tests/support/FakeRunLoop.h"
#include "tests/support/Printing.h"

namespace vorlane {

class NotifierFixture : public testing::Test {
protected:
    FakeClock clock;
    FakeRunLoop runLoop{clock};
    FakeNotificationCenter center;
    FakeAlertPanel alertPanel;
    FakeApplication application;
    PlatformTexts texts;
    std::shared_ptr<Notifier> notifier =
        std::make_shared<Notifier>(Notifier::Dependencies{.center = center,
                                                          .alertPanel = alertPanel,
                                                          .application = application,
                                                          .runLoop = runLoop,
                                                          .texts = texts});
};

}  // namespace vorlane
