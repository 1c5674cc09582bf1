# What every target of the project is built with.

# Release keeps asserts out and optimises for speed; the pixel loops rely on -O3's vectoriser.
set(CMAKE_CXX_FLAGS_RELEASE "-O3 -DNDEBUG")

add_library(workbench_flags INTERFACE)
# -Wrestrict: GCC 12 sees overlaps in std::string that are not there (GCC bug 105651).
target_compile_options(workbench_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wnull-dereference -Wundef
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond;-Wlogical-op;-Wno-restrict>
  $<$<BOOL:${WORKBENCH_WERROR}>:-Werror>)
if(WORKBENCH_SANITIZE)
  # GCC's -Wnull-dereference and friends give false alarms on instrumented code.
  target_compile_options(workbench_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
    -Wno-null-dereference $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(workbench_flags INTERFACE -fsanitize=address,undefined)
endif()
if(WORKBENCH_FUZZ)
  target_compile_options(workbench_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
target_compile_definitions(workbench_flags INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH)

# workbench_module(NAME FILE SOURCES...): a module that the programs load at run time, under this exact file
# name on every platform; installed with the programs.
function(workbench_module target file)
  add_library(${target} MODULE ${ARGN})
  set_target_properties(${target} PROPERTIES
    PREFIX "" OUTPUT_NAME ${file} SUFFIX ""
    CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(${target} PRIVATE workbench_flags)
  set_property(GLOBAL APPEND PROPERTY WORKBENCH_MODULES ${target})
endfunction()

# workbench_test(NAME SOURCES...): a GoogleTest program that mirrors one folder of src/, with the libraries loaded.
function(workbench_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE workbench_test_support GTest::gmock workbench_flags)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  add_dependencies(${name} rastgl soundlib)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen" TIMEOUT 600)
endfunction()

# workbench_plain_test(NAME SOURCES...): as workbench_test, for the folders below the graphics library.
function(workbench_plain_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE workbench_core GTest::gtest_main GTest::gmock workbench_flags)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 600)
endfunction()
