# The model runs in a kernel: of its surroundings it may ask for the four memory functions, and nothing may have to run
# before it is used.

function(run output)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE text ERROR_VARIABLE error RESULT_VARIABLE result)
  if(NOT result EQUAL 0 OR text STREQUAL "")
    message(FATAL_ERROR "${ARGN} failed (${result}): ${error}\nBuild the target vqs_simulator_model first.")
  endif()
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

# Every symbol of every object: undefined ones that another object of the archive defines are fine.
run(symbols ${NM} -P ${ARCHIVE})
string(REPLACE "\n" ";" lines "${symbols}")
set(undefined "")
set(defined "")
foreach(line IN LISTS lines)
  if(line MATCHES "^([^ ]+) U")
    list(APPEND undefined ${CMAKE_MATCH_1})
  elseif(line MATCHES "^([^ ]+) [A-TV-Zuvwi] ")
    list(APPEND defined ${CMAKE_MATCH_1})
  endif()
endforeach()
list(REMOVE_DUPLICATES undefined)
if(NOT defined)
  message(FATAL_ERROR "${NM} lists no symbol that ${ARCHIVE} defines: this check does not understand its output.")
endif()
list(REMOVE_ITEM undefined ${defined} memcpy memmove memset memcmp)
# Control flow guard, which the archive for Windows programs has and the kernel's own build of the model has not.
list(REMOVE_ITEM undefined __guard_check_icall_fptr __guard_dispatch_icall_fptr)
if(undefined)
  list(JOIN undefined "\n  " names)
  message(FATAL_ERROR
    "The simulator's model needs symbols that a kernel does not have:\n  ${names}\n"
    "Find who needs them with: ${NM} -A -C -u ${ARCHIVE}\n"
    "Then take what it uses from simulator/model, or write it there: no heap, no exceptions, no library calls but "
    "memcpy, memmove, memset and memcmp. __chkstk_ms means a function with too large a frame: keep records out of "
    "local variables.")
endif()

run(sections ${OBJDUMP} -h ${ARCHIVE})
string(REGEX MATCHALL "\\.(init_array|ctors|preinit_array|tls|tbss|tdata)[^ ]*" initialisers "${sections}")
# Object formats of Windows carry empty sections of that kind: only those with content count.
string(REGEX MATCHALL "\\.(init_array|ctors|preinit_array|tbss|tdata)[^ ]* +0*[1-9a-f][0-9a-f]* " initialisers "${sections}")
if(initialisers)
  message(FATAL_ERROR
    "The simulator's model has code or data that must run or be set up before it is used: ${initialisers}\n"
    "Find it with: ${OBJDUMP} -h ${ARCHIVE}\n"
    "Make every object at namespace scope in simulator/model constexpr, or a member of the driver.")
endif()
