# How every target of ours is compiled. Linked by each library through zantor_options.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

find_program(ZANTOR_CCACHE ccache)
if(ZANTOR_CCACHE)
    # So that clones in different folders share results, and precompiled headers do not spoil them.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${ZANTOR_CCACHE})
endif()

add_library(zantor_options INTERFACE)
# The usual linker takes a tenth of a build's time, these two hardly any.
find_program(ZANTOR_MOLD mold)
find_program(ZANTOR_LLD ld.lld)
if(ZANTOR_PACKAGE)
    # What Debian builds with (dpkg-buildflags --dump). Always the usual linker, and no path of this machine in what
    # is built, so that everybody makes the same bytes.
    target_compile_definitions(zantor_options INTERFACE _FORTIFY_SOURCE=2 _GLIBCXX_ASSERTIONS)
    target_compile_options(zantor_options INTERFACE -fstack-protector-strong -Wformat -Werror=format-security
        -ffile-prefix-map=${CMAKE_BINARY_DIR}=build -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.)
    target_link_options(zantor_options INTERFACE -pie -Wl,-z,relro -Wl,-z,now -Wl,--as-needed)
elseif(ZANTOR_MOLD)
    target_link_options(zantor_options INTERFACE -fuse-ld=mold)
elseif(ZANTOR_LLD)
    target_link_options(zantor_options INTERFACE -fuse-ld=lld)
endif()
# A warning stops a build with tests by the compiler of continuous integration, g++ 12, or by clang. A newer g++ may
# know a warning more, some of them false (14: -Waggressive-loop-optimizations in the library's own string), and must
# still build the program.
set(warnings_stop OFF)
if(ZANTOR_TESTS AND NOT (CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 13))
    set(warnings_stop ON)
endif()
target_compile_options(zantor_options INTERFACE
    -Wall -Wextra -Wpedantic $<$<BOOL:${warnings_stop}>:-Werror>
    -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wcast-qual -Wcast-align -Wextra-semi -Wundef)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # -Wrestrict: GCC 12 reports it for plain string concatenation (its bug 105651).
    # Of shadowing only what hides a local: a constructor's parameter may bear its field's name.
    target_compile_options(zantor_options INTERFACE -Wshadow=local -Wduplicated-cond -Wlogical-op -Wno-restrict
        -fpch-preprocess)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # With optimisation on, g++ 12 and 14 find overlaps and overflows in the library's own string code once that is
    # inlined ("a" + string suffices: GCC bugs 105329 and 105651). The address sanitizer looks for real ones.
    target_compile_options(zantor_options INTERFACE -Wno-restrict -Wno-array-bounds -Wno-stringop-overflow
        -Wno-stringop-overread)
endif()
if(CMAKE_UNITY_BUILD)
    # Several sources in one compilation: a third of the time under the sanitizers. A name that two sources of a room
    # both define in their anonymous namespaces does not compile then; mostly it is one fact, which belongs in one
    # place. The warning is about such namespaces in headers, for which it takes the sources here.
    target_compile_options(zantor_options INTERFACE -Wno-subobject-linkage)
endif()
if(ZANTOR_SANITIZE)
    target_compile_options(zantor_options INTERFACE
        -fsanitize=${ZANTOR_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(zantor_options INTERFACE -fsanitize=${ZANTOR_SANITIZE})
endif()
if(ZANTOR_FUZZ)
    # The fuzzer looks for inputs that reach something new in the libraries, not only in its own target.
    target_compile_options(zantor_options INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(zantor_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# zantor_library(NAME SOURCES...): a static library that shows its own directory and no other. What it may
# include is exactly what its target_link_libraries names, so a missing arrow fails to compile.
function(zantor_library name)
    add_library(${name} STATIC ${ARGN})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE zantor_options)
    set_property(GLOBAL APPEND PROPERTY ZANTOR_ROOMS ${name})
endfunction()

# zantor_precompile_rooms(HEADERS...): compiles headers of the standard library once for all rooms so far. To be
# called before the window's rooms, which precompile Qt's headers instead.
function(zantor_precompile_rooms)
    file(WRITE ${CMAKE_BINARY_DIR}/ZNTPrecompiled.cpp "// Holds the precompiled headers.\n")
    add_library(zantor_precompiled OBJECT ${CMAKE_BINARY_DIR}/ZNTPrecompiled.cpp)
    target_link_libraries(zantor_precompiled PRIVATE zantor_options)
    target_precompile_headers(zantor_precompiled PRIVATE ${ARGN})
    get_property(rooms GLOBAL PROPERTY ZANTOR_ROOMS)
    foreach(room IN LISTS rooms)
        target_precompile_headers(${room} REUSE_FROM zantor_precompiled)
    endforeach()
endfunction()

# A test's own code runs once. Optimising it would take longer than running it. What it does with memory is looked at
# under the sanitizers; whether its arithmetic is defined would take half as long again to compile.
# To be linked after zantor_options: of two options that differ the compiler takes the later one.
add_library(zantor_test_options INTERFACE)
target_compile_options(zantor_test_options INTERFACE -O0)
if(ZANTOR_SANITIZE MATCHES "undefined")
    target_compile_options(zantor_test_options INTERFACE -fno-sanitize=undefined)
endif()

# ctest starts the tests with the highest cost first: a long one that starts last runs alone. Tests of seconds have
# this one, all others none.
set(zantor_long 100)

# zantor_test(NAME [PRECOMPILED TARGET] LIBRARIES... SOURCES...): one GoogleTest program, each of its cases a test of
# ctest. TARGET is the one whose precompiled headers it uses, if not those of all tests.
function(zantor_test name)
    cmake_parse_arguments(ARG "" "PRECOMPILED" "LIBRARIES;SOURCES" ${ARGN})
    if(NOT ARG_PRECOMPILED)
        set(ARG_PRECOMPILED zantor_test_precompiled)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE zantor_options zantor_test_options zantor_test_support ${ARG_LIBRARIES}
        GTest::gmock GTest::gtest_main)
    target_precompile_headers(${name} REUSE_FROM ${ARG_PRECOMPILED})
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()

# zantor_window_test(NAME LIBRARIES... SOURCES...): a GoogleTest program that brings its own main and shows a
# window. All its cases are one test of ctest, since each start takes a screen and a session bus of its own.
function(zantor_window_test name)
    cmake_parse_arguments(ARG "" "" "LIBRARIES;SOURCES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE zantor_options zantor_test_options zantor_test_support ${ARG_LIBRARIES} GTest::gmock)
    add_test(NAME ${name} COMMAND ${CMAKE_SOURCE_DIR}/scripts/with-display $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES TIMEOUT 600 COST ${zantor_long})
endfunction()
