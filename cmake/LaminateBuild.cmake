# Compiler settings of every target, and the two functions by which rooms and their tests are declared.
include(GNUInstallDirs)
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

find_program(LAMINATE_CCACHE ccache)
if(LAMINATE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${LAMINATE_CCACHE})
endif()

add_library(laminate_options INTERFACE)
target_compile_options(laminate_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2 -Werror=format-security
  -Wimplicit-fallthrough -Wnull-dereference -Werror
  # A floating-point result must not depend on the compiler's freedom to fuse operations.
  -ffp-contract=off)
# g++ 12 reports null dereferences and out-of-range copies inside inlined standard headers that cannot happen.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(laminate_options INTERFACE -Wno-null-dereference -Wno-restrict -Wno-stringop-overflow
    -Wno-stringop-overread -Wno-array-bounds -Wno-maybe-uninitialized)
endif()
if(LAMINATE_SANITIZE)
  set(sanitize -fsanitize=${LAMINATE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_compile_options(${sanitize})
  add_link_options(${sanitize})
  # Memory pools would hide the life of an object from the sanitizers.
  add_compile_definitions(LAMINATE_NO_POOL)
endif()
if(LAMINATE_BUILD_FUZZ)
  # The fuzzer learns from the branches that the library takes.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(LAMINATE_COVERAGE)
  add_compile_options(--coverage -O0)
  add_link_options(--coverage)
endif()

# The rooms from bottom to top. A room may include itself and what stands before it, and its tests link no more than that.
set(LAMINATE_ROOMS base reader drawobj technology board designdata export save facade)

# What ccache asks for of a target whose headers are precompiled.
function(laminate_cache_precompiled name)
  if(CMAKE_CXX_COMPILER_LAUNCHER MATCHES ccache)
    set_target_properties(${name} PROPERTIES
      CXX_COMPILER_LAUNCHER "env;CCACHE_SLOPPINESS=pch_defines,time_macros;${CMAKE_CXX_COMPILER_LAUNCHER}")
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      target_compile_options(${name} PRIVATE -fpch-preprocess)
    else()
      target_compile_options(${name} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
    endif()
  endif()
endfunction()

# Adds a folder of this project if it has something to build.
macro(laminate_optional_subdirectory folder)
  if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/CMakeLists.txt)
    add_subdirectory(${folder})
  endif()
endmacro()

function(laminate_room room)
  cmake_parse_arguments(arg "" "" "SOURCES;HEADERS" ${ARGN})
  add_library(laminate_${room} OBJECT ${arg_SOURCES} ${arg_HEADERS})
  target_include_directories(laminate_${room} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(laminate_${room} PRIVATE laminate_options)
endfunction()

# laminate_link_rooms(<target> <room>): links the rooms up to and with that one.
function(laminate_link_rooms target last)
  foreach(room ${LAMINATE_ROOMS})
    if(TARGET laminate_${room})
      target_link_libraries(${target} PRIVATE laminate_${room})
    endif()
    if(room STREQUAL last)
      break()
    endif()
  endforeach()
endfunction()

# laminate_test(<name> ROOM <room> SOURCES ...): one GoogleTest program that links the rooms up to and with ROOM.
function(laminate_test name)
  cmake_parse_arguments(arg "" "ROOM" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  laminate_link_rooms(${name} ${arg_ROOM})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES})
  laminate_test_program(${name})
endfunction()

# laminate_test_program(<target>): makes a program of GoogleTest cases a test.
function(laminate_test_program name)
  laminate_test_settings(${name})
  target_precompile_headers(${name} REUSE_FROM laminate_test_headers)
  add_dependencies(${name} laminate_locales)
  add_test(NAME ${name} COMMAND ${name})
  laminate_test_environment(${name})
endfunction()

# How test code is compiled. One program, which does nothing, precompiles the headers that all tests share.
function(laminate_test_settings name)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE laminate_options GTest::gmock GTest::gtest_main)
  # The rooms under test keep their optimisation; test code is big, runs once and gains nothing from it.
  target_compile_options(${name} PRIVATE -O0)
  laminate_cache_precompiled(${name})
endfunction()
function(laminate_add_test_headers)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/test_headers.cpp CONTENT "int main() {}\n")
  add_executable(laminate_test_headers ${CMAKE_BINARY_DIR}/test_headers.cpp)
  laminate_test_settings(laminate_test_headers)
  target_precompile_headers(laminate_test_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
endfunction()

# laminate_test_environment(<test>...): every test finds the locales of the build tree and, where they were given, the
# real designs and the outputs expected of them.
function(laminate_test_environment)
  set_property(TEST ${ARGN} APPEND PROPERTY ENVIRONMENT ${LAMINATE_TEST_ENVIRONMENT})
endfunction()
