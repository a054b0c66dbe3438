# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

# sigil_add_test(NAME SOURCES file... [LAYERS layer...] [LIBRARIES target...] [ENVIRONMENT VAR=value...]
#                [TIMEOUT seconds])
#
# A GoogleTest program that ctest runs as NAME, linked with the objects of the named layers (name every layer that
# the test needs, lower ones too). SIGILDESK_LIBRARY_FOLDER and SIGILDESK_TEST_DATA are defined for it.
function(sigil_add_test name)
    cmake_parse_arguments(test "" "TIMEOUT" "SOURCES;LAYERS;LIBRARIES;ENVIRONMENT" ${ARGN})
    find_package(GTest REQUIRED)
    list(TRANSFORM test_LAYERS PREPEND sigil_)
    add_executable(${name} ${test_SOURCES})
    target_link_libraries(${name} PRIVATE ${test_LAYERS} ${test_LIBRARIES} test_support GTest::gmock GTest::gtest_main)
    target_compile_definitions(${name} PRIVATE
        SIGILDESK_LIBRARY_FOLDER="${SIGILDESK_LIBRARY_FOLDER}"
        SIGILDESK_TEST_DATA="${CMAKE_CURRENT_SOURCE_DIR}/data")
    add_test(NAME ${name} COMMAND ${name})
    if(NOT test_TIMEOUT)
        set(test_TIMEOUT 300)
    endif()
    # The machine's plug-ins come and go with thread-local storage of their own, which the leak check must not look for
    # when they are gone.
    if(SIGILDESK_SANITIZE MATCHES address)
        list(APPEND test_ENVIRONMENT ASAN_OPTIONS=intercept_tls_get_addr=0)
    endif()
    # Sanitizer builds compile without optimization, where reading headers is what takes longest. Qt's own flags need
    # another form of them.
    if(SIGILDESK_SANITIZE AND NOT "${test_LAYERS};${test_LIBRARIES}" MATCHES "sigil_ui|Qt5")
        target_precompile_headers(${name} REUSE_FROM test_headers)
    endif()
    set_tests_properties(${name} PROPERTIES TIMEOUT ${test_TIMEOUT} ENVIRONMENT "${test_ENVIRONMENT}")
endfunction()
