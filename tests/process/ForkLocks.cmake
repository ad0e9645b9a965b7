# What a child of fork() cannot do without: every lock of the library is a ca::CForkMutex, and no
# local static value is made at its first use, under a guard that another thread may hold.
# NM: the program; LIBRARY: the built library; SOURCE_DIR: the project's root.

execute_process(COMMAND ${NM} --demangle ${LIBRARY}
    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
if(NOT symbols MATCHES "CForkMutex")
    message(FATAL_ERROR "no symbols in ${LIBRARY}")
endif()
string(REGEX MATCHALL "guard variable for [^\n]*" guards "${symbols}")
if(guards)
    list(JOIN guards "\n" guards)
    message(FATAL_ERROR "local static values; see ca::CLazy:\n${guards}")
endif()

set(wrong "")
# Notes the lines of the library's sources that match, but for files of the given names.
function(refuse regex files_that_may hint)
    foreach(folder common asn1 records module providers)
        file(GLOB_RECURSE files RELATIVE ${SOURCE_DIR}
            ${SOURCE_DIR}/${folder}/*.h ${SOURCE_DIR}/${folder}/*.cpp)
        list(FILTER files EXCLUDE REGEX "${files_that_may}")
        foreach(file IN LISTS files)
            file(STRINGS ${SOURCE_DIR}/${file} lines REGEX "${regex}")
            if(lines)
                string(APPEND wrong "\n${file}: ${lines}; see ${hint}")
            endif()
        endforeach()
    endforeach()
    set(wrong "${wrong}" PARENT_SCOPE)
endfunction()

# The wait for log calls is set free in the child by hand.
refuse("std::(recursive_|shared_|timed_)*mutex|pthread_(mutex|rwlock|spin)_"
    "common/(ForkMutex|LogClaim)\\.(h|cpp)" "ca::CForkMutex")
# What formats wide texts or converts them by the locale is inside of glibc's lock over character
# sets meanwhile.
refuse("to_wstring\\(|v?s?wprintf\\(|mbs?r?towcs?\\(|wcs?r?tombs?\\("
    "common/(DecimalText|Encode|Log|StdStr|WideTextLock)\\.(h|cpp)"
    "ca::DecimalText, ca::CWideTextLock")
if(wrong)
    message(FATAL_ERROR "locks that a fork may leave locked:${wrong}")
endif()
