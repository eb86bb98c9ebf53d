# Sanitizers apply to the whole build: one object without them hides errors of another. The one
# exception: the tests' own code is not checked for undefined behaviour.
if(VORLANE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# libFuzzer also needs coverage instrumentation.
if(VORLANE_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL Clang)
        message(FATAL_ERROR "libFuzzer needs Clang: configure with the preset \"fuzz\".")
    endif()
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined
        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
