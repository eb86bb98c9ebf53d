// The user's files. Application data belongs in the XDG data folder.
#pragma once

#include "App/services/FileManager.h"

namespace vorlane::platform {

class XdgFileManager : public FileManager {
public:
    std::vector<std::string> applicationSupportFolders() override;
    void createFolder(const std::string& path) override;
    std::optional<std::string> read(const std::string& path) override;
    bool replace(const std::string& path, const Pieces& next) override;
    bool keepAside(const std::string& path) override;
};

}  // namespace vorlane::platform
