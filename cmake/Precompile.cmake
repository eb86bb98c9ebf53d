# Precompiles the headers that most sources of a target include. Only to speed up full builds: in a
# release each source compiles alone.
function(vorlane_precompile target)
    if(VORLANE_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# Compiles several sources of a target as one, so that shared template instantiations are compiled
# once: tests spend most of their compile time on matchers. Only to speed up full builds, as above.
function(vorlane_compile_together target)
    if(VORLANE_PRECOMPILE)
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 6)
    endif()
endfunction()
