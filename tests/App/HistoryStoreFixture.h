// A history on a fake disk.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "App/HistoryStore.h"
#include "App/SampleJson.h"
#include "tests/support/FakeClock.h"
#include "tests/support/MemoryFiles.h"
#include "tests/support/Printing.h"
#include "tests/support/States.h"

namespace vorlane {

class HistoryStoreFixture : public testing::Test {
protected:
    static constexpr const char* url = "/home/user/share/Vorlane/history.json";
    static constexpr Date start = mondayMorning;

    HistoryStore open(Date now = start) { return HistoryStore(files, now); }

    HistoryStore openOn(std::string content, Date now = start)
    {
        files.contents[url] = std::move(content);
        return open(now);
    }

    // A sample on battery.
    static Sample at(Date date, std::int64_t percent)
    {
        return {.t = date.secondsSince1970, .p = percent, .c = false, .a = false};
    }

    // A sample while charging.
    static Sample plugged(Date date)
    {
        return {.t = date.secondsSince1970, .p = 50, .c = true, .a = true};
    }

    std::optional<std::string> file(const std::string& path = url) { return files.read(path); }
    std::optional<std::string> aside() { return file(std::string(url) + ".bad"); }

    // The samples in the file.
    std::vector<Sample> saved()
    {
        return decodeSamples(file().value_or("")).value_or(std::vector<Sample>{});
    }

    MemoryFiles files;
};

}  // namespace vorlane
