# Compiles what most sources of a target include once for all of them. Only to build everything
# quickly: in a release each source stands on its own.
function(vorlane_precompile target)
    if(VORLANE_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# Compiles several sources of a target as one, so that what they instantiate alike is compiled once:
# most of the time that a test takes to compile goes into its matchers. Only to build everything
# quickly, as above.
function(vorlane_compile_together target)
    if(VORLANE_PRECOMPILE)
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 6)
    endif()
endfunction()
