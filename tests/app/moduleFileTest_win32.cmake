# The module shows its two functions to the host, and nothing else.
execute_process(COMMAND ${OBJDUMP} -p ${MODULE} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table.*" table "${headers}")
string(REGEX REPLACE "\n\n.*" "" table "${table}")
string(REGEX MATCHALL "\n[^\n]+" lines "${table}")
list(TRANSFORM lines REPLACE "^.*\\] *" "" OUTPUT_VARIABLE names)
if(NOT names STREQUAL "acrxEntryPoint;acrxGetApiVersion")
  message(FATAL_ERROR "${MODULE} exports: ${names}")
endif()
