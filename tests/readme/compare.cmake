# Runs PROGRAM and compares what it prints with the file EXPECTED. The pages hold what is printed in UTF-8.
set(ENV{LC_ALL} C.UTF-8)
execute_process(COMMAND "${PROGRAM}" OUTPUT_VARIABLE printed ERROR_VARIABLE complaints COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "\r\n" "\n" printed "${printed}")
file(READ "${EXPECTED}" expected)
if(NOT printed STREQUAL expected OR NOT complaints STREQUAL "")
    message(FATAL_ERROR "printed:\n${printed}expected:\n${expected}standard error:\n${complaints}")
endif()
