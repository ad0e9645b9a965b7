# Includes run common <- asn1 <- records <- module <- providers, and no provider knows another. The
# host tool knows the module by its C header only; beside that it uses the ASN.1 engine for its
# listing, and the helpers named here.
# Fails with the list of the lines that run the wrong way. SOURCE_DIR: the project's root.

set(not_in_common asn1 records module providers host)
set(not_in_asn1 records module providers host)
set(not_in_records module providers host)
set(not_in_module providers host)
set(not_in_host common records providers)
set(provider_folders providers/foo providers/openssl)
foreach(folder IN LISTS provider_folders)
    set(not_in_${folder} host ${provider_folders})
    list(REMOVE_ITEM not_in_${folder} ${folder})
endforeach()

set(host_helpers "\"(common/(ConfigFileParser|Encode|ErrorCodes|ErrorMessageHelper|Exception|HeapPtr|Hex|HiddenCharacters|Json|Lng|Log|PKIConfigFileParser|ZonedTime|inifile)|records/(Payload|RecordLabels|objects/[A-Za-z]+|text/(Elements|TextLines|VisibleText)))\\.h\"")

set(wrong "")
foreach(folder common asn1 records module host ${provider_folders})
    file(GLOB_RECURSE files RELATIVE ${SOURCE_DIR}
        ${SOURCE_DIR}/${folder}/*.h ${SOURCE_DIR}/${folder}/*.cpp ${SOURCE_DIR}/${folder}/*.inc)
    if(NOT files AND NOT folder STREQUAL "host")
        message(FATAL_ERROR "no sources in ${SOURCE_DIR}/${folder}")
    endif()
    list(JOIN not_in_${folder} "|" forbidden)
    foreach(file IN LISTS files)
        file(STRINGS ${SOURCE_DIR}/${file} includes REGEX "^[ \t]*#[ \t]*include[ \t]*\"")
        if(folder STREQUAL "host")
            list(FILTER includes EXCLUDE REGEX "${host_helpers}")
        endif()
        foreach(line IN LISTS includes)
            if(line MATCHES "\"(${forbidden})/" OR line MATCHES "\"\\.\\./"
               OR (folder STREQUAL "host" AND line MATCHES "\"module/"
                   AND NOT line MATCHES "\"module/mod_foo\\.h\""))
                string(APPEND wrong "\n${file}: ${line}")
            endif()
        endforeach()
        # Widgets stay with those who open windows: the module's, and the host tool's viewer command.
        if(NOT folder STREQUAL "module" AND NOT file MATCHES "^host/(GuiApplication|ViewCommand)\\.")
            file(STRINGS ${SOURCE_DIR}/${file} widgets
                REGEX "#[ \t]*include[ \t]*<(QApplication|QDialog|QLabel|QMessageBox|QWidget)>")
            if(widgets)
                string(APPEND wrong "\n${file}: ${widgets}")
            endif()
        endif()
    endforeach()
endforeach()
if(wrong)
    message(FATAL_ERROR "includes that run the wrong way:${wrong}")
endif()
