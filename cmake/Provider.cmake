# mod_foo_provider(<name> <sources>... [LIBRARIES <libraries>...])
# One provider: the folder's objects (provider_<name>, which tests of the module link) and the
# library mod_<name>, which is the entry points over the module and these objects.
function(mod_foo_provider name)
    cmake_parse_arguments(arg "" "" "LIBRARIES" ${ARGN})
    # Objects: the module calls what they define, and is linked after them.
    add_library(provider_${name} OBJECT ${arg_UNPARSED_ARGUMENTS})
    mod_foo_target(provider_${name})
    target_link_libraries(provider_${name} PUBLIC ca_module ${arg_LIBRARIES})

    set(library mod_${name})
    set(exports ${PROJECT_SOURCE_DIR}/module/mod_foo.map)
    add_library(${library} SHARED ${PROJECT_SOURCE_DIR}/module/mod_foo.cpp)
    mod_foo_target(${library})
    add_dependencies(${library} codes_header_file)  # installed beside it
    target_link_libraries(${library} PRIVATE provider_${name} ca_module Qt5::Widgets)
    target_link_options(${library} PRIVATE -Wl,--version-script=${exports})
    if(NOT MOD_FOO_SANITIZE)
        # The sanitizers' own symbols come from the program that loads the library.
        target_link_options(${library} PRIVATE -Wl,--no-undefined)
    endif()
    set_target_properties(${library} PROPERTIES
        VERSION 1
        SOVERSION 1
        LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/module  # all providers side by side
        LINK_DEPENDS ${exports})
endfunction()
