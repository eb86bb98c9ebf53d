# The warnings that every target of ours is built with; linked privately, so they reach nobody else.
add_library(vorlane_warnings INTERFACE)
target_compile_options(vorlane_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror=missing-field-initializers)
