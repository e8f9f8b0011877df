include(CMakePackageConfigHelpers)

install(TARGETS verenwick verenwick_results EXPORT verenwickTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/verenwick)
install(EXPORT verenwickTargets NAMESPACE verenwick::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/verenwick)

if(VERENWICK_BUILD_PROGRAM)
  install(TARGETS verenwick_host RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  if(UNIX AND NOT CMAKE_CROSSCOMPILING)
    set(shell_files ${PROJECT_BINARY_DIR}/host/shell)
    install(FILES ${shell_files}/verenwick
      DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
    install(FILES ${shell_files}/_verenwick
      DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
    install(FILES ${shell_files}/verenwick.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  endif()
endif()

# Below 1.0 a minor version may change the interface.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(compatibility SameMinorVersion)
else()
  set(compatibility SameMajorVersion)
endif()
write_basic_package_version_file(${PROJECT_BINARY_DIR}/verenwickConfigVersion.cmake
  COMPATIBILITY ${compatibility})
configure_file(${CMAKE_CURRENT_LIST_DIR}/verenwickConfig.cmake.in
  ${PROJECT_BINARY_DIR}/verenwickConfig.cmake @ONLY)
install(FILES
  ${PROJECT_BINARY_DIR}/verenwickConfig.cmake ${PROJECT_BINARY_DIR}/verenwickConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/verenwick)

# The pkg-config files find their prefix from where they lie, so that an installation can be moved.
file(RELATIVE_PATH VERENWICK_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
foreach(file verenwick verenwick-results)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/${file}.pc.in ${PROJECT_BINARY_DIR}/${file}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${file}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
