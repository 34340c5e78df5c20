# What every target of the project shares: language level, warnings, sanitizers, and the two helpers that
# keep the folders' CMakeLists.txt short.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTORCC ON)

# Programs, databases and Help files share one folder: a portable copy that runs where it lies.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets SerialPort Network)
find_package(SQLite3 REQUIRED)
if(FENRIK_TESTS OR FENRIK_BENCH)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
    find_package(GTest REQUIRED)
    include(GoogleTest)
endif()
find_package(PkgConfig REQUIRED)
pkg_check_modules(MDBTOOLS REQUIRED IMPORTED_TARGET libmdb)

# AUTOMOC would otherwise look at the test framework's macros too.
set(CMAKE_AUTOMOC_MACRO_NAMES Q_OBJECT Q_GADGET Q_NAMESPACE)

add_library(fenrik_flags INTERFACE)
target_compile_options(fenrik_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
# Optimising fully, GCC 12 sees the standard library's own vectors write past their ends.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(fenrik_flags INTERFACE $<$<CONFIG:Release>:-Wno-stringop-overflow>)
endif()
target_compile_definitions(fenrik_flags INTERFACE
    QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(FENRIK_SANITIZE)
    target_compile_options(fenrik_flags INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(fenrik_flags INTERFACE -fsanitize=address,undefined)
endif()
if(FENRIK_FUZZ)
    target_compile_options(fenrik_flags INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(fenrik_flags INTERFACE -fsanitize=address,undefined)
endif()

# fenrik_library(<folder> SOURCES <files...> LINK <targets...>): the one library of a folder under src/.
# Its link dependencies say whom it may include.
function(fenrik_library folder)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_library(fenrik_${folder} STATIC ${ARG_SOURCES})
    target_include_directories(fenrik_${folder} PUBLIC "${CMAKE_SOURCE_DIR}/src")
    target_link_libraries(fenrik_${folder} PUBLIC ${ARG_LINK} PRIVATE fenrik_flags)
endfunction()

# fenrik_test(<name> SOURCES <files...> LINK <targets...>): a GoogleTest program whose cases ctest lists one by one.
function(fenrik_test name)
    cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LINK" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 60)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
    target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
    target_link_libraries(${name} PRIVATE ${ARG_LINK} fenrik_testing fenrik_flags)
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
        PROPERTIES TIMEOUT ${ARG_TIMEOUT} ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
