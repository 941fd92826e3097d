# The warnings that every target of ours is built with; each is an error, but not in the builds of others.
add_library(telvofm_warnings INTERFACE)
target_compile_options(telvofm_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wcast-qual -Wformat=2
    "$<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast;-Wnon-virtual-dtor;-Woverloaded-virtual>")
if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(telvofm_warnings INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees overlaps inside std::string that are not there.
    target_compile_options(telvofm_warnings INTERFACE -Wno-restrict)
endif()
