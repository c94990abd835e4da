# Writes an INF file with the date of the sources, in any folder and on any day the same: that of SOURCE_DATE_EPOCH, else
# that of the last commit, else RELEASED, in seconds since 1970.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  set(seconds $ENV{SOURCE_DATE_EPOCH})
else()
  execute_process(COMMAND git -C ${SOURCES} log -1 --format=%ct
    OUTPUT_VARIABLE seconds OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE result)
endif()
if(NOT seconds MATCHES "^[0-9]+$")
  set(seconds ${RELEASED})
endif()
set(ENV{SOURCE_DATE_EPOCH} ${seconds})
string(TIMESTAMP DRIVER_DATE "%m/%d/%Y" UTC)
configure_file(${TEMPLATE} ${OUTPUT} @ONLY NEWLINE_STYLE CRLF)
