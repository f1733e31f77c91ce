# What every target of ours is built with: the language, the warnings that must stay silent,
# and single precision that means it (no fused multiply-add behind our back).
add_library(vor2_options INTERFACE)
target_compile_features(vor2_options INTERFACE cxx_std_20)
if(MSVC)
  target_compile_options(vor2_options INTERFACE /W4 /WX /fp:strict /utf-8)
else()
  target_compile_options(vor2_options INTERFACE -Wall -Wextra -Wpedantic -Werror -ffp-contract=off)
  # The release is hardened as Debian's own packages are; executables are position-independent by default there.
  if(NOT WIN32)
    target_compile_options(vor2_options INTERFACE "$<$<CONFIG:Release>:-fstack-protector-strong;-Werror=format-security>")
    target_compile_definitions(vor2_options INTERFACE "$<$<CONFIG:Release>:_FORTIFY_SOURCE=2>")
    target_link_options(vor2_options INTERFACE "$<$<CONFIG:Release>:-Wl,-z,relro,-z,now>")
  endif()
  # GCC 12 sees overlapping copies in the standard library's own string concatenation at -O2 and above.
  # The second word is for Clang's tools, which read GCC's flags and don't know the first.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(vor2_options INTERFACE -Wno-restrict -Wno-unknown-warning-option)
  endif()
endif()
target_include_directories(vor2_options INTERFACE "$<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}>")
# On Windows the manifest makes UTF-8 a program's 8-bit character set, for file names as for the command line, and the
# stack is as deep as elsewhere. A target with the property VOR2_SYSTEM_CHARSET goes without the manifest.
if(WIN32)
  set(program_only "$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>")
  set(has_manifest "$<AND:${program_only},$<NOT:$<BOOL:$<TARGET_PROPERTY:VOR2_SYSTEM_CHARSET>>>>")
  target_sources(vor2_options INTERFACE
    "$<BUILD_INTERFACE:$<${has_manifest}:${CMAKE_SOURCE_DIR}/cmake/vor2.$<IF:$<BOOL:${MSVC}>,manifest,rc>>>")
  target_link_options(vor2_options INTERFACE
    "$<${program_only}:$<IF:$<BOOL:${MSVC}>,/STACK:8388608,-Wl$<COMMA>--stack$<COMMA>8388608>>")
endif()

# With VOR2_PRECOMPILE_HEADERS, the part of the standard library that most sources include is compiled once for each
# library of ours, and a test's header once for all programs that share it. That saves a third of a full build. Each
# source still includes what it uses, which the builds without show; and with optimisation GCC warns of the standard
# library's own code when that comes precompiled.
set(VOR2_STANDARD_HEADERS <algorithm> <array> <cmath> <cstring> <functional> <map> <memory> <optional> <string>
    <string_view> <unordered_map> <utility> <variant> <vector>)

# With VOR2_UNITY_BUILD the sources of a folder are compiled as one, which saves more than half of a full build: most of
# it goes into reading the same headers again. Names that a source keeps to itself must therefore be its folder's own.
function(vor2_compile_by_folder name)
  if(VOR2_UNITY_BUILD)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
    # Once all folders have put in their sources.
    cmake_language(EVAL CODE "cmake_language(DEFER DIRECTORY [[${CMAKE_SOURCE_DIR}]] CALL vor2_group_by_folder ${name})")
  endif()
endfunction()
function(vor2_group_by_folder name)
  get_target_property(sources ${name} SOURCES)
  get_target_property(home ${name} SOURCE_DIR)
  foreach(source IN LISTS sources)
    if(NOT source MATCHES "\\$<")
      cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY "${home}" NORMALIZE OUTPUT_VARIABLE path)
      cmake_path(GET path PARENT_PATH folder)
      cmake_path(RELATIVE_PATH folder BASE_DIRECTORY "${CMAKE_SOURCE_DIR}")
      string(MAKE_C_IDENTIFIER "${folder}" folder)
      set_source_files_properties("${path}" TARGET_DIRECTORY ${name} PROPERTIES UNITY_GROUP "${folder}")
    endif()
  endforeach()
endfunction()

# vor2_library(NAME SOURCES...): a static library of ours.
function(vor2_library name)
  add_library(${name} STATIC ${ARGN})
  set_target_properties(${name} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON)
  vor2_compile_by_folder(${name})
  target_link_libraries(${name} PUBLIC "$<BUILD_INTERFACE:vor2_options>")
  if(VOR2_PRECOMPILE_HEADERS)
    target_precompile_headers(${name} PRIVATE ${VOR2_STANDARD_HEADERS})
  endif()
endfunction()

# GoogleTest as the system has it or, for another system than this one, built from its sources.
function(vor2_find_googletest)
  if(CMAKE_CROSSCOMPILING)
    set(INSTALL_GTEST OFF CACHE BOOL "Install GoogleTest along with this" FORCE)
    add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
  else()
    find_package(GTest REQUIRED)
  endif()
endfunction()

# vor2_test(NAME SOURCES... [HEADER header] LIBS libraries...): a GoogleTest program, each test known to ctest; in an
# emulator, where starting a process is slow, the program is one test. The header is one that its sources include.
function(vor2_test name)
  cmake_parse_arguments(ARG "" "HEADER" "LIBS" ${ARGN})
  add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
  set_target_properties(${name} PROPERTIES CXX_EXTENSIONS OFF)
  target_link_libraries(${name} PRIVATE vor2_options ${ARG_LIBS} GTest::gtest_main)
  # GCC 12 sees overflows in the standard library's own growing of vectors of bytes at -O3.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${name} PRIVATE -Wno-stringop-overflow)
  endif()
  target_compile_definitions(${name} PRIVATE "VOR2_SHARED_DATA=\"${VOR2_SHARED_DATA}\""
                                             "VOR2_SOURCE_DIR=\"${CMAKE_SOURCE_DIR}\"")
  if(ARG_HEADER AND VOR2_PRECOMPILE_HEADERS)
    string(MAKE_C_IDENTIFIER "VOR2_HEADER_OF_${ARG_HEADER}" owner)
    get_property(first GLOBAL PROPERTY ${owner})
    if(first)
      target_precompile_headers(${name} REUSE_FROM ${first})
    else()
      set_property(GLOBAL PROPERTY ${owner} ${name})
      target_precompile_headers(${name} PRIVATE "${CMAKE_SOURCE_DIR}/${ARG_HEADER}")
    endif()
  endif()
  if(CMAKE_CROSSCOMPILING)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 1200 FIXTURES_REQUIRED emulator)
  else()
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
  endif()
endfunction()
