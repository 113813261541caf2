# Installation and the Debian package: `cpack -G DEB` in the build folder makes kx410_<version>_<arch>.deb
# with the station (desktop entry and icon), kx410ctl, kx410-panelsim, the service kx410d with its
# systemd unit once they are part of the tree, and the documents.
include(GNUInstallDirs)

foreach(_program kx410-station kx410ctl kx410-panelsim kx410d)
    if(TARGET ${_program})
        install(TARGETS ${_program} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    endif()
endforeach()

if(TARGET kx410-station)
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/kx410-station.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/kx410.svg
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endif()

# The service's unit, wherever the service keeps it; systemd looks in /lib/systemd/system on Debian 12.
file(GLOB _units ${PROJECT_SOURCE_DIR}/packaging/*.service ${PROJECT_SOURCE_DIR}/src/service/*.service)
if(_units AND TARGET kx410d)
    install(FILES ${_units} DESTINATION lib/systemd/system)
endif()

file(GLOB _docs ${PROJECT_SOURCE_DIR}/docs/*.md)
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${_docs} DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kx410)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "KX-410 station developers <kx410@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Management station for KX-410 access-control panels")
set(CPACK_PACKAGE_DESCRIPTION
    "Keeps a site's people, cards, access groups, time groups, calendars and panels in one database
(SQLite, or PostgreSQL for several stations), sends them to KX-410 panels over the network, fetches
and watches their passage records, and reports on attendance and access. Includes the command line
kx410ctl and the panel simulator kx410-panelsim.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The libraries the programs link are found by dpkg-shlibdeps; Qt's plugins are loaded at run time
# and named here: the SQLite driver always, the PostgreSQL driver and pg_dump for a shared database.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libqt6sql6-psql, postgresql-client, fonts-dejavu-core")
set(CPACK_STRIP_FILES ON)
include(CPack)
