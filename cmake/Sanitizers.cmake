# Sanitizers are a property of the whole build: one object without them hides another one's errors.
# Only the tests' own code is left out, and only of the search for undefined behaviour.
if(VORLANE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
