# The tour reads standard input as it reads a file, and its totals are right on paths and on a text counted by hand.
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/three_paths.txt "C:\\a\\b.txt\r\n\nx/../y.tar.TXT\n//server/share/\n")
foreach(arguments "-" "${CMAKE_CURRENT_BINARY_DIR}/three_paths.txt")
  execute_process(COMMAND ${TOUR} --all ${arguments} INPUT_FILE ${CMAKE_CURRENT_BINARY_DIR}/three_paths.txt
    OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  foreach(line "Paths: 4, relative 1, absolute or blank 3"
      "Items: Server 1 Share 1 Mount 0 Drive 1 Parent 0 Directory 1 FileName 2 Extension 3"
      "Extensions \\(2\\): .txt 2 .tar 1\n"
      "Sharing: 17 strings of .* 10 blocks"
      "\nabsolute  server  share +\n")
    if(NOT text MATCHES "${line}")
      message(SEND_ERROR "With ${arguments} the tour does not say: ${line}\n${text}")
    endif()
  endforeach()
endforeach()

# Matches that overlap, lines that differ in case or in a carriage return only, and every way to write a number.
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/five_lines.txt "Harbor aaa aaa aaaa +5\r\n" "harbor AAA aaa aaaa +5\n"
  "harbor AAA aaa aaaa +5\n" "\n" "$1F 0x10 2,50 -9999999999 12")
execute_process(COMMAND ${TOUR} --text ${CMAKE_CURRENT_BINARY_DIR}/five_lines.txt
  OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
foreach(line "five_lines.txt: 99 characters\n"
    "\n\"aaa\" +10, the last at 63 "
    "\n\"aaa\" without case +12, the last at 63 "
    "\n\"harbor\" +2, the last at 47 "
    "\n\"HARBOR\" +0  "
    "\n\"HARBOR\" without case +3, the last at 47 "
    "\n\"Harbor\" +1, the last at 0 "
    "\nwords +21 "
    "\nlines +5 "
    "by compare +4 distinct"
    "by compare_nocase +3 distinct"
    "\nnumbers +6 decimal, 2 hexadecimal"
    "by as_int +sum -2147483619, saturated 0 up, 1 down"
    "by as_unsigned +sum 47 "
    "by as_double +sum -9999999969[.]50 "
    "\nBoth widths and both directions agree[.]\n")
  if(NOT text MATCHES "${line}")
    message(SEND_ERROR "The tour does not say: ${line}\n${text}")
  endif()
endforeach()

foreach(option "" --text)
  execute_process(COMMAND ${TOUR} ${option} no-such-file RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE text)
  if(NOT status EQUAL 1 OR NOT text MATCHES "no-such-file")
    message(SEND_ERROR "A missing file is not reported: ${status} ${text}")
  endif()
endforeach()
