# Compares what the library at LIBRARY exports with the interface, and the name it goes by with SONAME.

set(expected CM_Free CM_Init CM_ProcessClientRequest _Z17createCertInfoDlgv)

execute_process(COMMAND ${NM} -D --defined-only -j ${LIBRARY}
    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(STRIP "${symbols}" symbols)
string(REPLACE "\n" ";" symbols "${symbols}")
list(SORT symbols)
if(NOT symbols STREQUAL expected)
    message(FATAL_ERROR "exported: ${symbols}\nexpected: ${expected}")
endif()

execute_process(COMMAND ${READELF} -d ${LIBRARY}
    OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "." "\\." name "${SONAME}")
if(NOT dynamic MATCHES "SONAME[^\n]*\\[${name}\\]")
    message(FATAL_ERROR "the SONAME is not ${SONAME}")
endif()
