# The header is used from the source folder as well, so it has the version in words of its own: a copy that must agree.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/api/telvofm.h)
foreach(definition IN ITEMS
        "TELVOFM_VERSION_MAJOR ${PROJECT_VERSION_MAJOR}"
        "TELVOFM_VERSION_MINOR ${PROJECT_VERSION_MINOR}"
        "TELVOFM_VERSION_PATCH ${PROJECT_VERSION_PATCH}"
        "TELVOFM_VERSION \"${PROJECT_VERSION}\"")
    file(STRINGS ${PROJECT_SOURCE_DIR}/api/telvofm.h found REGEX "^#define ${definition}$")
    if(NOT found)
        message(FATAL_ERROR "The version is ${PROJECT_VERSION}: api/telvofm.h has to say \"#define ${definition}\"")
    endif()
endforeach()
