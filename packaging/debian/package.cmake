# libtelvofm1, libtelvofm-dev, telvofm-tools and the symbols; finish.cmake adds what is the same in all of them.
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/finish.cmake)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR})
set(this_version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
set(library libtelvofm${PROJECT_VERSION_MAJOR})

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "drives a fiscal cash-register printer - shared library
Through this library a point-of-sale program drives a fiscal printer over
a serial port or TCP: receipts, payments, reports, journals, logos.")
# Which package a program gets that is linked with the library; and the loader's cache is made anew.
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/shlibs
    "libtelvofm ${PROJECT_VERSION_MAJOR} ${library} (>= ${PROJECT_VERSION})\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/triggers ${CMAKE_CURRENT_BINARY_DIR}/shlibs)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtelvofm-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library} (= ${this_version})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "drives a fiscal cash-register printer - for developers
The header of the library through which a point-of-sale program drives a
fiscal printer, what CMake and pkg-config need, and the documentation.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME telvofm-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
# The tool loads the library when it runs, which nothing in the file tells.
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${library} (= ${this_version})")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "virtual fiscal printer, and a tool for the library's logs
For developers of point-of-sale programs and for their support: a virtual
fiscal printer that shows its paper, and a tool around the library TelvoFM.")

set(CPACK_DEBIAN_SYMBOLS_PACKAGE_NAME ${library}-dbg)
set(CPACK_DEBIAN_SYMBOLS_PACKAGE_SECTION debug)
set(CPACK_DEBIAN_SYMBOLS_PACKAGE_DEPENDS "${library} (= ${this_version})")
set(CPACK_DEBIAN_SYMBOLS_PACKAGE_SHLIBDEPS OFF)
set(CPACK_COMPONENT_SYMBOLS_DESCRIPTION "drives a fiscal cash-register printer - symbols
With these symbols a debugger shows functions and lines of the library.")
