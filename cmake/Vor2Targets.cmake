# What every target of ours is built with: the language, the warnings that must stay silent,
# and single precision that means it (no fused multiply-add behind our back).
add_library(vor2_options INTERFACE)
target_compile_features(vor2_options INTERFACE cxx_std_20)
if(MSVC)
  target_compile_options(vor2_options INTERFACE /W4 /WX /fp:strict /utf-8)
else()
  target_compile_options(vor2_options INTERFACE -Wall -Wextra -Wpedantic -Werror -ffp-contract=off)
  # GCC 12 sees overlapping copies in the standard library's own string concatenation at -O2 and above.
  # The second word is for Clang's tools, which read GCC's flags and don't know the first.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(vor2_options INTERFACE -Wno-restrict -Wno-unknown-warning-option)
  endif()
endif()
target_include_directories(vor2_options INTERFACE "$<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}>")

# vor2_library(NAME SOURCES...): a static library of ours.
function(vor2_library name)
  add_library(${name} STATIC ${ARGN})
  set_target_properties(${name} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON)
  target_link_libraries(${name} PUBLIC "$<BUILD_INTERFACE:vor2_options>")
endfunction()

# vor2_test(NAME SOURCES... LIBS libraries...): a GoogleTest program, each test known to ctest.
function(vor2_test name)
  cmake_parse_arguments(ARG "" "" "LIBS" ${ARGN})
  add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
  set_target_properties(${name} PROPERTIES CXX_EXTENSIONS OFF)
  target_link_libraries(${name} PRIVATE vor2_options ${ARG_LIBS} GTest::gtest_main)
  # GCC 12 sees overflows in the standard library's own growing of vectors of bytes at -O3.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${name} PRIVATE -Wno-stringop-overflow)
  endif()
  target_compile_definitions(${name} PRIVATE "VOR2_SHARED_DATA=\"${VOR2_SHARED_DATA}\""
                                             "VOR2_SOURCE_DIR=\"${CMAKE_SOURCE_DIR}\"")
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()
