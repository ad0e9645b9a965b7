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

# The wait for log calls is set free in the child by hand.
set(plain "common/(ForkMutex|LogClaim)\\.(h|cpp)")
set(wrong "")
foreach(folder common asn1 records module)
    file(GLOB_RECURSE files RELATIVE ${SOURCE_DIR}
        ${SOURCE_DIR}/${folder}/*.h ${SOURCE_DIR}/${folder}/*.cpp)
    list(FILTER files EXCLUDE REGEX "${plain}")
    foreach(file IN LISTS files)
        file(STRINGS ${SOURCE_DIR}/${file} locks
            REGEX "std::(recursive_|shared_|timed_)*mutex|pthread_(mutex|rwlock|spin)_")
        if(locks)
            string(APPEND wrong "\n${file}: ${locks}")
        endif()
    endforeach()
endforeach()
if(wrong)
    message(FATAL_ERROR "locks that a fork may leave locked:${wrong}")
endif()
