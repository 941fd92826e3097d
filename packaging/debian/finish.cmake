# What each .deb must hold beside its files, and in the form that Debian wants: copyright, changelog, packed manual
# pages, programs that look for the library in the system's folders only. CPack runs it before it packs.
set(ENV{DESTDIR}) # CPack has installed into it, and file(INSTALL) would
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} capitals)
    set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}/usr)
    set(documentation ${root}/share/doc/${CPACK_DEBIAN_${capitals}_PACKAGE_NAME})
    file(INSTALL ${CPACK_TELVOFM_PACKAGING}/debian/copyright DESTINATION ${documentation})
    file(INSTALL ${CPACK_TELVOFM_PACKAGING}/debian/changelog DESTINATION ${documentation} RENAME changelog.Debian)
    file(GLOB manual_pages ${root}/share/man/man*/*.[0-9])
    execute_process(COMMAND gzip --best --no-name --force ${documentation}/changelog.Debian ${manual_pages}
        COMMAND_ERROR_IS_FATAL ANY)
    file(GLOB programs ${root}/bin/*)
    foreach(program IN LISTS programs)
        file(RPATH_REMOVE FILE ${program})
    endforeach()
endforeach()
