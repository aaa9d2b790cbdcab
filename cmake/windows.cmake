# Windows looks for a program's libraries in the folder of the program, so that all of them stand in one.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

# The compiler's run time is a shared one: exceptions pass from the library to programs only if both use the same.
foreach(name libgcc_s_dw2-1.dll libstdc++-6.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name} OUTPUT_VARIABLE file
    OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(EXISTS "${file}")
    file(COPY ${file} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  endif()
endforeach()

# kord.dll with its entry, exporting what the list says.
function(kord_windows_library target)
  target_sources(${target} PRIVATE core/entry.cpp cmake/kord.def)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
  kord_warnings(${target})
  set_target_properties(${target} PROPERTIES PREFIX "")
endfunction()
