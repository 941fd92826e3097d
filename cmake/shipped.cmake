# How the library that is shipped is compiled and linked: small, hardened, the same from every folder, its symbols in a
# file of their own. The tests use it as it is shipped.

# No link-time optimisation: together with the list of exports it has made a DLL whose names led nowhere.
function(telvofm_compile_as_shipped target)
    if(TELVOFM_SANITIZE OR CMAKE_CXX_FLAGS MATCHES "-fcoverage-mapping") # whose figures go by the files' own names
        return()
    endif()
    target_compile_options(${target} PRIVATE
        -ffunction-sections -fdata-sections
        -ffile-prefix-map=${PROJECT_BINARY_DIR}=build -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.
        "$<$<CONFIG:Release>:-O2;-g1>")
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE -fvect-cost-model=dynamic) # the checksum is such a loop
    endif()
    if(NOT WIN32)
        target_compile_options(${target} PRIVATE -fstack-protector-strong -fno-plt)
        target_compile_definitions(${target} PRIVATE "$<$<CONFIG:Release>:_FORTIFY_SOURCE=2>")
    endif()
endfunction()

function(telvofm_link_as_shipped target)
    if(TELVOFM_SANITIZE)
        return()
    endif()
    target_link_options(${target} PRIVATE -Wl,--gc-sections)
    if(WIN32)
        # Pages in the file as in memory: Wine maps such a library, and copies another one each time it is loaded.
        target_link_options(${target} PRIVATE -Wl,--no-insert-timestamp -Wl,--file-alignment,4096)
    else()
        target_link_options(${target} PRIVATE -Wl,-z,relro -Wl,-z,now)
    endif()
    if(CMAKE_BUILD_TYPE STREQUAL "Release")
        add_custom_command(TARGET ${target} POST_BUILD
            COMMAND ${PROJECT_SOURCE_DIR}/cmake/take_symbols_out.sh
                ${CMAKE_OBJCOPY} ${CMAKE_OBJDUMP} $<TARGET_FILE:${target}>
            VERBATIM)
    endif()
endfunction()
