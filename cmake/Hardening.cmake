# The hardening that distributions expect, in every optimised build: position-independent executables,
# read-only relocations, and checks for overflows of the stack and of buffers of known size.
if(CMAKE_BUILD_TYPE MATCHES "^(MinSizeRel|Release|RelWithDebInfo)$" AND NOT VORLANE_SANITIZE AND NOT VORLANE_FUZZ)
    include(CheckPIESupported)
    check_pie_supported(LANGUAGES CXX)
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    add_compile_options(-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2
        -Wformat -Werror=format-security)
    add_link_options(-Wl,-z,relro,-z,now)
endif()
