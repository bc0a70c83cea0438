# What is installed where, and the Debian package. scripts/package.sh makes that from the preset "package".

include(GNUInstallDirs)
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(packaged ${PROJECT_BINARY_DIR}/packaging)

install(TARGETS veltrix veltrix-ctl veltrix-map veltrix-replay veltrix-storm SndInput Bmp2Png RUNTIME)

# veltrix_gzip(TARGET FOLDER file...): compressed copies in FOLDER of `packaged`, the same bytes from each build.
find_program(GZIP_PROGRAM gzip REQUIRED)
function(veltrix_gzip target folder)
  foreach(file IN LISTS ARGN)
    cmake_path(GET file FILENAME name)
    if(name STREQUAL "CHANGELOG.md")
      set(name changelog)
    endif()
    set(result ${packaged}/${folder}/${name}.gz)
    add_custom_command(OUTPUT ${result}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${packaged}/${folder}
      COMMAND ${GZIP_PROGRAM} -9nc ${file} > ${result}
      DEPENDS ${file} VERBATIM)
    list(APPEND results ${result})
  endforeach()
  add_custom_target(${target} ALL DEPENDS ${results})
endfunction()

file(GLOB man_pages CONFIGURE_DEPENDS ${packaging}/man/*.1)
veltrix_gzip(veltrix_man man ${man_pages})
install(DIRECTORY ${packaged}/man/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
veltrix_gzip(veltrix_changelogs doc ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${packaging}/debian/changelog.Debian)
install(DIRECTORY ${packaged}/doc/ DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${packaging}/debian/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs ${packaging}/examples DESTINATION ${CMAKE_INSTALL_DOCDIR}
  USE_SOURCE_PERMISSIONS)

install(FILES ${packaging}/desktop/veltrix.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${packaging}/desktop/org.veltrix.veltrix.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${PROJECT_SOURCE_DIR}/resources/pictures/icon.png
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps RENAME veltrix.png)

# veltrix_unit(UNIT NAME STATE SETTINGS RUNTIME): a unit of systemd. STATE is its folder in /var/lib, SETTINGS its file in
# /etc/veltrix, RUNTIME its folder in /run and its file in /etc/default.
function(veltrix_unit unit VELTRIX_UNIT_NAME VELTRIX_UNIT_STATE VELTRIX_UNIT_SETTINGS VELTRIX_UNIT_RUNTIME)
  configure_file(${packaging}/systemd/veltrix.service.in ${packaged}/${unit} @ONLY)
  install(FILES ${packaged}/${unit} DESTINATION lib/systemd/system)
endfunction()
veltrix_unit(veltrix.service "" veltrix veltrix veltrix)
veltrix_unit(veltrix@.service " %i" veltrix/%i %i veltrix-%i)

install(FILES ${packaging}/systemd/veltrix.ini DESTINATION ${CMAKE_INSTALL_DATADIR}/veltrix)
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  install(FILES ${packaging}/systemd/veltrix.default DESTINATION /etc/default RENAME veltrix)
  install(FILES ${packaging}/debian/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
    RENAME veltrix)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_SET_DESTDIR ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_NAME veltrix)
set(CPACK_PACKAGE_VENDOR "Veltrix founders")
set(CPACK_PACKAGE_CONTACT "Veltrix founders <veltrix@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "lightning-observation station for amateurs")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Two crossed loop antennas feed a sound card. Veltrix finds the radio pulse of
each lightning stroke in the sound, computes its bearing and strength, logs it
and shows it on a polar display. Stations connect to each other, exchange what
they hear, and plot the places of the strikes on a map.
.
The package starts a station without a window as the service veltrix; the
program of the desktop's menu runs one with a window.")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION hamradio)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "adduser")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "alsa-utils, systemd-timesyncd | time-daemon")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "curl, libasound2-plugins, libnotify-bin, qt6-wayland, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
  ${packaging}/debian/postinst ${packaging}/debian/prerm ${packaging}/debian/postrm ${packaging}/debian/conffiles)
include(CPack)
