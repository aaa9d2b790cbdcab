# The filter converts as iconv does, where there is one, and says where a text is malformed or cannot be represented.
#
#     cmake -DTRANSCODE=PROGRAM -DDATA=FOLDER -P transcode.cmake

set(folder ${CMAKE_CURRENT_BINARY_DIR}/transcode)
file(MAKE_DIRECTORY ${folder})
set(iconv_utf8 UTF-8)
set(iconv_utf16le UTF-16LE)
set(iconv_utf16be UTF-16BE)
set(iconv_latin1 ISO-8859-1)
find_program(ICONV iconv)
if(NOT ICONV)
  message("There is no iconv to compare with.")
endif()

function(transcode from to input output)
  execute_process(COMMAND ${TRANSCODE} --from ${from} --to ${to} INPUT_FILE ${folder}/${input}
    OUTPUT_FILE ${folder}/${output} RESULT_VARIABLE status ERROR_VARIABLE text)
  set(status ${status} PARENT_SCOPE)
  set(text "${text}" PARENT_SCOPE)
endfunction()

function(expect_same a b what)
  file(SHA256 ${folder}/${a} sum_a)
  file(SHA256 ${folder}/${b} sum_b)
  if(NOT sum_a STREQUAL sum_b)
    message(SEND_ERROR "${what}: ${folder}/${a} and ${folder}/${b} differ")
  endif()
endfunction()

# ---- from every encoding to every other, and back ----------------------------------------------------------------------

# The texts: all of Unicode's classes, ASCII, every character of Latin-1 but zero (which CMake cannot write), a byte order
# mark, nothing, and characters of every length across the end of a block, and of the input, wherever that may be.
file(READ ${DATA}/languages.txt languages)
file(READ ${DATA}/ledger.txt ledger)
foreach(code RANGE 1 255)
  string(ASCII ${code} byte)
  string(APPEND bytes "${byte}")
endforeach()
string(REPEAT "${bytes}" 600 bytes)
file(WRITE ${folder}/latin1.bin "${bytes}")
transcode(latin1 utf8 latin1.bin latin1.txt)
file(WRITE ${folder}/languages.txt "${languages}${languages}.${languages}")
file(WRITE ${folder}/ledger.txt "${ledger}")
file(WRITE ${folder}/marked.txt "\uFEFFmarked\uFEFF é")
file(WRITE ${folder}/empty.txt "")
foreach(length RANGE 65530 65536)
  string(REPEAT "a" ${length} ascii)
  file(WRITE ${folder}/block${length}.txt "${ascii}😀漢é😀")
endforeach()
