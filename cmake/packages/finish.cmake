# cpack runs this between installing the components and packing them. It makes of each folder what Debian expects of a
# package: no run paths, folders of Debian's own, compressed manual pages, and the documents of the package.

# Writes TEXT into FILE, compressed and without a time.
function(write_compressed file text)
  file(WRITE "${file}" "${text}")
  execute_process(COMMAND gzip -9 --no-name --force "${file}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Header-only libraries, of which a package contains code, and the packages of Debian that have their terms.
set(inside_RUNTIME dtl libdtl-dev)
set(inside_TOOL CLI11 libcli11-dev)

# The documents of the package NAME in its folder ROOT. More arguments are a library inside and its Debian package.
function(add_documents name root)
  set(documents "${root}/share/doc/${name}")
  file(READ "${CPACK_ZUNA_SOURCE}/cmake/packages/copyright" copyright)
  if(ARGC EQUAL 4 AND EXISTS "/usr/share/doc/${ARGV3}/copyright")
    file(READ "/usr/share/doc/${ARGV3}/copyright" terms)
    string(APPEND copyright "\n${name} contains code of ${ARGV2}, whose terms are these:\n\n${terms}")
  endif()
  file(WRITE "${documents}/copyright" "${copyright}")

  file(READ "${CPACK_ZUNA_SOURCE}/CHANGELOG.md" changes)
  write_compressed("${documents}/changelog" "${changes}")
  set(version "${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
  string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
  write_compressed("${documents}/changelog.Debian" "${CPACK_DEBIAN_PACKAGE_SOURCE} (${version}) unstable; urgency=medium

  * Package version ${CPACK_PACKAGE_VERSION}.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
endfunction()

set(groups RUNTIME DEVELOPMENT TOOL)
if(CPACK_DEBIAN_PYTHON_PACKAGE_NAME)
  list(APPEND groups PYTHON)
endif()
foreach(group IN LISTS groups)
  string(TOLOWER ${group} folder)
  set(root "${CPACK_TEMPORARY_DIRECTORY}/${folder}/usr")
  add_documents(${CPACK_DEBIAN_${group}_PACKAGE_NAME} "${root}" ${inside_${group}})

  file(GLOB pages "${root}/share/man/man?/*")
  foreach(page IN LISTS pages)
    execute_process(COMMAND gzip -9 --no-name "${page}" COMMAND_ERROR_IS_FATAL ANY)
  endforeach()

  file(GLOB linked "${root}/bin/*" "${root}/lib/*/*.so.*.*.*" "${root}/lib/python3/dist-packages/zuna/*.so")
  foreach(file IN LISTS linked)
    execute_process(COMMAND chrpath --delete "${file}" OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  endforeach()
endforeach()

set(zsh "${CPACK_TEMPORARY_DIRECTORY}/tool/usr/share/zsh")
file(RENAME "${zsh}/site-functions" "${zsh}/vendor-completions")
