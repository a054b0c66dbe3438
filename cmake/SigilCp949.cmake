# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

# sigil_cp949_files(TARGET file...)
#
# Turns UTF-8 sources into the CP949 files that the library reads at run time, in the build tree's library folder,
# and installs them. A character that CP949 does not have fails the build.
function(sigil_cp949_files target)
    find_program(ICONV iconv REQUIRED)
    set(outputs)
    foreach(file ${ARGN})
        get_filename_component(name ${file} NAME)
        set(output ${SIGILDESK_LIBRARY_FOLDER}/${name})
        add_custom_command(
            OUTPUT ${output}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${SIGILDESK_LIBRARY_FOLDER}
            COMMAND ${ICONV} -f UTF-8 -t CP949 -o ${output} ${CMAKE_CURRENT_SOURCE_DIR}/${file}
            DEPENDS ${file}
            COMMENT "Converting ${name} to CP949"
            VERBATIM)
        list(APPEND outputs ${output})
    endforeach()
    add_custom_target(${target} ALL DEPENDS ${outputs})
    install(FILES ${outputs} DESTINATION ${CMAKE_INSTALL_LIBDIR}/sigildesk)
endfunction()
