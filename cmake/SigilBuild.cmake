# Flags that every target of the project gets.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# What a host may use is marked with SIGIL_EXPORT; all else stays inside.
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

add_compile_options(
    -Wall -Wextra -Wpedantic -Wshadow -Wformat=2 -Wundef
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
    $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>
    $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>
    -fstack-protector-strong)
add_link_options(-Wl,--no-undefined -Wl,-z,relro,-z,now)

if(SIGILDESK_WARNINGS_AS_ERRORS)
    add_compile_options(-Werror)
endif()

if(SIGILDESK_SANITIZE)
    add_compile_options(-fsanitize=${SIGILDESK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all -O1)
    add_link_options(-fsanitize=${SIGILDESK_SANITIZE})
endif()

# The fuzzer learns from the code under test, so the layers are instrumented too, not only the targets.
if(SIGILDESK_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined)
    add_link_options(-fsanitize=address,undefined)
endif()

if(SIGILDESK_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()

# The build tree holds the same ready-to-use library folder that is installed: lib/sigildesk with the open
# toolkit, the settings files and the language files.
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(SIGILDESK_LIBRARY_FOLDER ${PROJECT_BINARY_DIR}/lib/sigildesk)

# No program names the build tree, so that two of them give the same bytes.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
