# The tour reads standard input as it reads a file, and its totals are right on paths counted by hand.
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
execute_process(COMMAND ${TOUR} no-such-file RESULT_VARIABLE status ERROR_VARIABLE text)
if(NOT status EQUAL 1 OR NOT text MATCHES "no-such-file")
  message(SEND_ERROR "A missing file is not reported: ${status} ${text}")
endif()
