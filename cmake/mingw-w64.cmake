# Builds for 64-bit Windows on Linux: Debian's mingw-w64 with POSIX threads, everything linked in, so that a program
# runs from its file alone; the tests run in Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# Without the time of linking, which no two builds share.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)

# A prefix in the build tree takes in the packages of headers alone; nothing else of this machine's /usr/include may
# be seen by a compiler for another system.
set(header_packages "${CMAKE_BINARY_DIR}/header-packages")
foreach(package CLI11 nlohmann_json)
  file(COPY "/usr/share/cmake/${package}" DESTINATION "${header_packages}/share/cmake")
endforeach()
file(MAKE_DIRECTORY "${header_packages}/include")
foreach(folder CLI nlohmann stb tiny_gltf.h)
  file(CREATE_LINK "/usr/include/${folder}" "${header_packages}/include/${folder}" SYMBOLIC)
endforeach()

set(CMAKE_FIND_ROOT_PATH "${header_packages}" /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../scripts/in_wine" "${CMAKE_BINARY_DIR}/wine")
