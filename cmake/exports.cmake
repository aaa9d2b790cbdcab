# An ELF library exports what kord.def lists, whichever copies of inline functions a compiler writes out besides.

# Identified by address across the library's boundary: what the library throws is caught by programs.
set(kord_exception_types _ZTI14os_logic_error _ZTS14os_logic_error _ZTI15os_length_error _ZTS15os_length_error)

# Gives the target a version script made of the list. The names get no version.
function(kord_version_script target)
  set(list ${PROJECT_SOURCE_DIR}/cmake/kord.def)
  set(script ${PROJECT_BINARY_DIR}/kord.map)
  file(STRINGS ${list} lines REGEX "^    ")
  list(TRANSFORM lines REPLACE "^ +([^ ]+).*" "\\1")
  list(JOIN lines ";\n" names)
  list(JOIN kord_exception_types ";\n" types)
  file(CONFIGURE OUTPUT ${script} CONTENT "{ global:\n@names@;\n@types@;\nlocal: *; };\n" @ONLY)
  set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})
  target_link_options(${target} PRIVATE LINKER:--version-script=${script})
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${script})
endfunction()

# Clang uses one copy of a constructor for both of its symbols and then leaves one symbol out, marked used or not.
function(kord_all_constructors)
  if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
    set_property(SOURCE ${ARGN} APPEND PROPERTY COMPILE_OPTIONS -Xclang -mno-constructor-aliases)
  endif()
endfunction()
