# The simulated device: the other end of the wire, with its own decoding. Each room is a folder.
find_package(Boost 1.81 REQUIRED)
find_package(SQLite3 REQUIRED)
find_package(PNG REQUIRED)
find_library(ZINT_LIBRARY zint REQUIRED)

file(GLOB device_sources CONFIGURE_DEPENDS
    answers/*.cpp fiscal/*.cpp language/*.cpp memory/*.cpp paper/*.cpp printers/*.cpp)
add_library(virtual_printer_device STATIC ${device_sources})
target_include_directories(virtual_printer_device PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(virtual_printer_device
    PRIVATE PNG::PNG SQLite::SQLite3 ${ZINT_LIBRARY} telvofm_warnings)

# The same as a program: links, options, standard output.
if(WIN32)
    set(other_platform posix)
else()
    set(other_platform win32)
endif()
file(GLOB transport_sources CONFIGURE_DEPENDS transport/*.cpp)
list(FILTER transport_sources EXCLUDE REGEX "_${other_platform}\\.cpp$")
add_executable(telvofm-printer main.cpp options.cpp service.cpp ${transport_sources})
target_link_libraries(telvofm-printer PRIVATE virtual_printer_device telvofm_warnings Threads::Threads)
target_compile_definitions(telvofm-printer PRIVATE TELVOFM_VERSION_TEXT="${PROJECT_VERSION}")
if(WIN32)
    target_link_libraries(telvofm-printer PRIVATE ws2_32 mswsock)
endif()
