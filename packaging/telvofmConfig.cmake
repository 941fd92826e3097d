# find_package(telvofm) makes the target telvofm::telvofm.
include(${CMAKE_CURRENT_LIST_DIR}/telvofmTargets.cmake)
if(MSVC)
    # This toolchain has an import library of its own kind.
    set_target_properties(telvofm::telvofm PROPERTIES IMPORTED_IMPLIB_RELEASE
        ${CMAKE_CURRENT_LIST_DIR}/../../telvofm.lib)
endif()
