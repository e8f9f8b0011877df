include(CMakePackageConfigHelpers)

install(TARGETS verenwick EXPORT verenwickTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS verenwick_host RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(UNIX AND NOT CMAKE_CROSSCOMPILING)
  set(shell_files ${PROJECT_BINARY_DIR}/host/shell)
  install(FILES ${shell_files}/verenwick
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES ${shell_files}/_verenwick DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
  install(FILES ${shell_files}/verenwick.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()
install(EXPORT verenwickTargets NAMESPACE verenwick::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/verenwick)

write_basic_package_version_file(${PROJECT_BINARY_DIR}/verenwickConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
configure_file(${CMAKE_CURRENT_LIST_DIR}/verenwickConfig.cmake.in
  ${PROJECT_BINARY_DIR}/verenwickConfig.cmake @ONLY)
install(FILES
  ${PROJECT_BINARY_DIR}/verenwickConfig.cmake ${PROJECT_BINARY_DIR}/verenwickConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/verenwick)

# The pkg-config file finds its prefix from where it lies, so that an installation can be moved.
file(RELATIVE_PATH VERENWICK_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${CMAKE_CURRENT_LIST_DIR}/verenwick.pc.in ${PROJECT_BINARY_DIR}/verenwick.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/verenwick.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
