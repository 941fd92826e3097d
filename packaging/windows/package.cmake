# Two archives: everything that is used, with licences and sums, and the symbols.
set(CPACK_GENERATOR ZIP)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_PACKAGE_FILE_NAME telvofm-${PROJECT_VERSION}-windows-x64)
set(CPACK_ARCHIVE_USED_FILE_NAME ${CPACK_PACKAGE_FILE_NAME})
set(CPACK_ARCHIVE_SYMBOLS_FILE_NAME ${CPACK_PACKAGE_FILE_NAME}-symbols)
list(APPEND CPACK_COMPONENTS_ALL sums) # behind all others
foreach(component IN ITEMS library development tools sums)
    string(TOUPPER ${component} capitals)
    set(CPACK_COMPONENT_${capitals}_GROUP used)
endforeach()
set(CPACK_COMPONENT_SYMBOLS_GROUP symbols)

# Each package of this machine whose code is in our files, the compiler's own libraries included.
foreach(package IN ITEMS
        gcc-mingw-w64-x86-64-posix-runtime mingw-w64-x86-64-dev
        libboost1.81-dev libcli11-dev nlohmann-json3-dev libsqlite3-dev libzint-dev)
    install(FILES /usr/share/doc/${package}/copyright DESTINATION licences RENAME ${package}.txt COMPONENT development)
endforeach()
# These speak of texts that Debian has in one place.
foreach(licence IN ITEMS Apache-2.0 Artistic GFDL-1.2 GPL GPL-2 GPL-3 LGPL LGPL-2 LGPL-2.1)
    file(REAL_PATH /usr/share/common-licenses/${licence} text) # the names without a number lead to the newest
    install(FILES ${text} DESTINATION licences/common-licenses RENAME ${licence} COMPONENT development)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION licences RENAME telvofm.txt COMPONENT development)
install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/windows/licences.md
    DESTINATION licences RENAME README.md COMPONENT development)
install(SCRIPT ${CMAKE_CURRENT_SOURCE_DIR}/windows/sums.cmake COMPONENT sums EXCLUDE_FROM_ALL)
