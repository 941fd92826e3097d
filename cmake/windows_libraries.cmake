# SQLite and zint for Windows, built from the sources that scripts/windows-sources has fetched.
set(TELVOFM_WINDOWS_SOURCES ${PROJECT_SOURCE_DIR}/build/windows-sources CACHE PATH
    "Where scripts/windows-sources has put the sources")
if(NOT EXISTS ${TELVOFM_WINDOWS_SOURCES}/whole)
    message(FATAL_ERROR "The sources of SQLite and zint are missing, with which the virtual printer for Windows is "
        "built; run scripts/windows-sources build/windows-sources, or leave the printer out with "
        "-DTELVOFM_BUILD_PRINTER=OFF")
endif()

# One thread uses each database, nothing is loaded into it, and nobody asks it about itself.
add_library(sqlite3_for_windows STATIC ${TELVOFM_WINDOWS_SOURCES}/sqlite3/sqlite3.c)
target_include_directories(sqlite3_for_windows SYSTEM PUBLIC ${TELVOFM_WINDOWS_SOURCES}/sqlite3)
target_compile_definitions(sqlite3_for_windows PRIVATE
    SQLITE_THREADSAFE=0
    SQLITE_DEFAULT_MEMSTATUS=0
    SQLITE_OMIT_AUTHORIZATION
    SQLITE_OMIT_DEPRECATED
    SQLITE_OMIT_JSON
    SQLITE_OMIT_LOAD_EXTENSION
    SQLITE_OMIT_PROGRESS_CALLBACK
    SQLITE_OMIT_SHARED_CACHE
    SQLITE_OMIT_TRACE)
# One file of a quarter of a million lines: the third level of optimisation takes a minute longer than the first.
target_compile_options(sqlite3_for_windows PRIVATE "$<$<CONFIG:Release>:-O1>")
add_library(SQLite::SQLite3 ALIAS sqlite3_for_windows)

# Only codes of a few hundred modules are drawn with it.
file(GLOB zint_sources ${TELVOFM_WINDOWS_SOURCES}/zint/*.c)
list(FILTER zint_sources EXCLUDE REGEX "/dllversion\\.c$|/png\\.c$")
add_library(zint_for_windows STATIC ${zint_sources})
target_include_directories(zint_for_windows SYSTEM PUBLIC ${TELVOFM_WINDOWS_SOURCES}/zint)
target_compile_definitions(zint_for_windows PRIVATE NO_PNG)
telvofm_compile_quickly(zint_for_windows)
set(ZINT_LIBRARY zint_for_windows)

add_library(windows_headers INTERFACE)
target_include_directories(windows_headers SYSTEM INTERFACE ${TELVOFM_WINDOWS_SOURCES}/include)
add_library(Boost::headers ALIAS windows_headers)
