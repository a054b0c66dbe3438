# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

# sigil_add_layer(NAME SOURCES file... [USES layer...] [LIBRARIES target...])
#
# One layer of the library as a target `sigil_NAME`. USES names the layers below that it may call; tests and the
# shared library link the same objects. Headers are included from the top of the tree ("foundation/hex.h") and from
# include/ (<sigildesk/util.h>).
function(sigil_add_layer name)
    cmake_parse_arguments(layer "" "" "SOURCES;USES;LIBRARIES" ${ARGN})
    add_library(sigil_${name} OBJECT ${layer_SOURCES})
    list(TRANSFORM layer_USES PREPEND sigil_)
    target_link_libraries(sigil_${name} PUBLIC sigil_code ${layer_USES} ${layer_LIBRARIES})
endfunction()
