# Fails unless PLUGIN loads wherever the runtime baseline does: every symbol
# version it needs at or below BASELINE (a list such as GLIBC_2.17;GLIBCXX_3.4.21),
# and none from a version family the baseline does not name; exports only
# getPlugins and registerPlugin; a stack that is not executable; no text
# relocations; GLEW a shared library of the host's. Reads the library with
# binutils' readelf and objdump, as the dynamic loader would see it.
function(run_tool output)
  execute_process(COMMAND ${ARGN} ${PLUGIN} OUTPUT_VARIABLE text RESULT_VARIABLE rc ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "${ARGN} failed on ${PLUGIN}: ${err}")
  endif()
  string(REGEX MATCHALL "[^\n]+" lines "${text}")
  set(${output} "${lines}" PARENT_SCOPE)
endfunction()

# The first group of REGEX in each of the following lines that matches it.
function(collect output regex)
  set(found)
  foreach(line IN LISTS ARGN)
    if(line MATCHES "${regex}")
      list(APPEND found "${CMAKE_MATCH_1}")
    endif()
  endforeach()
  set(${output} "${found}" PARENT_SCOPE)
endfunction()

set(problems)

# Needed versions, from the version needs section: what the loader checks.
run_tool(needs readelf -V -W)
run_tool(symbols objdump -T)
set(in_needs FALSE)
foreach(line IN LISTS needs)
  if(line MATCHES "^Version needs section")
    set(in_needs TRUE)
  elseif(line MATCHES "section '")
    set(in_needs FALSE)
  elseif(in_needs AND line MATCHES "File: ([^ ]+)")
    set(library ${CMAKE_MATCH_1})
  elseif(in_needs AND line MATCHES "Name: ([^ ]+)")
    set(needed_version ${CMAKE_MATCH_1})
    # A family and a number (GLIBC_2.14); anything else (GLIBC_PRIVATE) has no limit.
    set(family ${needed_version})
    set(limit)
    if(needed_version MATCHES "^([A-Za-z]+)_([0-9.]+)$")
      set(family ${CMAKE_MATCH_1})
      set(version ${CMAKE_MATCH_2})
      foreach(entry IN LISTS BASELINE)
        if(entry MATCHES "^${family}_([0-9.]+)$")
          set(limit ${CMAKE_MATCH_1})
        endif()
      endforeach()
    endif()
    if(limit AND version VERSION_LESS_EQUAL limit)
      continue()
    endif()
    # Name the symbols that ask for it, so that the fix is plain.
    collect(users "\\(${needed_version}\\) +(.+)$" ${symbols})
    string(JOIN ", " users ${users})
    if(limit)
      list(APPEND problems "needs ${needed_version} of ${library}, above the baseline ${family}_${limit}, for: ${users}")
    else()
      list(APPEND problems "needs ${needed_version} of ${library}, which the baseline does not cover, for: ${users}")
    endif()
  endif()
endforeach()

# Exports: every defined dynamic symbol that is not local.
collect(exports "^[0-9a-f]+ [^l].......[^*][^ \t]*\t[0-9a-f]+ +[^ ]+ +(.+)$" ${symbols})
list(SORT exports)
if(NOT exports STREQUAL "getPlugins;registerPlugin")
  string(JOIN ", " listed ${exports})
  list(APPEND problems "exports ${listed}; only getPlugins and registerPlugin may leave it")
endif()

# The stack: a loader refuses an executable one where the host forbids it, and
# an object without a GNU_STACK header counts as executable.
run_tool(headers readelf -l -W)
collect(stack "^ *GNU_STACK .* ([RWE ]+) +0x[0-9a-f]+$" ${headers})
string(STRIP "${stack}" stack)
if(NOT stack)
  list(APPEND problems "has no GNU_STACK header, so its stack counts as executable")
elseif(stack MATCHES "E")
  list(APPEND problems "asks for an executable stack")
endif()

# Text relocations (code that is not position-independent), and the libraries it needs.
run_tool(dynamic readelf -d -W)
collect(text_relocations "(\\(TEXTREL\\)|\\(FLAGS\\).*TEXTREL)" ${dynamic})
if(text_relocations)
  list(APPEND problems "has text relocations")
endif()
collect(needed "\\(NEEDED\\).*\\[(.+)\\]" ${dynamic})
if(NOT needed MATCHES "(^|;)libGLEW\\.so")
  list(APPEND problems "does not need libGLEW: GLEW must be the host's shared library")
endif()

if(problems)
  string(JOIN "\n  " report ${problems})
  message(FATAL_ERROR "${PLUGIN} is not fit to ship on the runtime baseline (${BASELINE}):\n  ${report}")
endif()
message(STATUS "${PLUGIN}: within ${BASELINE}; exports ${exports}; stack ${stack}; needs ${needed}")
