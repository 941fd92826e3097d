# What keeps the time of a build down without touching what is shipped.

# GCC tidies its memory up only when much has come together: a tenth of its time.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(--param=ggc-min-heapsize=1000000)
endif()

# Some optimisation: enough for a program that waits for disks and tills, at two thirds of the compiler's time.
function(telvofm_compile_moderately target)
    target_compile_options(${target} PRIVATE "$<$<CONFIG:Release>:-O1>")
endfunction()

# A program or library of the tests or the tools: its own speed does not matter, so it is not optimised. The
# sanitizer of undefined behaviour looks at what is tested; in the tests themselves it doubles the compiler's time.
function(telvofm_compile_unoptimised target)
    target_compile_options(${target} PRIVATE "$<$<CONFIG:Release>:-O0>")
    if(TELVOFM_SANITIZE MATCHES "undefined")
        target_compile_options(${target} PRIVATE -fno-sanitize=undefined)
    endif()
endfunction()

# For what is not optimised clang takes little more than half the time of GCC.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
    find_program(TELVOFM_CLANG_BESIDE_GCC clang++)
endif()

# The same for what is not shipped: by the compiler and the linker that take least time.
function(telvofm_compile_quickly target)
    telvofm_compile_unoptimised(${target})
    if(TELVOFM_CLANG_BESIDE_GCC)
        set_target_properties(${target} PROPERTIES
            CXX_COMPILER_LAUNCHER "${PROJECT_SOURCE_DIR}/cmake/compile_quickly.sh;${TELVOFM_CLANG_BESIDE_GCC};${CCACHE_PROGRAM}")
    endif()
    if(WIN32)
        target_link_options(${target} PRIVATE -wrapper ${PROJECT_SOURCE_DIR}/cmake/link_quickly.sh)
    endif()
endfunction()

# Several files of a program are compiled as one: what they make of the same templates is made once. Names of files
# that are compiled together must differ; who wants each file by itself switches it off.
option(TELVOFM_UNITE "Compile several files as one where a target says so" ON)
add_library(telvofm_files_together INTERFACE)
target_compile_options(telvofm_files_together INTERFACE -Wno-shadow) # the hidden names of one file by those of another

# So many files at once; 0 takes all.
function(telvofm_unite target files)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${TELVOFM_UNITE} UNITY_BUILD_BATCH_SIZE ${files})
    if(TELVOFM_UNITE)
        target_link_libraries(${target} PRIVATE telvofm_files_together) # behind all other warnings
    endif()
endfunction()

# The files of each folder: their headers are read once per folder.
function(telvofm_compile_by_folder target)
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        cmake_path(GET source PARENT_PATH folder)
        cmake_path(GET folder FILENAME room)
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP "room_${room}")
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${TELVOFM_UNITE} UNITY_BUILD_MODE GROUP)
    if(TELVOFM_UNITE)
        target_link_libraries(${target} PRIVATE telvofm_files_together) # behind all other warnings
    endif()
endfunction()

# target_precompile_headers in a form that ccache can keep; the build presets tell it that it may.
function(telvofm_precompile target)
    if(CMAKE_CXX_FLAGS MATCHES "-fcoverage-mapping" AND target MATCHES "^telvofm")
        return() # what comes out of a precompiled header is not counted
    endif()
    target_precompile_headers(${target} ${ARGN})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
    else()
        target_compile_options(${target} PRIVATE -fpch-preprocess)
    endif()
endfunction()
