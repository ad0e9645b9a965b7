# libcurl is loaded at run time from the file "Qlocurl.so" in the directory of the running
# executable. The functions here put that file there: a link to the system's libcurl.so.4.

# The run-time library alone is enough: no headers and no libcurl.so of a development package.
find_library(MOD_FOO_LIBCURL NAMES libcurl.so.4 libcurl-gnutls.so.4
    DOC "The libcurl that Qlocurl.so links to")

# Makes the link beside the built executable `target`.
function(mod_foo_curl_link target)
    if(NOT MOD_FOO_LIBCURL)
        message(WARNING "libcurl.so.4 was not found: ${target} will not find Qlocurl.so")
        return()
    endif()
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_COMMAND} -E create_symlink
            "${MOD_FOO_LIBCURL}" "$<TARGET_FILE_DIR:${target}>/Qlocurl.so"
        VERBATIM)
endfunction()

# Makes the link in `directory` (relative to the prefix) at install time.
function(mod_foo_install_curl_link directory)
    if(NOT MOD_FOO_LIBCURL)
        return()
    endif()
    set(link "${CMAKE_CURRENT_BINARY_DIR}/install/Qlocurl.so")
    file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/install")
    file(CREATE_LINK "${MOD_FOO_LIBCURL}" "${link}" SYMBOLIC)
    install(FILES "${link}" DESTINATION "${directory}")
endfunction()
