# Headers, both forms of the library, modules, resources, the CMake package, the pkg-config file,
# manual pages, completions and documents; and a target that takes it all away again.
include(CMakePackageConfigHelpers)
include(cmake/PublicHeaders.cmake)

set(private_folder ${CMAKE_INSTALL_LIBDIR}/${FEXORA_PRIVATE_FOLDER})
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/fexora)

install(TARGETS fexora EXPORT fexora-targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS fexora_static EXPORT fexora-static-targets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS fexora_loop fexora_text fexora_xml fexora_net fexora_history
        LIBRARY DESTINATION ${private_folder})
install(FILES fexora/resources/Currency.plist DESTINATION ${private_folder}/resources)

# What a host reaches from the one header, and nothing else.
public_headers(fexora/fexora.h headers)
foreach(header IN LISTS headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder})
endforeach()

if(FEXORA_PROGRAMS)
  install(TARGETS fexora_program fexora_publish RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(TARGETS fexora_sources LIBRARY DESTINATION ${private_folder})
  install(TARGETS fexora_search RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR})
  install(FILES ${PROJECT_BINARY_DIR}/programs/search/org.fexora.Search.service
          DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
  install(FILES packaging/search/org.fexora.Search.search-provider.ini
          DESTINATION ${CMAKE_INSTALL_DATADIR}/gnome-shell/search-providers)
  install(FILES packaging/search/org.fexora.Search.desktop
          DESTINATION ${CMAKE_INSTALL_DATADIR}/krunner/dbusplugins)
  install(FILES packaging/man/fexora.1 packaging/man/fexora-publish.1
                packaging/man/fexora-rates-update.1 packaging/man/fexora-search.1
          DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES packaging/completions/fexora.bash RENAME fexora
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES packaging/completions/_fexora DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
  install(FILES packaging/completions/fexora.fish
          DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
  install(FILES packaging/systemd/fexora-refresh.service packaging/systemd/fexora-refresh.timer
          DESTINATION lib/systemd/user)
  install(FILES packaging/nginx/fexora-rates.conf DESTINATION ${CMAKE_INSTALL_DATADIR}/fexora/nginx)
  install(PROGRAMS packaging/nginx/fexora-rates-update DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
if(FEXORA_PROGRAMS AND FEXORA_HAS_DESKTOP)
  install(TARGETS fexora_converter fexora_today RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES packaging/desktop/org.fexora.Fexora.desktop packaging/desktop/org.fexora.Today.desktop
          DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES packaging/desktop/org.fexora.Fexora.metainfo.xml
          DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(FILES packaging/icons/org.fexora.Fexora.svg
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  install(FILES packaging/icons/org.fexora.Fexora-symbolic.svg
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/symbolic/apps)
  foreach(name Fexora Today)
    set(service ${PROJECT_BINARY_DIR}/package/org.fexora.${name}.service)
    configure_file(packaging/desktop/org.fexora.${name}.service.in ${service} @ONLY)
    install(FILES ${service} DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
  endforeach()
  install(FILES packaging/man/fexora-converter.1 packaging/man/fexora-today.1
          DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()
# As they lie in the tree, since they name each other.
file(GLOB documents CONFIGURE_DEPENDS *.md)
install(FILES LICENSE ${documents} DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} USE_SOURCE_PERMISSIONS)

if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(compatibility SameMinorVersion)
else()
  set(compatibility SameMajorVersion)
endif()
install(EXPORT fexora-targets NAMESPACE fexora:: DESTINATION ${package_folder})
install(EXPORT fexora-static-targets NAMESPACE fexora:: DESTINATION ${package_folder})
# Not where find_package looks when the build's folder stands in PATH: nothing there is installed.
set(generated ${PROJECT_BINARY_DIR}/package)
configure_package_config_file(cmake/fexora-config.cmake.in ${generated}/fexora-config.cmake
                              INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${generated}/fexora-config-version.cmake
                                 COMPATIBILITY ${compatibility})
install(FILES ${generated}/fexora-config.cmake
              ${generated}/fexora-config-version.cmake
        DESTINATION ${package_folder})

# Relative, so that the tree may be moved or installed under another prefix than was configured.
file(RELATIVE_PATH fexora_pc_to_prefix "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(cmake/fexora.pc.in ${generated}/fexora.pc @ONLY)
install(FILES ${generated}/fexora.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(PROJECT_IS_TOP_LEVEL)
  add_custom_target(uninstall COMMAND ${CMAKE_COMMAND} -P ${PROJECT_SOURCE_DIR}/cmake/Uninstall.cmake
                    COMMENT "Taking away what the last installation of this build put in place")
endif()
