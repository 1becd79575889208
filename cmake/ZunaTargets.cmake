# What every target of the project has in common.
include(ZunaExports)

# Flags for code of our own; not handed on to consumers. The presets make warnings errors.
add_library(zuna_flags INTERFACE)
target_compile_features(zuna_flags INTERFACE cxx_std_20)
target_compile_options(zuna_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -fvisibility=hidden -fvisibility-inlines-hidden)
target_include_directories(zuna_flags INTERFACE "${PROJECT_SOURCE_DIR}")
if(ZUNA_SANITIZE)
  target_compile_options(zuna_flags INTERFACE -fsanitize=${ZUNA_SANITIZE} -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(zuna_flags INTERFACE -fsanitize=${ZUNA_SANITIZE})
endif()

# zuna_add_library(NAME SOURCES ... LINKS ... [EXPORTS FILE])
#
# A shared library NAME out of an object library NAME_objects, so that tests link the very same objects and reach what
# the shared library hides. EXPORTS is a linker map that lists what the shared library shows.
function(zuna_add_library name)
  cmake_parse_arguments(ARG "" "EXPORTS;OUTPUT" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name}_objects OBJECT ${ARG_SOURCES})
  set_target_properties(${name}_objects PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_link_libraries(${name}_objects PUBLIC zuna_interfaces ${ARG_LINKS} PRIVATE zuna_flags ${ARG_PRIVATE_LINKS})

  add_library(${name} SHARED $<TARGET_OBJECTS:${name}_objects>)
  add_library(zuna::${name} ALIAS ${name})
  target_link_libraries(${name} PUBLIC zuna_interfaces PRIVATE ${ARG_LINKS} ${ARG_PRIVATE_LINKS} zuna_flags)
  foreach(library IN LISTS ARG_LINKS)
    target_link_libraries(${name} INTERFACE $<INSTALL_INTERFACE:${library}>)
  endforeach()
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})
  if(ARG_OUTPUT)
    set_target_properties(${name} PROPERTIES OUTPUT_NAME ${ARG_OUTPUT})
  endif()
  if(ARG_EXPORTS)
    zuna_link_exports(${name} "${ARG_EXPORTS}")
  endif()
endfunction()
