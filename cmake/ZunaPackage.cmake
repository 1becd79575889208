# Install rules, the CMake package zuna_format_converter and the pkg-config files.
#
# Components, so that each part can be installed by itself (cmake --install BUILD --component NAME):
#
# library      libzuna_format_converter, with the platform libraries that are built here
# toolkit      libzuna_toolkit
# library-dev, toolkit-dev      what programs are built with: headers, the CMake package, pkg-config files, documentation
# tool         zuna-convert with its manual pages and completion scripts
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/zuna_format_converter")
set(header_dir "${CMAKE_INSTALL_INCLUDEDIR}/zuna")

set(libraries zuna_format_converter)
if(TARGET zuna_core)
  list(APPEND libraries zuna_core zuna_security kit)
endif()

# zuna::all is everything that is installed here, and the platform libraries from elsewhere.
add_library(zuna_all INTERFACE)
add_library(zuna::all ALIAS zuna_all)
set_target_properties(zuna_all PROPERTIES EXPORT_NAME all)
target_link_libraries(zuna_all INTERFACE
  ${libraries} ${ZUNA_PLATFORM_LIBRARIES} $<TARGET_NAME_IF_EXISTS:zuna::zuna_toolkit>)

# zuna_install_headers(FOLDER COMPONENT)
#
# Installs the public headers of a folder. They lie under one folder, so that <TL/timeline.h> and
# <format_converter/showdata.h> read as they do here.
function(zuna_install_headers folder component)
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}" DESTINATION "${header_dir}" COMPONENT ${component}
    FILES_MATCHING PATTERN "*.h" PATTERN "internal" EXCLUDE)
endfunction()

# zuna_install_pkg_config(NAME COMPONENT DESCRIPTION TEXT LIBS WORD ... [REQUIRES NAME])
#
# Installs NAME.pc. It finds the prefix from its own place, so that the prefix can be moved.
function(zuna_install_pkg_config name component)
  cmake_parse_arguments(PC "" "DESCRIPTION;REQUIRES" "LIBS" ${ARGN})
  file(RELATIVE_PATH to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
  string(REGEX REPLACE "/$" "" to_prefix "${to_prefix}")
  list(JOIN PC_LIBS " " PC_LIBS)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/library.pc.in" "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/${name}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT ${component})
endfunction()

install(TARGETS zuna_all zuna_interfaces ${libraries} EXPORT zuna_format_converter
  LIBRARY COMPONENT library NAMELINK_COMPONENT library-dev)
install(EXPORT zuna_format_converter NAMESPACE zuna:: DESTINATION "${package_dir}" COMPONENT library-dev)
zuna_install_headers(interfaces/ library-dev)
zuna_install_headers(format_converter library-dev)
list(TRANSFORM libraries PREPEND "-l" OUTPUT_VARIABLE words)
zuna_install_pkg_config(zuna_format_converter library-dev
  DESCRIPTION "Converts show and log files between their versions" LIBS ${words} ${ZUNA_PLATFORM_LIBRARIES})

if(TARGET zuna_toolkit)
  install(TARGETS zuna_toolkit EXPORT zuna_toolkit LIBRARY COMPONENT toolkit NAMELINK_COMPONENT toolkit-dev)
  install(EXPORT zuna_toolkit NAMESPACE zuna:: DESTINATION "${package_dir}" COMPONENT toolkit-dev)
  zuna_install_headers(toolkit toolkit-dev)
  zuna_install_pkg_config(zuna_toolkit toolkit-dev
    DESCRIPTION "Show and log files of every version as documents" REQUIRES zuna_format_converter LIBS -lzuna_toolkit)
endif()

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/zuna_format_converterConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/zuna_format_converterConfig.cmake" INSTALL_DESTINATION "${package_dir}"
  NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/zuna_format_converterConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/zuna_format_converterConfig.cmake"
  "${PROJECT_BINARY_DIR}/zuna_format_converterConfigVersion.cmake"
  DESTINATION "${package_dir}" COMPONENT library-dev)

# A copy of the sources may be without documentation. The pages lie as they do here, where links and headers name them.
install(FILES "${PROJECT_SOURCE_DIR}/docs/libzuna_format_converter.3" DESTINATION "${CMAKE_INSTALL_MANDIR}/man3"
  COMPONENT library-dev OPTIONAL)
set(documents "${CMAKE_INSTALL_DATAROOTDIR}/doc/libzuna-format-converter-dev")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs" DESTINATION "${documents}" COMPONENT library-dev OPTIONAL
  FILES_MATCHING PATTERN "*.md" PATTERN pictures EXCLUDE)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples/consumer" DESTINATION "${documents}/examples" COMPONENT library-dev OPTIONAL)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples/cluster" DESTINATION "${documents}/examples" COMPONENT library-dev OPTIONAL
  USE_SOURCE_PERMISSIONS)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples/songs" DESTINATION "${documents}/examples" COMPONENT toolkit-dev OPTIONAL)
foreach(page SECURITY.md interfaces/README.md fuzz/README.md examples/platform/security.cpp)
  cmake_path(GET page PARENT_PATH folder)
  install(FILES "${PROJECT_SOURCE_DIR}/${page}" DESTINATION "${documents}/${folder}" COMPONENT library-dev OPTIONAL)
endforeach()
