# The documents list the keys that the tables have, and the ranges of numbers beside them.
# Fails with the list of those that do not stand there. SOURCE_DIR: the project's root.

cmake_policy(VERSION 3.25)

set(missing "")

# Each row of a table that matches `pattern`, whose first group is the key and whose others, where
# there are any, are a range, has a line of the document that names the key and the range.
function(expect_rows table pattern document)
    file(STRINGS ${SOURCE_DIR}/${table} rows REGEX "^${pattern}")
    file(STRINGS ${SOURCE_DIR}/docs/${document} lines)
    if(NOT rows)
        message(FATAL_ERROR "no rows like ${pattern} in ${table}")
    endif()
    foreach(row IN LISTS rows)
        string(REGEX MATCH "^${pattern}" row "${row}")
        set(key ${CMAKE_MATCH_1})
        set(range "")
        if(CMAKE_MATCH_COUNT EQUAL 3)
            set(range "${CMAKE_MATCH_2} to ${CMAKE_MATCH_3}")
        endif()
        set(found ${lines})
        list(FILTER found INCLUDE REGEX "[`.\"]${key}[`\"]")
        if(range)
            list(FILTER found INCLUDE REGEX "${range}|as above")
        endif()
        if(NOT found)
            set(missing "${missing}\n${table}: ${key} ${range} is not in docs/${document}")
        endif()
    endforeach()
    set(missing "${missing}" PARENT_SCOPE)
endfunction()

set(word "([A-Za-z0-9]+)")
expect_rows(common/SettingTable.inc "CA_NUMBER\\(${word}, ${word}, ${word}," service-config.md)
expect_rows(common/SettingTable.inc "CA_[FT][A-Z]+\\(${word}," service-config.md)
expect_rows(common/PkiSettingTable.inc "CA_PKI_NUMBER\\(${word}, ${word}, ${word}," pki-config.md)
expect_rows(common/PkiSettingTable.inc "CA_PKI_[FCTR][A-Z]+\\(${word}," pki-config.md)
expect_rows(module/KeyTable.inc "CA_[A-Z]+_MEMBER\\(\"${word}\"," protocol.md)
expect_rows(module/KeyTable.inc "CA_REQUEST_KEY\\(kKey[A-Za-z]+, \"${word}\"," protocol.md)
if(missing)
    message(FATAL_ERROR "keys that the documents do not have:${missing}")
endif()
