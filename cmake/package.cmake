# What `cpack` makes of an installation: a pair of Debian packages, or an archive with everything. tools/package.sh
# calls it.
set(CPACK_PACKAGE_NAME kord)
set(CPACK_PACKAGE_CONTACT "kord developers <kord@localhost>" CACHE STRING "Who answers for the packages")
set(CPACK_PACKAGE_VENDOR kord)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL Runtime Development)
set(CPACK_PACKAGE_FILE_NAME kord-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "copy-on-write strings of two widths")
set(description "Strings of 8-bit characters and of UTF-16 units that share their text until
one is changed, searching and comparison without a locale, typed formatting,
conversion between encodings, hashes and Windows path names.")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=") # any later one with the same name will do

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libkord${kord_abi_version})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${description}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkord-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libkord${kord_abi_version} (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${description}
This package has what is needed to build programs with it.")

include(CPack)
