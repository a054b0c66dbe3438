# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

# sigil_install_pc(TEMPLATE)
#
# Installs the pkg-config file that TEMPLATE, a name that ends in .pc.in, makes. It finds the prefix from its own place,
# unless a packager put the library out of the prefix.
function(sigil_install_pc template)
    if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
        set(pc_prefix ${CMAKE_INSTALL_PREFIX})
    else()
        file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
        set(pc_prefix \${pcfiledir}/${prefix_from_pc})
    endif()
    foreach(folder LIBDIR INCLUDEDIR)
        set(pc_${folder} ${CMAKE_INSTALL_${folder}})
        if(NOT IS_ABSOLUTE "${pc_${folder}}")
            string(PREPEND pc_${folder} \${prefix}/)
        endif()
    endforeach()
    string(REGEX REPLACE "\\.in$" "" file ${template})
    configure_file(${template} ${file} @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${file} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
