# zvl_add_catalogue(TARGET LIST DIR): builds the message catalogue module of
# the list file LIST (lines "id<TAB>crlf|none<TAB>text") as the library looks
# for it from the folder DIR: DIR/1033/zel_msg.dll on Windows (a message
# table made with windmc and windres, texts in language 0x409), and
# DIR/zel_msg.cat (an X/Open catalogue, set 1, through NLSPATH) elsewhere.
# With GENCAT also builds the X/Open one in a Windows build, for comparisons.
function(zvl_add_catalogue target list dir)
  cmake_parse_arguments(C "GENCAT" "" "" ${ARGN})
  set(gen ${CMAKE_CURRENT_BINARY_DIR}/${target}.src)
  file(STRINGS ${list} lines REGEX "^[0-9]")
  set(mc "MessageIdTypedef=DWORD\r\nSeverityNames=(Message=0x2)\r\n")
  string(APPEND mc "FacilityNames=(Library=0x0)\r\nLanguageNames=(English=0x409:MSG00409)\r\n")
  set(msg "$set 1\n")
  foreach(line IN LISTS lines)
    if(NOT line MATCHES "^([0-9]+)\t(crlf|none)\t(.*)$")
      message(FATAL_ERROR "${list}: bad line '${line}'")
    endif()
    set(id ${CMAKE_MATCH_1})
    set(ending ${CMAKE_MATCH_2})
    set(text "${CMAKE_MATCH_3}")
    # Message tables: a percent sign is written twice, %0 ends a text
    # without its line end. X/Open catalogues: backslash escapes.
    string(REPLACE "%" "%%" mc_text "${text}")
    string(REPLACE "\\" "\\\\" msg_text "${text}")
    if(ending STREQUAL "crlf")
      string(APPEND msg_text "\\r\\n")
    else()
      string(APPEND mc_text "%0")
    endif()
    string(APPEND mc "\r\nMessageId=${id}\r\nSeverity=Message\r\nFacility=Library\r\n")
    string(APPEND mc "Language=English\r\n${mc_text}\r\n.\r\n")
    string(APPEND msg "${id} ${msg_text}\n")
  endforeach()
  file(CONFIGURE OUTPUT ${gen}/zel_msg.mc CONTENT "${mc}" @ONLY)
  file(CONFIGURE OUTPUT ${gen}/zel_msg.msg CONTENT "${msg}" @ONLY)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})

  set(outputs "")
  if(WIN32)
    find_program(ZVL_WINDMC NAMES ${ZVL_MINGW_TRIPLE}-windmc windmc REQUIRED)
    add_custom_command(OUTPUT ${dir}/1033/zel_msg.dll
      COMMAND ${ZVL_WINDMC} -h ${gen} -r ${gen} ${gen}/zel_msg.mc
      COMMAND ${CMAKE_RC_COMPILER} -O coff -o ${gen}/zel_msg.res.o ${gen}/zel_msg.rc
      COMMAND ${CMAKE_COMMAND} -E make_directory ${dir}/1033
      COMMAND ${CMAKE_C_COMPILER} -shared -nostdlib -Wl,-e,0 -o ${dir}/1033/zel_msg.dll
              ${gen}/zel_msg.res.o
      DEPENDS ${gen}/zel_msg.mc WORKING_DIRECTORY ${gen}
      COMMENT "Message table module ${dir}/1033/zel_msg.dll")
    list(APPEND outputs ${dir}/1033/zel_msg.dll)
  endif()
  if(NOT WIN32 OR C_GENCAT)
    find_program(ZVL_GENCAT gencat REQUIRED)
    add_custom_command(OUTPUT ${dir}/zel_msg.cat
      COMMAND ${CMAKE_COMMAND} -E make_directory ${dir}
      COMMAND ${ZVL_GENCAT} ${dir}/zel_msg.cat ${gen}/zel_msg.msg
      DEPENDS ${gen}/zel_msg.msg COMMENT "Message catalogue ${dir}/zel_msg.cat")
    list(APPEND outputs ${dir}/zel_msg.cat)
  endif()
  add_custom_target(${target} ALL DEPENDS ${outputs})
endfunction()
