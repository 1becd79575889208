# The Debian packages that cpack makes of the installed components: the libraries, what programs are built with, the tool,
# and the package for Python. scripts/package makes them; cmake/packages/ has their documents.
set(ZUNA_PACKAGE_MAINTAINER "Maintainers of the zuna format converter <maintainers@zuna.invalid>" CACHE STRING
    "Name and address of who answers for the packages")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zuna-format-converter)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "${ZUNA_PACKAGE_MAINTAINER}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_COMPONENTS_ALL library toolkit library-dev toolkit-dev tool)
foreach(component library toolkit)
  string(TOUPPER "${component}" upper)
  set(CPACK_COMPONENT_${upper}_GROUP runtime)
  set(CPACK_COMPONENT_${upper}-DEV_GROUP development)
endforeach()
set(CPACK_COMPONENT_TOOL_GROUP tool)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_RELEASE 0zuna1)  # less than the -1 of a package of Debian's own
set(CPACK_DEBIAN_PACKAGE_SOURCE ${CPACK_PACKAGE_NAME})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(own_version "= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

set(runtime libzuna-format-converter${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "converter of show and log files - shared libraries
The libraries convert shows, and logs of the edits that musicians made to
their songs, between the legacy format 0.0 and the current versions 1.0,
1.1, 1.2 and 2.0. The files are encrypted.
.
This package contains the converter, the core, security and utility
libraries below it, and the toolkit for programs that work with these files.")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzuna-format-converter-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime} (${own_version})")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "converter of show and log files - development files
The libraries convert shows, and logs of the edits that musicians made to
their songs, between the legacy format 0.0 and the current versions 1.0,
1.1, 1.2 and 2.0. The files are encrypted.
.
This package contains the headers, the CMake package, the pkg-config files,
the documentation and examples.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME zuna-convert)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${runtime} (${own_version})")
set(CPACK_DEBIAN_TOOL_DESCRIPTION "converter of show and log files - command-line tool
The tool converts shows, and logs of the edits that musicians made to their
songs, between the legacy format 0.0 and the current versions 1.0, 1.1, 1.2
and 2.0. The files are encrypted.
.
It takes single files and whole folders, checks, lists and describes them,
encrypts and decrypts them, and imports and exports Standard MIDI Files.")

if(ZUNA_BUILD_PYTHON)
  list(APPEND CPACK_COMPONENTS_ALL python)
  set(CPACK_COMPONENT_PYTHON_GROUP python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-zuna)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS  # an extension module belongs to one version of the interpreter
    "${runtime} (${own_version}), python3 (>= 3.11), python3 (<< 3.12), python3-numpy")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/cmake/packages/prerm")
  set(CPACK_DEBIAN_PYTHON_DESCRIPTION "converter of show and log files - Python package
The package zuna opens shows, and logs of the edits that musicians made to
their songs, in every version of their encrypted files. It converts,
compares, checks and writes them, and gives the MIDI messages of a voice as
NumPy arrays.")
endif()

# Where the dependencies of a package are looked for that is not installed.
foreach(folder format_converter toolkit platform/core platform/security platform/kit)
  list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/${folder}")
endforeach()

# The trigger of libc-bin runs ldconfig. Naming scripts that do not exist keeps CPack from writing some that do it again.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  "${PROJECT_SOURCE_DIR}/cmake/packages/triggers;/nonexistent/postinst;/nonexistent/postrm")

set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/packages/finish.cmake")
set(CPACK_ZUNA_SOURCE "${PROJECT_SOURCE_DIR}")
include(CPack)
