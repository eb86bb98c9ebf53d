# Writes the header OUTPUT, which names the build by a hash of MADE_BY and the contents of FILES.
set(all "${MADE_BY}")
foreach(file IN LISTS FILES)
    file(SHA256 ${file} hash)
    string(APPEND all " ${hash}")
endforeach()
string(SHA256 name "${all}")
string(SUBSTRING ${name} 0 32 name)
file(WRITE ${OUTPUT} "#pragma once

namespace vorlane::platform {

// Must match between the resident program, the windows process and the X tray plugin.
constexpr const char* uiBuild = \"vorlane-ui-build-${name}\";

}  // namespace vorlane::platform
")
