# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

# The Qt that the dialogs are built with. Programs that link the library must load the same one.
set(SIGILDESK_QT 5 CACHE STRING "Qt of the dialogs: 5 (5.15 or later) or 6 (6.4 or later)")
set_property(CACHE SIGILDESK_QT PROPERTY STRINGS 5 6)
if(NOT SIGILDESK_QT MATCHES "^[56]$")
    message(FATAL_ERROR "SIGILDESK_QT is 5 or 6, not ${SIGILDESK_QT}")
endif()

# sigil_find_qt(component...): makes the targets Qt::component.
set(SIGILDESK_OLDEST_QT5 5.15)
set(SIGILDESK_OLDEST_QT6 6.4)
set(QT_DEFAULT_MAJOR_VERSION ${SIGILDESK_QT})
macro(sigil_find_qt)
    find_package(Qt${SIGILDESK_QT} ${SIGILDESK_OLDEST_QT${SIGILDESK_QT}} REQUIRED COMPONENTS ${ARGN})
endmacro()
