# The import library for toolchains other than mingw's, whose own is libtelvofm.dll.a.
find_program(TELVOFM_LLVM_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14)
if(NOT TELVOFM_LLVM_DLLTOOL)
    message(STATUS "No llvm-dlltool: telvofm.lib is not made")
    return()
endif()
set(definition ${PROJECT_SOURCE_DIR}/api/telvofm.def)
set(import_library ${CMAKE_BINARY_DIR}/telvofm.lib)
add_custom_command(OUTPUT ${import_library}
    COMMAND ${TELVOFM_LLVM_DLLTOOL} -m i386:x86-64 -D telvofm.dll -d ${definition} -l ${import_library}
    DEPENDS ${definition}
    VERBATIM)
add_custom_target(telvofm_import_library ALL DEPENDS ${import_library})
