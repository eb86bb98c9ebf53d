# Writes OUTPUT, a header that names the build by what MADE_BY says and FILES hold.
set(all "${MADE_BY}")
foreach(file IN LISTS FILES)
    file(SHA256 ${file} hash)
    string(APPEND all " ${hash}")
endforeach()
string(SHA256 name "${all}")
string(SUBSTRING ${name} 0 32 name)
file(WRITE ${OUTPUT} "#pragma once

namespace vorlane::platform {

// The same in the resident program in the windows process and in the X tray plugin.
constexpr const char* uiBuild = \"vorlane-ui-build-${name}\";

}  // namespace vorlane::platform
")
