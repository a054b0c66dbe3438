# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

# sigil_add_fuzz(GROUP TARGETS target... [SOURCES file...] [LAYERS layer...] [LIBRARIES target...] [NEEDS target...])
#
# The program fuzz_GROUP of fuzz targets: each stands in TARGET.cpp as FUZZ_TARGET(GROUP_TARGET, input). SOURCES are what they
# share, and NEEDS is what they load while they run. With SIGILDESK_FUZZ it is a libFuzzer program; in a test build the
# same code runs once over every file of fuzz/corpus/GROUP_TARGET, as the plain test fuzz_GROUP_TARGET.
function(sigil_add_fuzz group)
    cmake_parse_arguments(fuzz "" "" "TARGETS;SOURCES;LAYERS;LIBRARIES;NEEDS" ${ARGN})
    list(TRANSFORM fuzz_TARGETS APPEND .cpp OUTPUT_VARIABLE sources)
    list(TRANSFORM fuzz_LAYERS PREPEND sigil_)
    add_executable(fuzz_${group} ${sources} ${fuzz_SOURCES})
    target_link_libraries(fuzz_${group} PRIVATE sigil_code ${fuzz_LAYERS} ${fuzz_LIBRARIES})
    target_compile_definitions(fuzz_${group} PRIVATE
        SIGILDESK_LIBRARY_FOLDER="${SIGILDESK_LIBRARY_FOLDER}"
        SIGILDESK_FUZZ_CORPUS="${PROJECT_SOURCE_DIR}/fuzz/corpus")
    if(fuzz_NEEDS)
        add_dependencies(fuzz_${group} ${fuzz_NEEDS})
    endif()
    if(SIGILDESK_FUZZ)
        target_sources(fuzz_${group} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz/libfuzzer.cpp)
        target_link_options(fuzz_${group} PRIVATE -fsanitize=fuzzer)
        return()
    endif()
    target_sources(fuzz_${group} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz/replay.cpp)
    foreach(target IN LISTS fuzz_TARGETS)
        set(name ${group}_${target})
        add_test(NAME fuzz_${name} COMMAND fuzz_${group} ${PROJECT_SOURCE_DIR}/fuzz/corpus/${name})
    endforeach()
endfunction()
