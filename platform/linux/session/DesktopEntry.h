// Reads and edits single keys in the text of a desktop file; the rest of the text stays as it was
// written.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorlane::platform {

class DesktopEntry {
public:
    explicit DesktopEntry(std::string_view text);

    // Whether the text has the group [Desktop Entry], to which all keys here belong.
    bool isValid() const { return group.has_value(); }

    // Unescaped. If the key is repeated, its last value.
    std::optional<std::string> value(std::string_view key) const;

    // Escapes `value`. The entry must be valid.
    void set(std::string_view key, std::string_view value);
    void remove(std::string_view key);

    std::string text() const;

private:
    struct Line {
        std::string text;
        std::string key;  // empty unless the line sets a key of the group
    };

    std::vector<Line> lines;
    std::optional<std::size_t> group;  // index of the line with its header
};

// The value of Exec that starts the program at `path`. Absent for a path with control characters or
// invalid UTF-8, which desktops read in different ways or not at all.
std::optional<std::string> execCommand(std::string_view path);

// The program that a value of Exec starts; empty when there is none.
std::string programOf(std::string_view exec);

}  // namespace vorlane::platform
