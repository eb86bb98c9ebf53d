# Sanitizers are a property of the whole build: one object without them hides another one's errors.
# Only the tests' own code is left out, and only of the search for undefined behaviour.
if(VORLANE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# The same for libFuzzer, which also wants to see which way each input took.
if(VORLANE_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL Clang)
        message(FATAL_ERROR "libFuzzer is a part of Clang: configure with the preset \"fuzz\".")
    endif()
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined
        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
