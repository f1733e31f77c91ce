# What `vor2 --version` tells beside the version: the commit, from git or from who builds without it, and the options.
set(VOR2_COMMIT "" CACHE STRING "The commit that this is built from, where git can't tell")
set(commit "${VOR2_COMMIT}")
find_package(Git QUIET)
if(NOT commit AND GIT_FOUND)
  execute_process(COMMAND "${GIT_EXECUTABLE}" rev-parse --short=12 HEAD WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}"
                  OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  # Written with each commit: the version follows it.
  execute_process(COMMAND "${GIT_EXECUTABLE}" rev-parse --git-path logs/HEAD WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}"
                  OUTPUT_VARIABLE log OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  get_filename_component(log "${log}" ABSOLUTE BASE_DIR "${CMAKE_SOURCE_DIR}")
  if(EXISTS "${log}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${log}")
  endif()
endif()
if(NOT commit)
  set(commit unknown)
endif()
set(assimp_state off)
if(VOR2_ASSIMP)
  set(assimp_state on)
endif()
set(VOR2_BUILD_TEXT "commit ${commit}, ${CMAKE_BUILD_TYPE} by ${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}, \
Assimp ${assimp_state}")
