# The pkg-config file. It finds the installation from where it lies itself, so that it is true under
# every prefix given to "cmake --install", below DESTDIR and in the package, whatever the folder of
# libraries is called. Folders that were configured as absolute paths are named as they are.

# Writes `file`, which is to be installed into <libdir>/pkgconfig.
function(mod_foo_pkg_config file)
    if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
        set(pc_prefix "${CMAKE_INSTALL_PREFIX}")
        set(pc_libdir "${CMAKE_INSTALL_LIBDIR}")
    else()
        file(RELATIVE_PATH up "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
        string(REGEX REPLACE "/$" "" up "${up}")
        set(pc_prefix "\${pcfiledir}/${up}")
        set(pc_libdir "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
    endif()
    if(IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
        set(pc_includedir "${CMAKE_INSTALL_INCLUDEDIR}")
    else()
        set(pc_includedir "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
    endif()
    configure_file(${PROJECT_SOURCE_DIR}/cmake/mod_foo.pc.in ${file} @ONLY)
endfunction()
