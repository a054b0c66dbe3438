# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

# sigil_list_declared(FILE HEADER...)
#
# Writes the demangled symbols of the functions that the headers mark with SIGIL_EXPORT into FILE, one a line. For headers
# of plain functions with C++ linkage whose parameters are all named.
function(sigil_list_declared file)
    set(symbols "")
    foreach(header ${ARGN})
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
        file(READ ${header} text)
        string(REGEX MATCHALL "SIGIL_EXPORT [a-z]+ [A-Za-z0-9_]+\\([^)]*\\)" declarations "${text}")
        foreach(declaration IN LISTS declarations)
            string(REGEX REPLACE "[ \n]+" " " declaration "${declaration}")
            string(REGEX REPLACE "^SIGIL_EXPORT [a-z]+ " "" declaration "${declaration}")
            string(REGEX REPLACE " [A-Za-z0-9_]+([,)])" "\\1" symbol "${declaration}")
            string(REPLACE "( " "(" symbol "${symbol}")
            string(APPEND symbols "${symbol}\n")
        endforeach()
    endforeach()
    file(CONFIGURE OUTPUT ${file} @ONLY CONTENT "${symbols}")
endfunction()

# sigil_export_only(TARGET LIST...)
#
# Makes the listed symbols (files with one demangled symbol a line) the whole interface of TARGET. What is visible by
# other attributes, such as instances of the standard library's and Qt's templates, stays inside.
function(sigil_export_only target)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${ARGN})
    set(c_names "")
    set(cpp_names "")
    foreach(list ${ARGN})
        file(STRINGS ${list} symbols)
        foreach(symbol IN LISTS symbols)
            if(symbol MATCHES "^[A-Za-z0-9_]+$")
                string(APPEND c_names "    ${symbol};\n")
            else()
                string(APPEND cpp_names "      \"${symbol}\";\n")
            endif()
        endforeach()
    endforeach()
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
    file(CONFIGURE OUTPUT ${script} @ONLY CONTENT
        "{\n  global:\n${c_names}    extern \"C++\" {\n${cpp_names}    };\n  local: *;\n};\n")
    target_link_options(${target} PRIVATE -Wl,--version-script=${script})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${script})
endfunction()
