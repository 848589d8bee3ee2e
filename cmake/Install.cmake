# Where everything goes with "cmake --install". packaging/files.txt lists what comes out, and packaging/check compares.

include(GNUInstallDirs)

if(WALRIM_QT)
  install(TARGETS walrim walrim-cli walrim-receiver RUNTIME)
endif()

set(share ${PROJECT_SOURCE_DIR}/share)
set(documents ${CMAKE_INSTALL_DATADIR}/doc/walrim)
install(FILES ${share}/walrim.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${share}/walrim.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(DIRECTORY ${share}/metainfo ${share}/bash-completion ${share}/mime DESTINATION ${CMAKE_INSTALL_DATADIR})
install(DIRECTORY ${share}/man/ DESTINATION ${CMAKE_INSTALL_MANDIR})

# The documents that the man pages point to.
install(DIRECTORY ${share}/examples DESTINATION ${documents})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/formats DESTINATION ${documents})
install(FILES ${PROJECT_SOURCE_DIR}/docs/automation.md ${PROJECT_SOURCE_DIR}/docs/faults.md
              ${PROJECT_SOURCE_DIR}/docs/links.md ${PROJECT_SOURCE_DIR}/docs/map.md
              ${PROJECT_SOURCE_DIR}/packaging/copyright ${PROJECT_SOURCE_DIR}/packaging/changelog
        DESTINATION ${documents})

include(${PROJECT_SOURCE_DIR}/packaging/Package.cmake)
