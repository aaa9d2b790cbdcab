# GoogleTest as installed or, for a target or a standard library that the installed one was not built for, from the
# installed sources.
set(KORD_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "GoogleTest's sources, for other targets than the machine's")
if(NOT CMAKE_CXX_FLAGS MATCHES "-stdlib=libc\\+\\+")
  find_package(GTest CONFIG QUIET)
endif()
if(NOT GTest_FOUND AND EXISTS ${KORD_GOOGLETEST_SOURCE}/CMakeLists.txt)
  set(INSTALL_GTEST OFF)
  set(BUILD_GMOCK OFF)
  set(gtest_force_shared_crt ON)
  # Its libraries are always static: what BUILD_SHARED_LIBS says is about this one.
  function(kord_add_googletest)
    set(BUILD_SHARED_LIBS OFF)
    add_subdirectory(${KORD_GOOGLETEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
  endfunction()
  kord_add_googletest()
endif()
