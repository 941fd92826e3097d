# What keeps the time of a build down without touching what is shipped.

# A program or library of the tests or the tools: its own speed does not matter, so it is not optimised.
function(telvofm_compile_quickly target)
    target_compile_options(${target} PRIVATE "$<$<CONFIG:Release>:-O0>")
endfunction()

# target_precompile_headers in a form that ccache can keep; the build presets tell it that it may.
function(telvofm_precompile target)
    target_precompile_headers(${target} ${ARGN})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
    else()
        target_compile_options(${target} PRIVATE -fpch-preprocess)
    endif()
endfunction()
