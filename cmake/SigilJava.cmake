# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

# sigil_java_program(VARIABLE SOURCE)
#
# Compiles one Java source against Bouncy Castle, for tests, as the target java_NAME after the file. VARIABLE receives the command
# line of the program; it is empty on a machine without a JDK or the jars, where there is no target.
function(sigil_java_program variable source)
    set(${variable} "" PARENT_SCOPE)
    find_program(SIGILDESK_JAVAC javac)
    find_program(SIGILDESK_JAVA java)
    set(jars "")
    foreach(jar bcprov bcpkix bcutil)
        find_file(SIGILDESK_JAR_${jar} ${jar}.jar PATHS /usr/share/java)
        list(APPEND jars ${SIGILDESK_JAR_${jar}})
    endforeach()
    if(NOT SIGILDESK_JAVAC OR NOT SIGILDESK_JAVA OR "${jars}" MATCHES NOTFOUND)
        message(STATUS "No JDK with Bouncy Castle (scripts/packages.txt): the tests with ${source} are left out")
        return()
    endif()
    get_filename_component(name ${source} NAME_WE)
    string(REPLACE ";" ":" jars "${jars}")
    set(classes ${CMAKE_CURRENT_BINARY_DIR}/${name}.classes)
    add_custom_command(OUTPUT ${classes}/${name}.class
        COMMAND ${SIGILDESK_JAVAC} -nowarn -cp ${jars} -d ${classes} ${CMAKE_CURRENT_SOURCE_DIR}/${source}
        DEPENDS ${source}
        VERBATIM)
    add_custom_target(java_${name} DEPENDS ${classes}/${name}.class)
    set(${variable} "${SIGILDESK_JAVA} -XX:TieredStopAtLevel=1 -Xshare:auto -cp ${jars}:${classes} ${name}" PARENT_SCOPE)
endfunction()
