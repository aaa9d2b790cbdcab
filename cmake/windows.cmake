# Windows looks for a program's libraries in the folder of the program, so that all of them stand in one.
if(NOT CMAKE_RUNTIME_OUTPUT_DIRECTORY)
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endif()

# The compiler's run time is a shared one: exceptions pass from the library to programs only if both use the same. Its
# files come with debug information, ten times their size.
set(KORD_RUN_TIME_LIBRARIES)
foreach(name libgcc_s_dw2-1.dll libstdc++-6.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name} OUTPUT_VARIABLE file
    OUTPUT_STRIP_TRAILING_WHITESPACE)
  set(copy ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name})
  if(EXISTS "${file}")
    file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    execute_process(COMMAND ${CMAKE_STRIP} --strip-debug -o ${copy} ${file} COMMAND_ERROR_IS_FATAL ANY)
    list(APPEND KORD_RUN_TIME_LIBRARIES ${copy})
  endif()
endforeach()

# kord.dll with its entry and its version, exporting what the list says.
enable_language(RC)
function(kord_windows_library target)
  configure_file(cmake/kord.rc.in ${PROJECT_BINARY_DIR}/kord.rc @ONLY)
  target_sources(${target} PRIVATE core/entry.cpp cmake/kord.def ${PROJECT_BINARY_DIR}/kord.rc)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
  kord_warnings(${target})
  set_target_properties(${target} PROPERTIES PREFIX "")
endfunction()
