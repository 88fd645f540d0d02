# Compares what the shared library exports with the reviewed list. After a wanted change of the interface, write the
# list anew and review the difference:
#
#     cmake -D LIBRARY=build/release/lib/libmorvane.so -D NM=nm -D LIST=tests/build/exportedSymbols.txt
#           -D UPDATE=ON -P tests/build/exportedSymbols.cmake

cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${NM} -D --defined-only -C ${LIBRARY} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)

# The kind of a symbol is the compiler's choice, and a constructor has several symbols of one name.
string(REGEX MATCHALL "[^\n]+" lines "${output}")
list(TRANSFORM lines REPLACE "^[0-9a-f]* +[A-Za-z] " "")
list(REMOVE_DUPLICATES lines)
list(SORT lines)

if(UPDATE)
    string(JOIN "\n" text ${lines})
    file(WRITE ${LIST} "${text}\n")
    return()
endif()

file(STRINGS ${LIST} reviewed)
set(added ${lines})
list(REMOVE_ITEM added ${reviewed})
set(missing ${reviewed})
list(REMOVE_ITEM missing ${lines})
if(added OR missing)
    string(JOIN "\n" added ${added})
    string(JOIN "\n" missing ${missing})
    message("Exported, but not in the list:\n${added}\n\nIn the list, but not exported:\n${missing}\n")
    message(FATAL_ERROR "The exported symbols are not those of ${LIST}")
endif()
list(LENGTH lines count)
message("${count} exported symbols, all in the list")
