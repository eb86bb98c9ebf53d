// Owns one adapter for each service and connects them.
#pragma once

#include "App/Subscription.h"
#include "App/services/Services.h"
#include "platform/linux/base/SdEventRunLoop.h"
#include "platform/linux/base/SystemBus.h"
#include "platform/linux/base/SystemCalendar.h"
#include "platform/linux/base/SystemClock.h"
#include "platform/linux/files/XdgFileManager.h"
#include "platform/linux/notifications/FreedesktopNotificationCenter.h"
#include "platform/linux/power/KernelBattery.h"
#include "platform/linux/power/UPowerEstimates.h"
#include "platform/linux/session/AutostartLoginItem.h"
#include "platform/linux/session/DesktopApplication.h"
#include "platform/linux/session/LogindWorkspace.h"
#include "platform/linux/settings/FileDefaultsStore.h"
#include "platform/linux/sound/ThemeSoundPlayer.h"
#include "platform/linux/tray/TrayItem.h"
#include "platform/linux/windows/RemoteWindows.h"

namespace vorlane::platform {

class LinuxServices {
public:
    struct Dependencies {
        SdEventRunLoop& loop;
        sd_bus* session;
        SystemBus::Opener openSystem;
        DesktopApplication& application;
    };
    explicit LinuxServices(Dependencies dependencies);

    Services services();

    // Writes pending settings and sends pending messages.
    void finish();

    // False while the battery holds back a plug change that it has read.
    bool showsLastReading() const { return !battery.holdsBackPlugChange(); }

    // Call before a restart in place: passes on state that the new process image cannot read again.
    void handOver() const;

private:
    Dependencies dependencies_;
    SystemBus system;
    SystemClock clock;
    SystemCalendar calendar;
    XdgFileManager files;
    FileDefaultsStore defaults;
    LogindWorkspace workspace;
    UPowerEstimates estimates;
    KernelBattery battery;
    AutostartLoginItem loginItem;
    ThemeSoundPlayer soundPlayer;
    FreedesktopNotificationCenter notifications;
    RemoteWindows windows;
    TrayItem statusBar;
    Subscription wake;
};

}  // namespace vorlane::platform
