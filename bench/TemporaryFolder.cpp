#include "bench/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>

#include "App/FatalError.h"

namespace vorlane::bench {

TemporaryFolder::TemporaryFolder()
    : path_(std::filesystem::temp_directory_path() / "vorlane-bench-XXXXXX")
{
    if (!mkdtemp(path_.data())) fatalError("Cannot make a temporary folder");
}

TemporaryFolder::~TemporaryFolder()
{
    std::filesystem::remove_all(path_);
}

}  // namespace vorlane::bench
