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

# Five paths shortened by hand, and the numbers of those five lines, in a report for a terminal of 80 columns.
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/five_paths.txt [=[
C:\dir1\dir2\dir3\dir4\dir5\file.txt
//server/share/reports/2024/total
x/../y.tar.TXT
a name without any folder.text
C:\archive\a-very-long-name-of-a-report.txt
]=])
set(ENV{COLUMNS} 80)
execute_process(
  COMMAND ${TOUR} --text ${CMAKE_CURRENT_BINARY_DIR}/five_lines.txt ${CMAKE_CURRENT_BINARY_DIR}/five_paths.txt
  OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
set(report [=[
  path chars  kept%  ellipsis_middle               ellipsis_middle_fill
                     ellipsis_end                  ellipsis_begin
     1    36   75.7  C:\dir1\dir2\...\file.txt     C:\dir1\dir2\dir...\file.txt
                     C:\dir1\dir2\dir3\dir4\di...  ...2\dir3\dir4\dir5\file.txt
     2    33   81.8  \\server\share\...\total      \\server\share\repo...\total
                     \\server\share\reports\20...  ...\share\reports\2024\total
     4    30   93.3  a name without any folder...  a name without any folder...
                     a name without any folder...  ...e without any folder.text
     5    43   65.1  a-very-long-name-of-a-rep...  a-very-long-name-of-a-rep...
                     C:\archive\a-very-long-na...  ...long-name-of-a-report.txt
     3    14  100.0  x\..\y.tar.TXT                x\..\y.tar.TXT
                     x\..\y.tar.TXT                x\..\y.tar.TXT
Shortened to 28: 5 paths of 156 characters, in the modes to 119, 126, 126, 126

                    count     smallest       median      largest
integers                6  -2147483648           +5          +12
hexadecimal             2         0x10         0x1f         0x1f
reals                   2 decimals            6 decimals             16 digits
smallest            -9999999999.00           -9999999999           -9999999999
median                        5.00              5.000000                     5
largest                      12.00             12.000000                    12
sum                 -9999999969.50         -9999999969.5         -9999999969.5
mean                -1666666661.58     -1666666661.58333    -1666666661.583333
Both widths give the same lines.
Refused for one integer: '%s' '%f' '%d of %d' '%*d' '%y' 'none': all empty
Formatted 24 lines of 1742 characters.
]=])
string(FIND "${text}" "${report}" at)
if(at EQUAL -1)
  message(SEND_ERROR "The tour does not report:\n${report}\n${text}")
endif()

# All of them in turn, on a terminal with room for the four modes side by side; and on one that has hardly any.
foreach(columns_and_room "120 23" "150 30" "1 8")
  string(REGEX MATCH "(.*) (.*)" matched ${columns_and_room})
  set(room ${CMAKE_MATCH_2})
  set(ENV{COLUMNS} ${CMAKE_MATCH_1})
  execute_process(COMMAND ${TOUR} --all ${CMAKE_CURRENT_BINARY_DIR}/five_paths.txt
    OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  set(order "\n     1    36 .*\n     2    33 .*\n     3    14 .*\n     4    30 ")
  if(NOT text MATCHES "${order}.*\nShortened to ${room}: 5 paths of 156 characters")
    message(SEND_ERROR "The tour does not shorten to ${room}:\n${text}")
  endif()
endforeach()

# A text counted by hand, in every class of characters, with a line that Latin-1 has and one that it has not.
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/four_scripts.txt "Olá, mañana\r\nΩμέγα ÷ 2 😀\n€ 漢字\n𐍈 Þ\n")
execute_process(COMMAND ${TOUR} --utf8 ${CMAKE_CURRENT_BINARY_DIR}/four_scripts.txt
  OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
foreach(line "four_scripts.txt: 55 bytes\n"
    "\nbytes a character +1 +2 +3 +4 +all\ncharacters +20 +9 +3 +2 +34\n"
    "\nUTF-8 to UTF-16 +36 units +[0-9.]+ million"
    "\nUTF-16 to UTF-8 +55 bytes +[0-9.]+ million"
    "\nThe text comes back byte for byte[.]\n"
    "\nLatin-1 keeps 11 of 11 units: Olá, mañana\n"
    "\nLatin-1 keeps 5 of 12 units: [?][?][?][?][?] ÷ 2 [?][?]\n")
  if(NOT text MATCHES "${line}")
    message(SEND_ERROR "The tour does not say: ${line}\n${text}")
  endif()
endforeach()

# What is not UTF-8 is read as the library reads it: a first byte alone, an encoded surrogate, an overlong form of four
# bytes, and a character that the end cuts off.
string(ASCII 97 195 40 237 160 128 122 240 128 128 175 226 130 bytes)
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/malformed.txt "${bytes}")
execute_process(COMMAND ${TOUR} --utf8 ${CMAKE_CURRENT_BINARY_DIR}/malformed.txt
  OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
if(NOT text MATCHES "\nMalformed at byte 1; read all the same, as 6 units, 1 of them U[+]FFFD[.]\n")
  message(SEND_ERROR "The tour does not tell of malformed text:\n${text}")
endif()

# For each hash a pair of paths that it cannot tell apart, one path twice, and one with bytes above 0x7F.
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/colliding_paths.txt [=[
brown/keel143
ochre/anchor6010
grey/rope497
grey/crate568
blue/keel892
grey/keel2930
black/crate405
coral/oar9080
white/anchor183
white/anchor220
grey/rope497
žluť/loď.txt
]=])
execute_process(COMMAND ${TOUR} ${CMAKE_CURRENT_BINARY_DIR}/colliding_paths.txt
  OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
foreach(line "\nFingerprints of 11 distinct paths, in 16 buckets\n"
    "\nFowlerNollVo +B60A5F06 +1 +6 +1.45 "
    "\nJenkins +A12386C9 +1 +7 +1.45 "
    "\nOneAtATime +0079A93A +1 +7 +1.45 "
    "\nObjectSpace +6A53B086 +1 +7 +1.45 "
    "\nRamakrishnaZobel +5101145D +1 +9 +1.18 "
    "\nby chance +0.00 +8.1 +1.31\n"
    "\nBoth forms of each hash agree[.]\n")
  if(NOT text MATCHES "${line}")
    message(SEND_ERROR "The tour does not say: ${line}\n${text}")
  endif()
endforeach()

foreach(option "" --text --utf8)
  execute_process(COMMAND ${TOUR} ${option} no-such-file RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE text)
  if(NOT status EQUAL 1 OR NOT text MATCHES "no-such-file")
    message(SEND_ERROR "A missing file is not reported: ${status} ${text}")
  endif()
endforeach()
