# What keeps the time of a build down without touching what is shipped.

# Some optimisation: enough for a program that waits for disks and tills, at two thirds of the compiler's time.
function(telvofm_compile_moderately target)
    target_compile_options(${target} PRIVATE "$<$<CONFIG:Release>:-O1>")
endfunction()

# A program or library of the tests or the tools: its own speed does not matter, so it is not optimised.
function(telvofm_compile_quickly target)
    target_compile_options(${target} PRIVATE "$<$<CONFIG:Release>:-O0>")
endfunction()

# Several files of a program are compiled as one: what they make of the same templates is made once. Names of files
# that are compiled together must differ; who wants each file by itself, as clang-tidy does, switches it off.
option(TELVOFM_UNITE "Compile several files of a test program as one" ON)
function(telvofm_unite target)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${TELVOFM_UNITE} UNITY_BUILD_BATCH_SIZE 6)
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
