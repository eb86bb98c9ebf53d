// Settings in a private folder, and a count of the changes that their observer saw.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/base/SdEventRunLoop.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/settings/FileDefaultsStore.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {

class FileDefaultsStoreFixture : public testing::Test {
protected:
    TemporaryFolder folder;
    SdEventRunLoop loop;
    std::filesystem::path file = folder.path() / "vorlane" / "settings.toml";
    int changes = 0;

    struct Opened {
        std::unique_ptr<FileDefaultsStore> store;
        Subscription observation;

        FileDefaultsStore* operator->() const { return store.get(); }
    };

    Opened open()
    {
        auto store = std::make_unique<FileDefaultsStore>(loop.event(), file);
        auto observation = store->observe([this] { ++changes; });
        return {std::move(store), std::move(observation)};
    }

    Opened open(std::string_view text)
    {
        write(text);
        return open();
    }

    void write(std::string_view text) const { folder.write("vorlane/settings.toml", text); }

    std::string text(std::string_view ending = "") const
    {
        return readFile(file.string() + std::string(ending), 10'000'000).value_or("none");
    }

    // Returns how often observers were called after handling all events so far.
    int changesNow()
    {
        while (sd_event_run(loop.event(), 0) > 0) {
        }
        return std::exchange(changes, 0);
    }
};

}  // namespace vorlane::platform
