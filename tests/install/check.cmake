# Installs the library, or takes its sources, and builds and runs a user's program with it. Called as
# cmake -DHOW=... -DBUILD=... -P check.cmake, with what tests/install/CMakeLists.txt passes besides.
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE ${WORK})
unset(ENV{DESTDIR})

function(must)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Runs a program, which is to print the version.
function(prints_version)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE printed OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  if(NOT printed STREQUAL VERSION)
    message(FATAL_ERROR "${ARGN} printed '${printed}', not '${VERSION}'")
  endif()
endfunction()

# Configures the consumer in a folder of its own, with options; the variable `result` says whether that went well.
function(configure folder)
  execute_process(COMMAND ${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/consumer -B ${WORK}/${folder} -G ${GENERATOR}
    -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS} -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}
    -DCMAKE_BUILD_TYPE=Debug -DCMAKE_RUNTIME_OUTPUT_DIRECTORY=${WORK}/bin ${ARGN}
    OUTPUT_VARIABLE log ERROR_VARIABLE log RESULT_VARIABLE result)
  set(log "${log}" PARENT_SCOPE)
  set(result ${result} PARENT_SCOPE)
endfunction()

function(configure_and_run)
  configure(build ${ARGN})
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${log}")
  endif()
  must(${CMAKE_COMMAND} --build ${WORK}/build)
  prints_version(${EMULATOR} ${WORK}/bin/consumer${SUFFIX})
endfunction()

# What a component installed, as one line of names below the prefix.
function(installed variable root)
  file(GLOB_RECURSE files LIST_DIRECTORIES false RELATIVE ${root} ${root}/*)
  list(FILTER files EXCLUDE REGEX "^include/kord/")
  list(SORT files)
  string(REPLACE ";" " " files "${files}")
  set(${variable} "${files}" PARENT_SCOPE)
endfunction()

# Each component alone, the files that it must consist of, and then both.
if(HOW STREQUAL install)
  file(REMOVE_RECURSE ${PREFIX})
  foreach(component Runtime Development)
    file(MAKE_DIRECTORY ${WORK}/${component}) # a static library has no run time
    must(${CMAKE_COMMAND} --install ${BUILD} --config ${CONFIG} --prefix ${WORK}/${component}
      --component ${component})
    installed(found ${WORK}/${component})
    if(NOT found STREQUAL EXPECTED_${component})
      message(FATAL_ERROR "${component} is\n${found}\nnot\n${EXPECTED_${component}}")
    endif()
    file(COPY ${WORK}/${component}/ DESTINATION ${PREFIX})
  endforeach()
  file(GLOB headers RELATIVE ${PREFIX}/include/kord ${PREFIX}/include/kord/*)
  file(GLOB sources RELATIVE ${SOURCE}/include/kord ${SOURCE}/include/kord/*)
  if(NOT headers STREQUAL sources OR EXISTS ${WORK}/Runtime/include)
    message(FATAL_ERROR "installed ${headers}")
  endif()

elseif(HOW STREQUAL find_package)
  file(GLOB libraries ${PREFIX}/bin/*.dll) # Windows looks for them beside the program
  file(COPY ${libraries} DESTINATION ${WORK}/bin)
  set(installed -DCMAKE_PREFIX_PATH=${PREFIX} -DCMAKE_FIND_ROOT_PATH=${PREFIX})
  configure_and_run(${installed} -DKORD_KIND=${KIND} -DKORD_VERSION=${VERSION})
  foreach(wrong -DKORD_VERSION=99 -DKORD_VERSION=0.0 -DKORD_KIND=nonsense)
    configure(refused ${installed} ${wrong})
    if(result EQUAL 0)
      message(FATAL_ERROR "found a package with ${wrong}")
    endif()
  endforeach()

elseif(HOW MATCHES pkg_config)
  set(ENV{PKG_CONFIG_PATH} ${LIBRARIES}/pkgconfig)
  execute_process(COMMAND ${PKG_CONFIG} --cflags --libs kord OUTPUT_VARIABLE options COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(options UNIX_COMMAND "${FLAGS} ${options}")
  file(MAKE_DIRECTORY ${WORK})
  must(${COMPILER} -std=c++17 ${CMAKE_CURRENT_LIST_DIR}/consumer/main.cpp -o ${WORK}/consumer ${options})
  prints_version(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${LIBRARIES} ${WORK}/consumer)

elseif(HOW STREQUAL add_subdirectory)
  configure_and_run(-DKORD_SOURCE=${SOURCE} -DKORD_INSTALL=ON -DBUILD_SHARED_LIBS=${SHARED}
    -DCMAKE_INSTALL_PREFIX=${WORK}/installed -DCMAKE_INSTALL_LIBDIR=${WORK}/libraries)
  must(${CMAKE_COMMAND} --install ${WORK}/build)
endif()
