# What libCRV.so exports is what symbols.txt records:
#   cmake -DNM=... -DLIBRARY=libCRV.so -DLIST=symbols.txt [-DUPDATE=ON] -P symbols.cmake
#
# The list is demangled, since compilers emit different variants of one constructor. Left out is what
# need not come from here: instances of standard templates, and what the templates default, which
# every caller makes for himself.
cmake_minimum_required(VERSION 3.24)

execute_process(COMMAND ${NM} -D -C --defined-only ${LIBRARY} OUTPUT_VARIABLE output
  COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "> >" ">>" output "${output}")  # what one nm writes, and another does not
string(REPLACE "> >" ">>" output "${output}")
string(REGEX MATCHALL "[^\n]+" lines "${output}")

set(exported "")
foreach(line IN LISTS lines)
  string(REGEX REPLACE "^[0-9a-f]+ [A-Za-z] " "" name "${line}")
  string(REGEX REPLACE "^(typeinfo|vtable|typeinfo name) for " "" bare "${name}")
  set(standard "(std|__gnu_cxx)::")
  if(bare MATCHES "^${standard}|^[^(]*[ &*>]${standard}")
    continue()
  endif()
  if(bare MATCHES "^Gx(Coord|Matrix)<double>::(~|operator=\\()"
      OR bare MATCHES "^GxCoord<double>::GxCoord\\(GxCoord|^Gx(Matrix|List)<.*>::Gx(Matrix|List)\\(\\)$")
    continue()
  endif()
  list(APPEND exported "${name}")
endforeach()
list(REMOVE_DUPLICATES exported)
list(SORT exported COMPARE STRING)

if(UPDATE)
  list(JOIN exported "\n" content)
  file(WRITE ${LIST} "${content}\n")
  return()
endif()

file(STRINGS ${LIST} recorded)
set(missing ${recorded})
list(REMOVE_ITEM missing ${exported})
set(added ${exported})
list(REMOVE_ITEM added ${recorded})
set(faults "")
foreach(name IN LISTS missing)
  string(APPEND faults "recorded, but no longer exported, which breaks callers: ${name}\n")
endforeach()
foreach(name IN LISTS added)
  if(name MATCHES "crv::internal|\\(anonymous namespace\\)")
    string(APPEND faults "exported, but private: ${name}\n")
  else()
    string(APPEND faults "exported, but not recorded: ${name}\n")
  endif()
endforeach()
if(faults)
  message(FATAL_ERROR "${LIBRARY} and ${LIST} disagree. If this is meant, build the target abi, which "
    "records what is exported; mind what a version may change.\n${faults}")
endif()
