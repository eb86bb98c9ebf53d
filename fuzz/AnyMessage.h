// Fills bus messages with arbitrary values that the protocol allows.
#pragma once

#include <span>
#include <string>

#include "fuzz/Input.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::fuzz {

class AnyMessage {
public:
    // `all` are strings that the program knows; other strings are generated, too.
    AnyMessage(Input& bytes, std::span<const char* const> all) : input(bytes), words(all) {}

    // Appends values of these types.
    void append(sd_bus_message* message, const std::string& signature);

    // Usually appends values of these types, sometimes of arbitrary types. Returns the signature
    // used.
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
