# Install rules, the CMake package zuna_format_converter and its pkg-config file.
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/zuna_format_converter")
set(header_dir "${CMAKE_INSTALL_INCLUDEDIR}/zuna")

set(libraries zuna_format_converter)
set(header_folders format_converter)
if(TARGET zuna_toolkit)
  list(APPEND libraries zuna_toolkit)
  list(APPEND header_folders toolkit)
endif()
if(TARGET zuna_core)
  list(APPEND libraries zuna_core zuna_security kit)
endif()

# zuna::all is everything that is installed here, and the platform libraries from elsewhere.
add_library(zuna_all INTERFACE)
add_library(zuna::all ALIAS zuna_all)
set_target_properties(zuna_all PROPERTIES EXPORT_NAME all)
target_link_libraries(zuna_all INTERFACE ${libraries} ${ZUNA_PLATFORM_LIBRARIES})

install(TARGETS zuna_all zuna_interfaces ${libraries} EXPORT zuna_format_converter)
install(EXPORT zuna_format_converter NAMESPACE zuna:: DESTINATION "${package_dir}")

# The headers lie under one folder, so that <TL/timeline.h> and <format_converter/showdata.h> read as they do here.
install(DIRECTORY "${PROJECT_SOURCE_DIR}/interfaces/" DESTINATION "${header_dir}" FILES_MATCHING PATTERN "*.h")
foreach(folder IN LISTS header_folders)
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}" DESTINATION "${header_dir}"
    FILES_MATCHING PATTERN "*.h" PATTERN "internal" EXCLUDE)
endforeach()

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/zuna_format_converterConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/zuna_format_converterConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/zuna_format_converterConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/zuna_format_converterConfig.cmake"
  "${PROJECT_BINARY_DIR}/zuna_format_converterConfigVersion.cmake"
  DESTINATION "${package_dir}")

# The pkg-config file finds the prefix from its own place, so that the prefix can be moved.
file(RELATIVE_PATH pc_to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" pc_to_prefix "${pc_to_prefix}")
list(TRANSFORM libraries PREPEND "-l" OUTPUT_VARIABLE pc_libraries)
list(APPEND pc_libraries ${ZUNA_PLATFORM_LIBRARIES})
list(JOIN pc_libraries " " pc_libraries)
configure_file("${PROJECT_SOURCE_DIR}/cmake/zuna_format_converter.pc.in"
  "${PROJECT_BINARY_DIR}/zuna_format_converter.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/zuna_format_converter.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# A copy of the sources may be without documentation.
install(FILES "${PROJECT_SOURCE_DIR}/docs/libzuna_format_converter.3" DESTINATION "${CMAKE_INSTALL_MANDIR}/man3" OPTIONAL)
