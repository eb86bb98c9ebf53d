#include "App/FatalError.h"

#include <cstdio>
#include <cstdlib>

namespace vorlane {

void fatalError(std::string_view text)
{
    (void)std::fwrite(text.data(), 1, text.size(), stderr);
    (void)std::fputc('\n', stderr);
    std::abort();
}

}  // namespace vorlane
