# What strokeToPolyline says to good and bad command lines. Run as
#   cmake -DPROGRAM=... -DFOLDER=... -P commandLine.cmake
# A refused call must end with status 1, one line on the error stream, nothing on the other, and
# leave the picture of an earlier run and its folder as they were.
cmake_minimum_required(VERSION 3.24)
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})

function(fail text)
  message(SEND_ERROR "${text}")
endfunction()

function(run)
  execute_process(COMMAND ${PROGRAM} ${ARGN} WORKING_DIRECTORY ${FOLDER}
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE error)
  set(status "${status}" PARENT_SCOPE)
  set(output "${output}" PARENT_SCOPE)
  set(error "${error}" PARENT_SCOPE)
endfunction()

# accepts(PATTERN ARGUMENTS...): succeeds and reports what the pattern describes.
function(accepts pattern)
  run(${ARGN})
  if(NOT status EQUAL 0 OR NOT "${error}" STREQUAL "" OR NOT output MATCHES "${pattern}")
    fail("${ARGN}: expected \"${pattern}\", got status ${status}\n${output}${error}")
  endif()
endfunction()

# refuses(PATTERN ARGUMENTS...)
function(refuses pattern)
  file(WRITE ${FOLDER}/out.svg "the earlier picture")
  file(GLOB before ${FOLDER}/*)
  run(${ARGN} --out out.svg)
  file(READ ${FOLDER}/out.svg picture)
  file(GLOB after ${FOLDER}/*)
  if(NOT status EQUAL 1 OR NOT "${output}" STREQUAL "" OR NOT error MATCHES "^[^\n]*${pattern}[^\n]*\n$")
    fail("${ARGN}: expected a refusal with \"${pattern}\", got status ${status}\n${output}${error}")
  endif()
  if(NOT picture STREQUAL "the earlier picture" OR NOT before STREQUAL after)
    fail("${ARGN}: refused, but files changed")
  endif()
endfunction()

# points(CONTENT): writes points.txt.
function(points content)
  file(WRITE ${FOLDER}/points.txt "${content}")
endfunction()

# ---- Good -------------------------------------------------------------------------------------
accepts("segments .*farthest sample .*curve length .*by equal chords .*by halving.*milliseconds")
points("# a comment\n\n 0 0  # another\r\n\t1e2 +0.5\n")
accepts("points in +2 .*squared error of 4, ends apart.*chords of 30\n" points.txt --error 4 --step 30)
points("0 0\n60 0\n60 60\n0.2 0.2\n")
accepts("points in +4 .*ends joined" points.txt --out out.svg)
file(READ ${FOLDER}/out.svg picture)
if(NOT picture MATCHES "^<svg [^\n]*>\n.*</svg>\n$" OR EXISTS ${FOLDER}/out.svg.part)
  fail("the picture is not whole")
endif()
points("7 7\n7 7\n7 7\n")
accepts("points in +3 " points.txt)
accepts("usage" --help)

# ---- Bad points -------------------------------------------------------------------------------
foreach(line "1" "1 2 3" "1 2x" "1,2" "nan 1" "1 inf" "1 -INF" "0x10 1" "1e999 1" "1 1e" "1 1.2.3" "1-2 3" "1 .")
  points("0 0\n# two lines above\n${line}\n")
  refuses("points.txt:3: expected two finite numbers" points.txt)
endforeach()
points("0 0\n1e10 0\n")
refuses("points.txt:2: coordinates may go up to 1e\\+09" points.txt)
points("# nothing\n")
refuses("points.txt: a stroke needs two points or more, this file has 0" points.txt)
points("1 2")
refuses("this file has 1" points.txt)
refuses("cannot read missing.txt" missing.txt)
refuses("cannot read \\." .)

# ---- Bad options ------------------------------------------------------------------------------
foreach(value 0 -1 nan inf 1e999 1e-999 2x "")
  refuses("--error needs a" --error "${value}")
  refuses("--step needs a" --step "${value}")
endforeach()
refuses("a step of 1e-09 would make a polyline of .* points" --step 1e-9)
refuses("unknown option \"--gap\"" --gap 1)
refuses("second" a.txt b.txt)
points("0 0\n1 1\n")
refuses("names the file of points itself" out.svg)

run(--out nowhere/out.svg)
if(NOT status EQUAL 1 OR NOT error MATCHES "^cannot write nowhere/out.svg\\.\n$" OR EXISTS ${FOLDER}/nowhere)
  fail("an output that cannot be written: status ${status}\n${output}${error}")
endif()
run(--out)
if(NOT status EQUAL 1 OR NOT error MATCHES "^--out needs a value")
  fail("an option without its value: status ${status}\n${output}${error}")
endif()
