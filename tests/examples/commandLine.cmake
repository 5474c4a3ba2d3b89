# What strokeToPolyline says to good and bad command lines. A refused call ends with status 1, one
# line on the error stream and nothing on the other. Run as
#   cmake -DPROGRAM=... -DFOLDER=... -P commandLine.cmake
cmake_minimum_required(VERSION 3.24)
file(MAKE_DIRECTORY ${FOLDER})

# expect(STATUS PATTERN CONTENT ARGUMENT...): with that content in points.txt.
function(expect status pattern content)
  file(WRITE ${FOLDER}/points.txt "${content}")
  execute_process(COMMAND ${PROGRAM} ${ARGN} --out out.svg WORKING_DIRECTORY ${FOLDER}
    RESULT_VARIABLE found OUTPUT_VARIABLE output ERROR_VARIABLE error)
  if(status EQUAL 1)
    set(pattern "^@[^\n]*${pattern}[^\n]*\n$")
  else()
    set(pattern "${pattern}.*@$")
  endif()
  if(NOT found EQUAL status OR NOT "${output}@${error}" MATCHES "${pattern}")
    message(SEND_ERROR "\"${content}\" ${ARGN}: status ${found}\n${output}${error}")
  endif()
endfunction()

expect(0 "segments .*farthest sample .*curve length .*by equal chords .*by halving.*milliseconds" "")
expect(0 "points in +2 .*squared error of 4, ends apart.*chords of 30\n"
  "# a comment\n\n 0 0  # another\r\n\t1e2 +0.5\n" points.txt --error 4 --step 30)
expect(0 "points in +4 .*ends joined" "0 0\n60 0\n60 60\n0.2 0.2\n" points.txt)
expect(0 "points in +3 " "7 7\n7 7\n7 7\n" points.txt)

foreach(line IN ITEMS 1 "1 2 3" "1 2x" "1,2" "nan 1" "1 inf" "0x10 1" "1e999 1" "1e10 0")
  expect(1 "points.txt:2: expected x and y" "0 0\n${line}\n" points.txt)
endforeach()
expect(1 "two points or more" "1 2" points.txt)
expect(1 "missing.txt" "" missing.txt)
expect(1 "second.txt" "" points.txt second.txt)
expect(1 "--gap" "" --gap)
expect(1 "a million points" "" --step 1e-9)
foreach(value IN ITEMS 0 -1 nan inf 1e999 2x)
  expect(1 "needs a positive number" "" --error ${value})
endforeach()
expect(1 "the file of points itself" "0 0\n1 1\n" out.svg)
