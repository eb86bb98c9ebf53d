#include "App/Prefs.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace vorlane {
namespace {

// The texts in backticks.
std::vector<std::string> quoted(const std::string& cell)
{
    std::vector<std::string> found;
    for (auto begin = cell.find('`'); begin != std::string::npos;) {
        const auto end = cell.find('`', begin + 1);
        if (end == std::string::npos) break;
        found.push_back(cell.substr(begin + 1, end - begin - 1));
        begin = cell.find('`', end + 1);
    }
    return found;
}

// The table in docs/settings.md. A row may list several keys, with one default for each or one for
// all.
std::map<std::string, std::string> documentedDefaults()
{
    std::map<std::string, std::string> found;
    std::ifstream document(VORLANE_SETTINGS_DOCUMENT);
    std::string line;
    while (std::getline(document, line)) {
        if (!line.starts_with("| `")) continue;
        const auto second = line.find('|', 1);
        const auto keys = quoted(line.substr(0, second));
        const auto values = quoted(line.substr(second, line.find('|', second + 1) - second));
        for (std::size_t i = 0; i < keys.size(); ++i) {
            found[keys[i]] = values.at(values.size() == 1 ? 0 : i);
        }
    }
    return found;
}

TEST(SettingsKeysTest, AreDocumentedWithTheirDefaults)
{
    std::map<std::string, std::string> expected;
    for (const auto& row : switchKeys) expected[row.key] = row.initial ? "true" : "false";
    for (const auto& row : numberKeys) expected[row.key] = std::to_string(row.initial);
    for (const auto& row : soundKeys) expected[row.key] = '"' + std::string(defaultSound) + '"';

    EXPECT_EQ(documentedDefaults(), expected);
}

}  // namespace
}  // namespace vorlane
