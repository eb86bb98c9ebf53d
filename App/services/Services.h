// All platform services. They must outlive the objects that use them.
#pragma once

#include "App/content/PlatformTexts.h"
#include "App/services/AlertPanel.h"
#include "App/services/Application.h"
#include "App/services/BatteryRegistry.h"
#include "App/services/Calendar.h"
#include "App/services/Clock.h"
#include "App/services/DefaultsStore.h"
#include "App/services/FileManager.h"
#include "App/services/LoginItem.h"
#include "App/services/NotificationCenter.h"
#include "App/services/PowerSources.h"
#include "App/services/RunLoop.h"
#include "App/services/SoundPlayer.h"
#include "App/services/StatusBar.h"
#include "App/services/Windows.h"
#include "App/services/Workspace.h"

namespace vorlane {

struct Services {
    PowerSources& powerSources;
    BatteryRegistry& batteryRegistry;
    DefaultsStore& defaults;
    FileManager& files;
    NotificationCenter& notifications;
    AlertPanel& alertPanel;
    StatusBar& statusBar;
    Windows& windows;
    Application& application;
    LoginItem& loginItem;
    SoundPlayer& soundPlayer;
    Workspace& workspace;
    RunLoop& runLoop;
    Clock& clock;
    Calendar& calendar;
    const PlatformTexts& texts;
};

}  // namespace vorlane
