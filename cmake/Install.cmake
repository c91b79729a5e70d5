# Headers, both forms of the library, modules, resources, the CMake package and the pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS fexora fexora_static EXPORT fexora-targets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS fexora_loop fexora_text fexora_xml fexora_net
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/fexora)
install(DIRECTORY fexora/resources/ DESTINATION ${CMAKE_INSTALL_LIBDIR}/fexora/resources
        FILES_MATCHING PATTERN "*.plist")
install(DIRECTORY fexora DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h"
        PATTERN "modules" EXCLUDE)

install(FILES packaging/man/fexora.1 packaging/man/fexora-publish.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES packaging/completions/fexora.bash RENAME fexora
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES packaging/completions/_fexora DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
install(FILES packaging/completions/fexora.fish
        DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
install(FILES packaging/nginx/fexora-rates.conf DESTINATION ${CMAKE_INSTALL_DATADIR}/fexora/nginx)
install(PROGRAMS packaging/nginx/fexora-rates-update DESTINATION ${CMAKE_INSTALL_BINDIR})

install(EXPORT fexora-targets NAMESPACE fexora:: FILE fexora-targets.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/fexora)
configure_package_config_file(cmake/fexora-config.cmake.in ${CMAKE_BINARY_DIR}/fexora-config.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/fexora)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/fexora-config-version.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/fexora-config.cmake
              ${CMAKE_BINARY_DIR}/fexora-config-version.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/fexora)

# Relative, so that the tree may be moved or installed under another prefix than was configured.
file(RELATIVE_PATH fexora_pc_to_prefix "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(cmake/fexora.pc.in ${CMAKE_BINARY_DIR}/fexora.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/fexora.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
