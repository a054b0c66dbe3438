# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

# sigil_add_fuzz(NAME SOURCES file... [LAYERS layer...] [LIBRARIES target...])
#
# A fuzz target: SOURCES define LLVMFuzzerTestOneInput. With SIGILDESK_FUZZ it is a libFuzzer program; in a test build
# the same code runs once over every file of fuzz/corpus/NAME, as the plain test fuzz_NAME.
function(sigil_add_fuzz name)
    cmake_parse_arguments(fuzz "" "" "SOURCES;LAYERS;LIBRARIES" ${ARGN})
    list(TRANSFORM fuzz_LAYERS PREPEND sigil_)
    add_executable(fuzz_${name} ${fuzz_SOURCES})
    target_link_libraries(fuzz_${name} PRIVATE sigil_code ${fuzz_LAYERS} ${fuzz_LIBRARIES})
    if(SIGILDESK_FUZZ)
        target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
    else()
        target_sources(fuzz_${name} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz/replay.cpp)
        add_test(NAME fuzz_${name} COMMAND fuzz_${name} ${PROJECT_SOURCE_DIR}/fuzz/corpus/${name})
    endif()
endfunction()
