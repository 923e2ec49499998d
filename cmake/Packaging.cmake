# What is installed, and the Debian package made of it. Build the target `installation`
# first, which is no part of `all`; scripts/package does that and the rest.
include(GNUInstallDirs)

set(NETTLECAP_LICENSE LicenseRef-proprietary)
set(NETTLECAP_VENDOR Nettlecap)
# Packages must name somebody; nobody can own a name under "example" (RFC 2606).
set(NETTLECAP_MAINTAINER "${NETTLECAP_VENDOR} <maintainers@nettlecap.example>")
set(id com.nettlecap.Nettlecap)

# A package says when its sources changed, not when it was built.
execute_process(COMMAND git -C ${PROJECT_SOURCE_DIR} log -1 --format=%ct
  OUTPUT_VARIABLE changed OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
if(changed AND NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  set(ENV{SOURCE_DATE_EPOCH} ${changed})
endif()
string(TIMESTAMP NETTLECAP_DATE "%Y-%m-%d" UTC)
string(TIMESTAMP NETTLECAP_MAIL_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)

set(made ${PROJECT_BINARY_DIR}/installation)
foreach(template ${id}.service ${id}.metainfo.xml Info.plist nettlecap.1 changelog copyright)
  configure_file(${PROJECT_SOURCE_DIR}/data/${template}.in ${made}/${template} @ONLY)
endforeach()
set(compressed)
foreach(text nettlecap.1 changelog)
  add_custom_command(OUTPUT ${made}/${text}.gz
    COMMAND gzip --best --no-name --keep --force ${made}/${text} DEPENDS ${made}/${text})
  list(APPEND compressed ${made}/${text}.gz)
endforeach()

find_package(Qt6 6.4 REQUIRED COMPONENTS Gui Svg)
set(drawing ${PROJECT_SOURCE_DIR}/src/ui/symbols/Nettlecap.svg)
add_executable(drawIcons EXCLUDE_FROM_ALL ${PROJECT_SOURCE_DIR}/data/drawIcons.cpp)
target_link_libraries(drawIcons PRIVATE Qt6::Gui Qt6::Svg nettlecap_warnings)
add_custom_command(OUTPUT ${made}/icons/${id}.icns
  COMMAND drawIcons ${drawing} ${made}/icons ${id} DEPENDS drawIcons ${drawing})

add_custom_target(installation DEPENDS ${made}/icons/${id}.icns ${compressed})
add_dependencies(installation nettlecap)

set(data ${CMAKE_INSTALL_DATADIR})
install(TARGETS nettlecap RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${PROJECT_SOURCE_DIR}/data/${id}.desktop DESTINATION ${data}/applications)
install(FILES ${made}/${id}.service DESTINATION ${data}/dbus-1/services)
install(FILES ${made}/${id}.metainfo.xml DESTINATION ${data}/metainfo)
install(FILES ${made}/Info.plist DESTINATION ${data}/nettlecap)
install(FILES ${made}/icons/${id}.icns DESTINATION ${data}/nettlecap RENAME Nettlecap.icns)
install(DIRECTORY ${made}/icons/ DESTINATION ${data}/icons/hicolor FILES_MATCHING PATTERN *.png)
install(FILES ${drawing} DESTINATION ${data}/icons/hicolor/scalable/apps RENAME ${id}.svg)
install(FILES ${made}/nettlecap.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${made}/changelog.gz ${made}/copyright DESTINATION ${data}/doc/nettlecap)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME nettlecap)
set(CPACK_PACKAGE_VENDOR ${NETTLECAP_VENDOR})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_SOURCE_DIR}/build/package)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "history of what was copied to the clipboard")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Nettlecap keeps a history of the texts and pictures that are copied on an
X11 desktop, each with the name of the program it came from. Stepping back
through them with a key and letting go pastes the chosen one.")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${NETTLECAP_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SECTION x11)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Of what the program needs this sees the libraries; it loads the rest while it runs.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
  "qml6-module-qtquick, qml6-module-qtqml-workerscript, qt6-image-formats-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "default-dbus-session-bus | dbus-session-bus, fonts-dejavu-core, fonts-noto-color-emoji, packagekit, xdg-utils")
# It shows what became of a search for updates; every desktop brings one.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "notification-daemon")
include(CPack)
