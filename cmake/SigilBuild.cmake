# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

# How every target of the project is built.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# What a host may use is marked with SIGIL_EXPORT; all else stays inside.
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# sigil_flags: how everything here is compiled and linked. sigil_code: the same, with the two roots of the includes. Every
# target links one of them; nothing is set for whole folders, so a project that takes this one in keeps its own flags.
add_library(sigil_flags INTERFACE)
target_compile_options(sigil_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wformat=2 -Wundef
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
    $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>
    $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>
    -fstack-protector-strong)
target_link_options(sigil_flags INTERFACE -Wl,-z,relro,-z,now)
# Several sources compiled as one are no headers of each other, and a name of one's own may be local in another.
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(sigil_flags INTERFACE
        -Wshadow=local $<$<COMPILE_LANGUAGE:CXX>:-Wno-subobject-linkage>)
elseif(NOT CMAKE_UNITY_BUILD)
    target_compile_options(sigil_flags INTERFACE -Wshadow)
endif()

add_library(sigil_code INTERFACE)
target_include_directories(sigil_code INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)
target_link_libraries(sigil_code INTERFACE sigil_flags)

# What is shipped stops at an overrun instead of going on with it.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fcf-protection SIGILDESK_HAS_CF_PROTECTION)
target_compile_options(sigil_flags INTERFACE
    $<$<NOT:$<CONFIG:Debug>>:-fstack-clash-protection>
    $<$<AND:$<NOT:$<CONFIG:Debug>>,$<BOOL:${SIGILDESK_HAS_CF_PROTECTION}>>:-fcf-protection>)
target_compile_definitions(sigil_flags INTERFACE $<$<NOT:$<CONFIG:Debug>>:_GLIBCXX_ASSERTIONS>)
# The checked functions need an optimizer, and would hide the plain ones from a sanitizer.
if(NOT SIGILDESK_SANITIZE AND NOT SIGILDESK_FUZZ)
    target_compile_options(sigil_flags INTERFACE
        $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE>
        $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-D_FORTIFY_SOURCE=3>)
endif()

if(SIGILDESK_WARNINGS_AS_ERRORS)
    target_compile_options(sigil_flags INTERFACE -Werror)
endif()

if(SIGILDESK_SANITIZE)
    # Optimizing takes longer than it saves the tests. A report needs lines and functions; describing every variable too
    # takes a fifth of the build.
    target_compile_options(sigil_flags INTERFACE
        -fsanitize=${SIGILDESK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all -g1 -O0)
    target_link_options(sigil_flags INTERFACE -fsanitize=${SIGILDESK_SANITIZE})
endif()
# It takes for unwritten what the C++ library's own code writes: so none of the strings' functions is left there.
if(SIGILDESK_SANITIZE MATCHES memory)
    target_compile_definitions(sigil_flags INTERFACE _GLIBCXX_EXTERN_TEMPLATE=0)
endif()
# It knows which calls are right when it sees the whole program.
if(SIGILDESK_SANITIZE MATCHES cfi)
    target_compile_options(sigil_flags INTERFACE -flto=thin -fno-sanitize-trap=cfi)
    target_link_options(sigil_flags INTERFACE -flto=thin -fuse-ld=lld -fno-sanitize-trap=cfi)
endif()

# The fuzzer learns from the code under test, so the layers are instrumented too, not only the targets. Its runtime is in
# the programs, where the libraries find it when they are loaded.
if(SIGILDESK_FUZZ)
    target_compile_options(sigil_flags INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined)
    target_link_options(sigil_flags INTERFACE -fsanitize=address,undefined)
else()
    target_link_options(sigil_flags INTERFACE -Wl,--no-undefined)
endif()

# Clang's counters of regions and conditions as they stand in the source. They lie in the file itself, mapped (%c), so that
# what a killed process and an unloaded library did counts too; a file for each program and library (%m).
if(SIGILDESK_COVERAGE)
    set(profile -fprofile-instr-generate=${PROJECT_BINARY_DIR}/profiles/%c%m.profraw)
    target_compile_options(sigil_flags INTERFACE
        ${profile} -fprofile-update=atomic -fcoverage-mapping "SHELL:-mllvm -runtime-counter-relocation" -g0)
    target_link_options(sigil_flags INTERFACE ${profile})
endif()

# The build tree holds the same ready-to-use library folder that is installed: lib/sigildesk with the open
# toolkit, the settings files and the language files.
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(SIGILDESK_LIBRARY_FOLDER ${PROJECT_BINARY_DIR}/lib/sigildesk)

# No program names the build tree, so that two of them give the same bytes.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
