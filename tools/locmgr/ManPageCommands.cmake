# Writes the help2man include file that adds every command's --help to the manual page:
#   cmake -DLOCMGR=path/to/locmgr -DOUTPUT=file -P ManPageCommands.cmake
# The commands are read from the overview's "Commands:" list, so that a new command appears in
# the manual without being named here.

execute_process(COMMAND "${LOCMGR}" --help OUTPUT_VARIABLE overview RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "locmgr --help failed: ${status}")
endif()
string(REGEX MATCH "\nCommands:\n(  [^\n]*\n)+" command_list "${overview}")
string(REGEX MATCHALL "\n  [a-z]+" command_names "${command_list}")

set(roff "[COMMANDS]\n")
foreach(entry IN LISTS command_names)
  string(STRIP "${entry}" name)
  execute_process(COMMAND "${LOCMGR}" help "${name}" OUTPUT_VARIABLE help RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "locmgr help ${name} failed: ${status}")
  endif()
  # Literal text for roff: backslashes and hyphens escaped, no line taken for a request.
  string(REPLACE "\\" "\\e" help "${help}")
  string(REPLACE "-" "\\-" help "${help}")
  string(REGEX REPLACE "(^|\n)([.'])" "\\1\\\\&\\2" help "${help}")
  string(APPEND roff ".SS \"locmgr ${name}\"\n.nf\n${help}.fi\n")
endforeach()
file(WRITE "${OUTPUT}" "${roff}")
