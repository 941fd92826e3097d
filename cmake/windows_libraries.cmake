# SQLite and zint for Windows, built from the sources that scripts/windows-sources has fetched.
set(TELVOFM_WINDOWS_SOURCES ${PROJECT_SOURCE_DIR}/build/windows-sources CACHE PATH
    "Where scripts/windows-sources has put the sources")
if(NOT EXISTS ${TELVOFM_WINDOWS_SOURCES}/whole)
    message(FATAL_ERROR "The sources for Windows are missing; run scripts/windows-sources build/windows-sources")
endif()

# One thread uses each database, and nothing is loaded into it.
add_library(sqlite3_for_windows STATIC ${TELVOFM_WINDOWS_SOURCES}/amalgamation/sqlite3.c)
target_include_directories(sqlite3_for_windows SYSTEM PUBLIC ${TELVOFM_WINDOWS_SOURCES}/amalgamation)
target_compile_definitions(sqlite3_for_windows PRIVATE SQLITE_THREADSAFE=0 SQLITE_OMIT_LOAD_EXTENSION)
add_library(SQLite::SQLite3 ALIAS sqlite3_for_windows)

file(GLOB zint_sources ${TELVOFM_WINDOWS_SOURCES}/zint/backend/*.c)
list(FILTER zint_sources EXCLUDE REGEX "/dllversion\\.c$|/png\\.c$")
add_library(zint_for_windows STATIC ${zint_sources})
target_include_directories(zint_for_windows SYSTEM PUBLIC ${TELVOFM_WINDOWS_SOURCES}/zint/backend)
target_compile_definitions(zint_for_windows PRIVATE ZINT_NO_PNG ZINT_VERSION="2.11.1")
set(ZINT_LIBRARY zint_for_windows)

add_library(windows_headers INTERFACE)
target_include_directories(windows_headers SYSTEM INTERFACE ${TELVOFM_WINDOWS_SOURCES}/include)
add_library(Boost::headers ALIAS windows_headers)
