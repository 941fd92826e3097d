# The simulated device: the other end of the wire, with its own decoding. Each room is a folder.
if(WIN32)
    include(${PROJECT_SOURCE_DIR}/cmake/windows_libraries.cmake)
    set(other_platform posix)
else()
    find_package(Boost 1.81 REQUIRED GLOBAL)
    find_package(SQLite3 REQUIRED)
    find_package(PNG REQUIRED)
    find_library(ZINT_LIBRARY zint REQUIRED)
    set(other_platform win32)
endif()

file(GLOB device_sources CONFIGURE_DEPENDS
    answers/*.cpp fiscal/*.cpp language/*.cpp memory/*.cpp paper/*.cpp printers/*.cpp)
list(FILTER device_sources EXCLUDE REGEX "_${other_platform}\\.cpp$")
add_library(virtual_printer_device STATIC ${device_sources})
target_include_directories(virtual_printer_device PUBLIC ${PROJECT_SOURCE_DIR})
target_compile_definitions(virtual_printer_device PUBLIC TELVOFM_VERSION_TEXT="${PROJECT_VERSION}")
target_link_libraries(virtual_printer_device
    PUBLIC Boost::headers PRIVATE SQLite::SQLite3 ${ZINT_LIBRARY} telvofm_warnings)
if(NOT WIN32)
    target_link_libraries(virtual_printer_device PRIVATE PNG::PNG)
endif()

# The same as a program: links, options, standard output.
file(GLOB transport_sources CONFIGURE_DEPENDS transport/*.cpp)
list(FILTER transport_sources EXCLUDE REGEX "_${other_platform}\\.cpp$")
add_executable(telvofm-printer main.cpp options.cpp service.cpp ${transport_sources})
target_link_libraries(telvofm-printer PRIVATE virtual_printer_device telvofm_warnings Threads::Threads)
if(WIN32)
    # What the newest functions of the platform that are used need.
    target_compile_definitions(telvofm-printer PRIVATE _WIN32_WINNT=0x0A00)
    target_link_libraries(telvofm-printer PRIVATE ws2_32 mswsock)
endif()
