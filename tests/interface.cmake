# The interface as users meet it: what their compilers make of the headers, and what the library exports and needs.

# Every public header alone, and a program that uses everything, in each standard that users may have.
file(GLOB headers RELATIVE ${PROJECT_SOURCE_DIR}/include CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/kord/*.h)
foreach(header IN LISTS headers)
  string(MAKE_C_IDENTIFIER ${header} name)
  file(CONFIGURE OUTPUT headers/${name}.cpp CONTENT "#include <@header@>\n#include <@header@>\n" @ONLY)
  list(APPEND header_sources ${CMAKE_CURRENT_BINARY_DIR}/headers/${name}.cpp)
endforeach()
function(kord_user_target target standard)
  target_link_libraries(${target} PRIVATE kord::kord)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${KORD_WERROR}>:-Werror>)
  set_target_properties(${target} PROPERTIES CXX_STANDARD ${standard} CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF)
endfunction()
foreach(standard 17 20 23)
  add_library(kord_headers_${standard} OBJECT ${header_sources})
  kord_user_target(kord_headers_${standard} ${standard})
  add_executable(kord_every_member_${standard} every_member.cpp)
  kord_user_target(kord_every_member_${standard} ${standard})
  add_test(NAME every-member-${standard} COMMAND kord_every_member_${standard})
endforeach()
kord_warnings(kord_headers_17) # whatever else users may ask for
# The library's exceptions are caught in programs that hide everything, too.
set_target_properties(kord_every_member_20 PROPERTIES CXX_VISIBILITY_PRESET hidden)

find_package(Python3 COMPONENTS Interpreter)
if(NOT Python3_FOUND OR NOT BUILD_SHARED_LIBS)
  return()
endif()
set(check_exports ${Python3_EXECUTABLE} -B ${PROJECT_SOURCE_DIR}/tools/check_exports.py)
set(check_imports ${Python3_EXECUTABLE} -B ${PROJECT_SOURCE_DIR}/tools/check_imports.py)
add_test(NAME exports COMMAND ${check_exports} --nm ${CMAKE_NM} $<TARGET_FILE:kord>)
# Sanitizers need run times of their own.
if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
  add_test(NAME imports COMMAND ${check_imports} --nm ${CMAKE_NM} --objdump ${CMAKE_OBJDUMP}
    $<TARGET_FILE:kord> $<TARGET_OBJECTS:kord_objects> $<TARGET_OBJECTS:kord> COMMAND_EXPAND_LISTS)
endif()
# Which names objects have varies with the compiler and the optimisation; the lists are as g++ sees it.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_BUILD_TYPE STREQUAL Release AND NOT WIN32)
  add_test(NAME exports-visible COMMAND ${check_exports} --readelf ${CMAKE_READELF} --visible
    $<TARGET_OBJECTS:kord_objects> COMMAND_EXPAND_LISTS)
  add_library(kord_every_name OBJECT every_member.cpp)
  kord_user_target(kord_every_name 17)
  target_compile_options(kord_every_name PRIVATE -O0 -fno-inline) # so that the object names inline members
  add_test(NAME exports-used COMMAND ${check_exports} --nm ${CMAKE_NM} --used $<TARGET_OBJECTS:kord_every_name>)
endif()
