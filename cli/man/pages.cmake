# Writes the manual pages zuna-convert.1, zuna-convert-up.1 and so on.
#
#   cmake -DTOOL=PATH -DHELP2MAN=PATH -DFOLDER=PATH -P pages.cmake

# Gives the page the full name of its command and a date that all readers know, and each example a line of its own.
function(mend_page page name)
  file(READ "${page}" text)
  string(TOUPPER "${name}" title)
  string(TIMESTAMP date "%Y-%m-%d" UTC)
  string(REGEX REPLACE "\n\\.TH [^ ]+ \"1\" \"[^\"]*\"" "\n.TH ${title} 1 ${date}" text "${text}")
  string(REPLACE "\n.SH NAME\nzuna-convert " "\n.SH NAME\n${name} " text "${text}")
  string(REPLACE "\n.SH EXAMPLES\n.IP\n" "\n.SH EXAMPLES\n.nf\n" text "${text}")
  string(FIND "${text}" "\n.SH EXAMPLES\n" examples)
  string(SUBSTRING "${text}" 0 ${examples} before)
  string(SUBSTRING "${text}" ${examples} -1 after)
  string(FIND "${after}" "\n.PP\n" end)
  string(SUBSTRING "${after}" 0 ${end} lines)
  string(SUBSTRING "${after}" ${end} -1 after)
  file(WRITE "${page}" "${before}${lines}\n.fi${after}")
endfunction()

# The page of the command whose words are given, and those of the commands below it.
function(write_pages)
  execute_process(COMMAND "${TOOL}" ${ARGV} --help OUTPUT_VARIABLE help COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "\n\n.*" "" description "${help}")
  string(REGEX REPLACE "\n" " " description "${description}")
  string(REGEX REPLACE "\\.$" "" description "${description}")
  list(JOIN ARGV " " words)
  list(JOIN ARGV "-" name)
  string(REGEX REPLACE "-$" "" name "zuna-convert-${name}")
  set(page "${FOLDER}/${name}.1")
  cmake_path(GET TOOL PARENT_PATH place)
  cmake_path(GET TOOL FILENAME file)
  execute_process(COMMAND "${HELP2MAN}" --no-info --name "${description}" --output "${page}" "./${file} ${words}"
    WORKING_DIRECTORY "${place}" COMMAND_ERROR_IS_FATAL ANY)
  mend_page("${page}" "${name}")

  if(help MATCHES "\nCommands:\n(.*)")
    string(REGEX REPLACE "\n\n.*" "\n" commands "${CMAKE_MATCH_1}")
    string(REGEX MATCHALL "(^|\n)  [a-z-]+" commands "${commands}")
    foreach(command IN LISTS commands)
      string(STRIP "${command}" command)
      write_pages(${ARGV} ${command})
    endforeach()
  endif()
endfunction()

file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${FOLDER}")
write_pages()
