// The text of a desktop file, read and edited where it stands: what is not asked for stays as it
// was written.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorlane::platform {

class DesktopEntry {
public:
    explicit DesktopEntry(std::string_view text);

    // Whether there is the group that all keys here are of.
    bool isValid() const { return group.has_value(); }

    // With its escapes resolved. Of a key that stands twice, the last.
    std::optional<std::string> value(std::string_view key) const;

    // The texts between the semicolons.
    std::vector<std::string> list(std::string_view key) const;

    // `value` is escaped here. Must be valid.
    void set(std::string_view key, std::string_view value);
    void remove(std::string_view key);

    std::string text() const;

private:
    struct Line {
        std::string text;
        std::string key;  // empty: none of the group's
    };

    std::vector<Line> lines;
    std::optional<std::size_t> group;  // the line of its header
};

// The value of Exec that starts the program at `path`; absent for one with control characters or
// not in UTF-8, which desktops read in different ways or not at all.
std::optional<std::string> execCommand(std::string_view path);

// The program that a value of Exec starts; empty when there is none.
std::string programOf(std::string_view exec);

}  // namespace vorlane::platform
