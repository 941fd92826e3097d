# The licences of everything that is linked in, and the sums of all files. CPack runs it before it packs.
set(used library development tools)
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY})

# Each package of this machine whose code is in our files, the compiler's own libraries included.
set(licences ${root}/development/licences)
foreach(package IN ITEMS
        gcc-mingw-w64-x86-64-posix-runtime mingw-w64-x86-64-dev
        libcli11-dev nlohmann-json3-dev libsqlite3-dev libzint-dev)
    file(INSTALL /usr/share/doc/${package}/copyright DESTINATION ${licences} RENAME ${package}.txt)
endforeach()
file(INSTALL /usr/share/doc/libboost1.81-dev/copyright DESTINATION ${licences} RENAME libboost1.81-dev.txt)
# These speak of texts that Debian has in one place.
foreach(licence IN ITEMS Apache-2.0 GPL-2 GPL-3 LGPL-2.1)
    file(INSTALL /usr/share/common-licenses/${licence} DESTINATION ${licences}/common-licenses FOLLOW_SYMLINK_CHAIN)
endforeach()
file(INSTALL ${CPACK_TELVOFM_PACKAGING}/../LICENSE DESTINATION ${licences} RENAME telvofm.txt)
file(INSTALL ${CPACK_TELVOFM_PACKAGING}/windows/licences.md DESTINATION ${licences} RENAME README.md)

file(GLOB programs ${root}/tools/bin/*.exe)
foreach(program IN LISTS programs)
    execute_process(COMMAND ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=0 ${CPACK_TELVOFM_STRIP} ${program}
        COMMAND_ERROR_IS_FATAL ANY)
endforeach()

set(sums "")
foreach(component IN LISTS used)
    file(GLOB_RECURSE names LIST_DIRECTORIES OFF RELATIVE ${root}/${component} ${root}/${component}/*)
    foreach(name IN LISTS names)
        file(SHA256 ${root}/${component}/${name} sum)
        string(APPEND sums "${sum}  ${name}\n")
    endforeach()
endforeach()
file(WRITE ${root}/development/SHA256SUMS "${sums}")
