# What makes the program part of a desktop. Everything else is installed by the rules beside it.
if(TARGET vantrel)
  install(TARGETS vantrel RUNTIME)
endif()

set(VANTREL_SYSTEMD_USER_UNIT_DIR lib/systemd/user CACHE STRING "Where systemd looks for units of users' sessions")

# Files that name the program's place, because a prefix such as /opt/vantrel is in nobody's PATH. Filled in when they
# are installed, for "cmake --install --prefix" may name another prefix than the build.
function(vantrel_install_with_program_place template destination)
  cmake_path(GET template STEM LAST_ONLY name)
  set(filled ${PROJECT_BINARY_DIR}/data/${name})
  install(CODE "
    set(VANTREL_PROGRAM \"${CMAKE_INSTALL_BINDIR}/vantrel\")
    cmake_path(ABSOLUTE_PATH VANTREL_PROGRAM BASE_DIRECTORY \"\${CMAKE_INSTALL_PREFIX}\" NORMALIZE)
    configure_file(\"${PROJECT_SOURCE_DIR}/data/${template}\" \"${filled}\" @ONLY)")
  install(FILES ${filled} DESTINATION ${destination})
endfunction()
vantrel_install_with_program_place(
  applications/org.vantrel.Vantrel.desktop.in ${CMAKE_INSTALL_DATADIR}/applications)
vantrel_install_with_program_place(dbus/org.vantrel.Vantrel.service.in ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
vantrel_install_with_program_place(systemd/vantrel.service.in ${VANTREL_SYSTEMD_USER_UNIT_DIR})

install(FILES data/metainfo/org.vantrel.Vantrel.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES data/man/vantrel.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(PROGRAMS data/xkb/caps-lock-hyper DESTINATION ${CMAKE_INSTALL_DATADIR}/vantrel)
install(DIRECTORY data/xkb/rules data/xkb/symbols DESTINATION ${CMAKE_INSTALL_DATADIR}/vantrel)
if(VANTREL_WAYLAND)
  # Where GNOME Shell looks for extensions, with a prefix that XDG_DATA_DIRS knows.
  install(DIRECTORY extensions/gnome-shell/vantrel@vantrel.org
    DESTINATION ${CMAKE_INSTALL_DATADIR}/gnome-shell/extensions)
endif()
