// A model on a fake laptop, which starts on battery at 50%.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "App/AppModel.h"
#include "App/SampleJson.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/Printing.h"

namespace vorlane {

class AppModelFixture : public testing::Test {
protected:
    using Reason = AppModel::Reason;

    static constexpr Date start = mondayMorning;

    std::shared_ptr<AppModel> makeModel() { return std::make_shared<AppModel>(machine.services()); }

    // Returns a model that has just started.
    std::shared_ptr<AppModel> launch()
    {
        auto model = makeModel();
        model->start();
        return model;
    }

    void writeHistory(const std::vector<Sample>& samples)
    {
        SampleEncoder encoder(samples);
        std::string text;
        for (auto piece = encoder.next(); !piece.empty(); piece = encoder.next()) text += piece;
        machine.files.contents[FakeMachine::historyFile] = std::move(text);
    }

    // A sample on the adapter.
    static Sample plugged(Date date)
    {
        return {.t = date.secondsSince1970, .p = 50, .c = true, .a = true};
    }

    void beQuiet(std::int64_t startMinute, std::int64_t endMinute)
    {
        machine.defaults.set("quietEnabled", true);
        machine.defaults.set("quietStart", startMinute);
        machine.defaults.set("quietEnd", endMinute);
    }

    std::vector<std::string> posted() const
    {
        std::vector<std::string> identifiers;
        for (const auto& request : machine.notifications.posted) {
            identifiers.push_back(request.identifier);
        }
        return identifiers;
    }

    FakeMachine machine;
};

}  // namespace vorlane
