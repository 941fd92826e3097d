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
