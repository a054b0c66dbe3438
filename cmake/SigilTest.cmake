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
    # Without a named zone the C library reads its own anew for every time, and replaces what it read before: under a lock of
    # its own that the sanitizer does not see and would call a race.
    if(SIGILDESK_SANITIZE MATCHES thread)
        list(APPEND test_ENVIRONMENT TZ=Asia/Seoul)
    endif()
    # Qt's flags need another form of them.
    if(SIGILDESK_PRECOMPILE_HEADERS AND test_LIBRARIES MATCHES "Qt::Test")
        target_precompile_headers(${name} REUSE_FROM ui_test_headers)
    elseif(SIGILDESK_PRECOMPILE_HEADERS AND NOT test_LAYERS MATCHES "sigil_ui")
        target_precompile_headers(${name} REUSE_FROM test_headers)
    endif()
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${test_TIMEOUT}
        COST ${test_TIMEOUT} # what may take long begins first
        ENVIRONMENT "${test_ENVIRONMENT}")
endfunction()

# sigil_add_test_headers(NAME HEADER [LIBRARIES target...])
#
# The headers that nearly every test includes, read once for all tests that are compiled with the flags of these libraries:
# without optimization, reading headers is what takes longest. Builds without SIGILDESK_PRECOMPILE_HEADERS, such as the
# release preset's, tell whether a test includes what it needs.
function(sigil_add_test_headers name header)
    cmake_parse_arguments(headers "" "" "LIBRARIES" ${ARGN})
    find_package(GTest REQUIRED)
    # A program, because the tests are compiled as programs.
    add_executable(${name} ${PROJECT_SOURCE_DIR}/tests/support/precompiled.cpp)
    target_link_libraries(${name} PRIVATE ${headers_LIBRARIES} test_support GTest::gmock GTest::gtest_main)
    target_precompile_headers(${name} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:${CMAKE_CURRENT_SOURCE_DIR}/${header}>)
endfunction()

# sigil_bound_at_once(NAME)
#
# Has the loader bind the functions of the test program lazily, and runs the test once more with all of them bound when it
# starts: binding a function at its first call saves the registers, with what they hold, to the stack.
function(sigil_bound_at_once name)
    target_link_libraries(${name} PRIVATE -Wl,-z,lazy) # behind the flag that every program has
    add_test(NAME ${name}_bound_at_once COMMAND ${name})
    get_test_property(${name} ENVIRONMENT environment)
    get_test_property(${name} TIMEOUT timeout)
    if(NOT environment)
        set(environment "")
    endif()
    set_tests_properties(${name}_bound_at_once PROPERTIES
        TIMEOUT ${timeout} ENVIRONMENT "${environment};LD_BIND_NOW=1")
endfunction()
