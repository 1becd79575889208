# Install rules and the CMake package zuna_format_converter.
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/zuna_format_converter")
set(libraries zuna_interfaces zuna_format_converter zuna_toolkit)
if(TARGET zuna_core)
  list(APPEND libraries zuna_core zuna_security kit)
endif()

install(TARGETS ${libraries} EXPORT zuna_format_converter)
install(EXPORT zuna_format_converter NAMESPACE zuna:: DESTINATION "${package_dir}")

# The headers lie under one folder, so that <TL/timeline.h> and <format_converter/showdata.h> read as they do here.
install(DIRECTORY "${PROJECT_SOURCE_DIR}/interfaces/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/zuna"
  FILES_MATCHING PATTERN "*.h")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/format_converter" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/zuna"
  FILES_MATCHING PATTERN "*.h"
  PATTERN "internal" EXCLUDE)

install(DIRECTORY "${PROJECT_SOURCE_DIR}/toolkit" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/zuna"
  FILES_MATCHING PATTERN "*.h"
  PATTERN "internal" EXCLUDE)

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/zuna_format_converterConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/zuna_format_converterConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/zuna_format_converterConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/zuna_format_converterConfig.cmake"
  "${PROJECT_BINARY_DIR}/zuna_format_converterConfigVersion.cmake"
  DESTINATION "${package_dir}")
