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

# Compiles the files of each folder of a target as one, so that their headers are read once per folder and not once
# per file. A file whose hidden names stand in another file of its folder too is left out with
# SKIP_UNITY_BUILD_INCLUSION.
add_library(telvofm_files_together INTERFACE)
target_compile_options(telvofm_files_together INTERFACE -Wno-shadow) # the hidden names of one file by those of another
function(telvofm_compile_by_folder target)
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        cmake_path(GET source PARENT_PATH folder)
        cmake_path(GET folder FILENAME room)
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP "room_${room}")
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
    target_link_libraries(${target} PRIVATE telvofm_files_together) # behind all other warnings
endfunction()
