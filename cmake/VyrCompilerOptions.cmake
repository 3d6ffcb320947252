# Compiler settings shared by every target of the project.
#
# vyr_target_defaults(<target>) gives a target the project's warnings, hidden
# symbol visibility and position independent code (every library ends up in a
# shared object). The sanitizer flags are applied globally so that tests,
# tools and libraries agree on the runtime.

set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# Position independent executables too, as the libraries are.
include(CheckPIESupported)
check_pie_supported()

# Hardened as Debian builds its packages: a stack protector (and stack clash
# protection), checked string and memory functions, and relocations
# read-only after loading, every symbol bound at start. Not under the
# sanitizers, which check the code themselves and whose builds are never
# shipped; _FORTIFY_SOURCE works through the optimiser (and warns without
# it), so only the optimised configurations get it, and the tests, compiled
# at -O0, take it back (tests/CMakeLists.txt). No control flow protection:
# Debian 12's C library start files lack it, so no library linked with
# them could claim it.
if(NOT VYR_SANITIZE)
    add_compile_options(-fstack-protector-strong -fstack-clash-protection)
    add_compile_definitions($<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:_FORTIFY_SOURCE=2>)
    add_link_options(LINKER:-z,relro LINKER:-z,now)
endif()

if(VYR_SANITIZE)
    # Also what a host built against this build's installation needs.
    set(VYR_SANITIZE_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_compile_options(${VYR_SANITIZE_FLAGS})
    add_link_options(${VYR_SANITIZE_FLAGS})
endif()

# Fuzz targets learn from the coverage of the code they drive.
if(VYR_BUILD_FUZZERS AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

set(VYR_LSAN_SUPPRESSIONS ${CMAKE_CURRENT_LIST_DIR}/lsan_suppressions.cpp)

function(vyr_target_defaults target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic)
    get_target_property(type ${target} TYPE)
    if(VYR_SANITIZE AND type STREQUAL "EXECUTABLE")
        target_sources(${target} PRIVATE ${VYR_LSAN_SUPPRESSIONS})
    endif()
    if(VYR_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    target_compile_definitions(${target} PRIVATE QT_NO_FOREACH QT_NO_CONTEXTLESS_CONNECT)
endfunction()
