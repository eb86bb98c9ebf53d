# Compiles what most sources of a target include once for all of them. Only to build everything
# quickly: in a release each source stands on its own.
function(vorlane_precompile target)
    if(VORLANE_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()
