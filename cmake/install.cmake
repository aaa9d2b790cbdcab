# What is installed: Runtime is what a program needs to run, Development what is needed to build one. A shared and a
# static library can be installed side by side, from two builds.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(kord_config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/kord)
if(BUILD_SHARED_LIBS)
  set(kord_kind shared)
else()
  set(kord_kind static)
endif()

install(TARGETS kord EXPORT kord-${kord_kind}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/kord DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT Development)
if(WIN32 AND BUILD_SHARED_LIBS)
  install(FILES ${KORD_RUN_TIME_LIBRARIES} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime)
endif()

# find_package(kord)
install(EXPORT kord-${kord_kind} NAMESPACE kord:: DESTINATION ${kord_config_dir} COMPONENT Development)
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(kord_compatibility SameMinorVersion)
else()
  set(kord_compatibility SameMajorVersion)
endif()
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kord-config-version.cmake COMPATIBILITY ${kord_compatibility})
install(FILES cmake/kord-config.cmake ${PROJECT_BINARY_DIR}/kord-config-version.cmake
  DESTINATION ${kord_config_dir} COMPONENT Development)

# pkg-config kord. A folder that was given relative to the prefix is told relative to the file, so that the whole can be
# moved; an absolute one is told as it is.
function(kord_folder_for_pkg_config variable folder)
  if(IS_ABSOLUTE ${folder})
    string(REPLACE " " "\\ " folder ${folder})
    set(${variable} ${folder} PARENT_SCOPE)
  else()
    set(${variable} "\${prefix}/${folder}" PARENT_SCOPE)
  endif()
endfunction()
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
  string(REPLACE " " "\\ " prefix ${CMAKE_INSTALL_PREFIX})
else()
  file(RELATIVE_PATH prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  string(REGEX REPLACE "/$" "" prefix "\${pcfiledir}/${prefix}")
endif()
kord_folder_for_pkg_config(libdir ${CMAKE_INSTALL_LIBDIR})
kord_folder_for_pkg_config(includedir ${CMAKE_INSTALL_INCLUDEDIR})
set(definitions)
if(WIN32 AND NOT BUILD_SHARED_LIBS) # elsewhere one file serves both
  set(definitions " -DKORD_STATIC")
endif()
configure_file(cmake/kord.pc.in ${PROJECT_BINARY_DIR}/kord.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kord.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
