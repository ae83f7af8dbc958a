# The installed program and its Debian package (make package): the two programs in bin, the
# shipped libraries and tips in share/quench (copied into the user's configuration directory on
# first start), the desktop entry, icon, MIME type and AppStream metadata, and the man page.
include(GNUInstallDirs)

set(QUENCH_DESKTOP_DIR ${PROJECT_SOURCE_DIR}/data/desktop)
set(QUENCH_APP_ID org.quench.Quench)

# The tips lie beside the programs in the build tree too, as the shipped libraries do.
configure_file(${PROJECT_SOURCE_DIR}/data/TIPOFDAY.TXT ${QUENCH_DATA_DIR}/TIPOFDAY.TXT COPYONLY)

install(TARGETS quench RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(TARGET quench-gui)
    install(TARGETS quench-gui RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
if(TARGET quench_report_pdf)
    install(TARGETS quench_report_pdf LIBRARY DESTINATION lib/quench)
endif()
install(FILES ${QUENCH_DATA_DIR}/PIPE.DAT ${QUENCH_DATA_DIR}/Pump.Dat
              ${PROJECT_SOURCE_DIR}/data/TIPOFDAY.TXT
        DESTINATION ${CMAKE_INSTALL_DATADIR}/quench)
install(FILES ${QUENCH_DESKTOP_DIR}/${QUENCH_APP_ID}.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${QUENCH_DESKTOP_DIR}/${QUENCH_APP_ID}.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${QUENCH_DESKTOP_DIR}/${QUENCH_APP_ID}.mime.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME ${QUENCH_APP_ID}.xml)
install(FILES ${QUENCH_DESKTOP_DIR}/${QUENCH_APP_ID}.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

# The man page goes in compressed, as Debian keeps them.
set(man_page ${CMAKE_CURRENT_BINARY_DIR}/quench.1.gz)
add_custom_command(OUTPUT ${man_page}
                   COMMAND gzip -9 -n -c ${QUENCH_DESKTOP_DIR}/quench.1 > ${man_page}
                   DEPENDS ${QUENCH_DESKTOP_DIR}/quench.1
                   COMMENT "Compressing the man page")
add_custom_target(man_page ALL DEPENDS ${man_page})
install(FILES ${man_page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quench)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Quench developers <quench@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "hydraulic calculation of fire sprinkler piping systems")
string(CONCAT CPACK_PACKAGE_DESCRIPTION
       "Quench performs the hydraulic calculation of fire sprinkler piping systems after NFPA 13, "
       "in Demand or Supply mode, with automatic pipe sizing, reports and the sprinkler "
       "calculators. It has a Qt desktop program (quench-gui) and a command line (quench).")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The desktop needs a platform plugin, which no library names.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "shared-mime-info, desktop-file-utils")
set(CPACK_STRIP_FILES ON)
include(CPack)

# The desktop entry and the AppStream metadata pass the checkers of the distributions.
if(QUENCH_TESTS)
    add_test(NAME desktop_metadata
             COMMAND sh -c "desktop-file-validate \"$0\" && appstreamcli validate --no-net \"$1\""
                     ${QUENCH_DESKTOP_DIR}/${QUENCH_APP_ID}.desktop
                     ${QUENCH_DESKTOP_DIR}/${QUENCH_APP_ID}.metainfo.xml)
endif()
