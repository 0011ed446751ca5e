# How every target of the program is made: one library a folder, house warnings, the chosen sanitizers, and
# include paths that lead only to the folders that a target says it calls.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g1 -DNDEBUG")
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTORCC ON)

option(LARKSPIN_TESTS "Build the tests" ON)
option(LARKSPIN_BENCH "Build the benchmarks" ON)
set(LARKSPIN_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()

# Every test is a program of its own, so that linking takes its share.
find_program(MOLD mold)
if(MOLD)
    add_link_options(-fuse-ld=mold)
endif()

find_program(CCACHE ccache)
if(CCACHE)
    # Without these it takes no object that was made with a precompiled header.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
    add_compile_options(
        $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess> "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
endif()

if(LARKSPIN_SANITIZE)
    # Line numbers are all that a report needs.
    add_compile_options(-fsanitize=${LARKSPIN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -O1 -g1)
    add_link_options(-fsanitize=${LARKSPIN_SANITIZE})
    # For tests that would take minutes there, and need only walk the same way.
    add_compile_definitions(LARKSPIN_SANITIZED)
    # Several sources of a library or a test at once: these builds are made whole, by ./check, and what takes its time
    # is the headers. Names in unnamed namespaces are therefore unique in it.
    set(CMAKE_UNITY_BUILD ON)
    set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)
endif()

function(larkspin_warnings target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Werror -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual -Wcast-align -Wnull-dereference
        -Wformat=2 $<$<CXX_COMPILER_ID:GNU>:-Wshadow=compatible-local>
        "$<$<CXX_COMPILER_ID:Clang>:-Wreserved-identifier;-Wreserved-macro-identifier>")
endfunction()

# larkspin_kind(target kind)
#
# How libraries of a kind are compiled to be watched: widgets, which are what is seen, or core, all else.
function(larkspin_kind target kind)
    if(LARKSPIN_SANITIZE)
        # All of them in the same way, to have the same headers.
        set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
        # Windows need not be quick; what plays has to keep up with its output.
        if(kind STREQUAL "core")
            target_compile_options(${target} PRIVATE -O2)
        endif()
    endif()
endfunction()

# larkspin_common_headers(kind USES library HEADERS ...)
#
# Headers that are read once for all libraries of a kind. Only sanitizer builds have them: elsewhere each source has to
# include what it needs.
function(larkspin_common_headers kind)
    cmake_parse_arguments(ARG "" "USES" "HEADERS" ${ARGN})
    if(LARKSPIN_SANITIZE)
        set(name ${kind}_headers)
        file(CONFIGURE OUTPUT ${name}.cpp CONTENT "// A library has a source; this one is there for its headers.\n")
        add_library(${name} STATIC ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
        set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF)
        target_link_libraries(${name} PRIVATE ${ARG_USES})
        target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
        larkspin_kind(${name} ${kind})
    endif()
endfunction()

# larkspin_library(name FOLDER folder SOURCES ... CALLS ... USES ...)
#
# A static library of the folder's sources. Others see its headers as "folder/Header.h", and only those who
# list it among their CALLS (or reach it through one of them) do: each library exports a folder of its own
# with a link to its sources instead of the whole tree, so that an include over a wall fails to build.
# USES are libraries from outside the project that its headers need; PRIVATE_USES stay behind its headers.
function(larkspin_library name)
    cmake_parse_arguments(ARG "" "FOLDER" "SOURCES;CALLS;USES;PRIVATE_USES" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    larkspin_warnings(${name})

    set(room ${PROJECT_BINARY_DIR}/rooms/${name})
    cmake_path(GET ARG_FOLDER PARENT_PATH parent)
    file(MAKE_DIRECTORY ${room}/${parent})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${ARG_FOLDER} ${room}/${ARG_FOLDER} SYMBOLIC)
    target_include_directories(${name} PUBLIC ${room})
    # Names that moc makes are not always as clean as ours.
    target_include_directories(${name} SYSTEM PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/include)
    target_link_libraries(${name} PUBLIC ${ARG_CALLS} ${ARG_USES} PRIVATE ${ARG_PRIVATE_USES})

    # Where several sources are built at once, all of a library's are.
    set_target_properties(${name} PROPERTIES UNITY_BUILD_BATCH_SIZE 0)
    set(kind core)
    if("Qt6::Widgets" IN_LIST ARG_USES)
        set(kind widgets)
    endif()
    larkspin_kind(${name} ${kind})
    if(TARGET ${kind}_headers)
        target_precompile_headers(${name} REUSE_FROM ${kind}_headers)
    endif()
endfunction()

# For tests, which are mostly the code that their mocks and their cases expand to.
function(larkspin_compile_quickly target)
    target_compile_options(${target} PRIVATE -O0)
endfunction()

# larkspin_test(name SOURCES ... CALLS ... [LABELS ...] [TIMEOUT seconds] [ENVIRONMENT ...])
# larkspin_test(name SAME_AS other [LABELS ...] [TIMEOUT seconds] [ENVIRONMENT ...])
#
# One test program of GoogleTest cases, run by ctest as a whole. Every source is named: nothing is globbed. The second
# form runs another test's program once more, in another environment.
#
# They are compiled quickly, not to be quick: not optimized, and with the headers that all of them take read once. What
# reckons for many of them stands in libraries, which are optimized.
function(larkspin_test name)
    cmake_parse_arguments(ARG "" "TIMEOUT;SAME_AS" "SOURCES;CALLS;LABELS;ENVIRONMENT" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    if(ARG_SAME_AS)
        add_custom_target(${name} DEPENDS ${ARG_SAME_AS})
        add_test(NAME ${name} COMMAND ${ARG_SAME_AS})
    else()
        add_executable(${name} ${ARG_SOURCES})
        larkspin_warnings(${name})
        target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
        target_link_libraries(${name} PRIVATE ${ARG_CALLS} GTest::gmock)
        larkspin_compile_quickly(${name})
        if("qt_test_main" IN_LIST ARG_CALLS)
            target_precompile_headers(${name} REUSE_FROM qt_test_main)
        elseif("sound" IN_LIST ARG_LABELS)
            target_precompile_headers(${name} REUSE_FROM sound_test_headers)
        endif()
        # What reckons for long leaves the processor to what drives the program beside it, and listens.
        set(command $<TARGET_FILE:${name}>)
        if("sound" IN_LIST ARG_LABELS AND NOT "watched" IN_LIST ARG_LABELS AND NOT "real-time" IN_LIST ARG_LABELS)
            list(PREPEND command nice -n 19)
        endif()
        add_test(NAME ${name} COMMAND ${command})
    endif()
    set_tests_properties(${name} PROPERTIES
        LABELS "${ARG_LABELS}"
        TIMEOUT ${ARG_TIMEOUT}
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/tsan.supp;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp;${ARG_ENVIRONMENT}")
endfunction()
