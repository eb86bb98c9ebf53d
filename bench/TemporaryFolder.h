// A temporary folder, removed by the destructor.
#pragma once

#include <string>

namespace vorlane::bench {

class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::string& path() const { return path_; }

private:
    std::string path_;
};

}  // namespace vorlane::bench
