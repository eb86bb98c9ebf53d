// Fills bus messages with anything that the protocol allows.
#pragma once

#include <span>
#include <string>

#include "fuzz/Input.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::fuzz {

class AnyMessage {
public:
    // `words` are strings that mean something to the program; other strings come as well.
    AnyMessage(Input& bytes, std::span<const char* const> all) : input(bytes), words(all) {}

    // Values of these types.
    void append(sd_bus_message* message, const std::string& signature);

    // Mostly values of these types, otherwise of any; what was appended.
    std::string appendMostly(sd_bus_message* message, const std::string& signature);

    std::string anySignature();

    std::string anyString();

private:
    std::string anyType(int depth);
    void appendOne(sd_bus_message* message, const std::string& type);
    void appendBasic(sd_bus_message* message, char type);
    void appendContainer(sd_bus_message* message, char kind, const std::string& contents);

    Input& input;
    std::span<const char* const> words;
};

}  // namespace vorlane::fuzz
