# The warnings for all our targets; linked privately so that they do not propagate.
add_library(vorlane_warnings INTERFACE)
target_compile_options(vorlane_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror=missing-field-initializers)
