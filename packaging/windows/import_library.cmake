# The import library for toolchains other than mingw's, whose own is libtelvofm.dll.a.
find_program(TELVOFM_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14)
if(NOT TELVOFM_DLLTOOL)
    message(STATUS "No llvm-dlltool: telvofm.lib is not made")
    return()
endif()
set(definition ${PROJECT_SOURCE_DIR}/api/telvofm.def)
add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/telvofm.lib
    COMMAND ${TELVOFM_DLLTOOL} -m i386:x86-64 -D telvofm.dll -d ${definition} -l ${CMAKE_BINARY_DIR}/telvofm.lib
    DEPENDS ${definition}
    VERBATIM)
add_custom_target(telvofm_import_library ALL DEPENDS ${CMAKE_BINARY_DIR}/telvofm.lib)
install(FILES ${CMAKE_BINARY_DIR}/telvofm.lib ${definition} DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
