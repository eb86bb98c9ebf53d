// A disk in memory, which can be full or unreadable.
#pragma once

#include <map>
#include <set>

#include "App/services/FileManager.h"

namespace vorlane {

class MemoryFiles : public FileManager {
public:
    std::vector<std::string> supportFolders{"/home/user/share"};
    std::map<std::string, std::string> contents;
    std::set<std::string> folders;
    bool readable = true;
    bool full = false;     // nothing new can be written
    bool pinned = false;   // no file can be moved
    int replacements = 0;  // files written so far

    std::vector<std::string> applicationSupportFolders() override { return supportFolders; }

    void createFolder(const std::string& path) override { folders.insert(path); }

    std::optional<std::string> read(const std::string& path) override
    {
        const auto found = contents.find(path);
        if (!readable || found == contents.end()) return std::nullopt;
        return found->second;
    }

    bool replace(const std::string& path, const Pieces& next) override
    {
        std::string content;
        for (auto piece = next(); !piece.empty(); piece = next()) content += piece;
        if (full || !folders.contains(path.substr(0, path.rfind('/')))) return false;

        contents.insert_or_assign(path, std::move(content));
        ++replacements;
        return true;
    }

    bool keepAside(const std::string& path) override
    {
        if (!contents.contains(path)) return true;
        if (pinned) return false;

        auto aside = path + ".bad";
        for (int number = 2; contents.contains(aside); ++number) {
            aside = path + ".bad" + std::to_string(number);
        }
        auto file = contents.extract(path);
        file.key() = aside;
        contents.insert(std::move(file));
        return true;
    }
};

}  // namespace vorlane
