# Packages of what is installed, by `cpack` in the build folder: a .deb and a .tar.gz, and a .zip of a build for Windows.
# The same tree and SOURCE_DATE_EPOCH give the same bytes.
set(CPACK_PACKAGE_NAME vor2)
set(CPACK_PACKAGE_VENDOR "Vor2")
set(VOR2_CONTACT "Vor2 <vor2@packages.example>" CACHE STRING "Whom a package names as its maintainer")
set(CPACK_PACKAGE_CONTACT "${VOR2_CONTACT}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "scene exporter and library for the .vr2 format")
set(CPACK_PACKAGE_DESCRIPTION "Exports animated scenes to .vr2 files without their host, brings them back,
shows, compares, converts and thins them out, by one command line tool, and
has the library of the format with its headers for programs of one's own.")
set(CPACK_RESOURCE_FILE_LICENSE "${CMAKE_SOURCE_DIR}/LICENSE")
set(CPACK_STRIP_FILES ON)
set(CPACK_THREADS 1)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_SOURCE_DIR}/cmake/finish_package.cmake")
set(CPACK_VERBATIM_VARIABLES ON)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_SYSTEM_NAME win64)
else()
  set(CPACK_GENERATOR DEB TGZ)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  if(VOR2_BUILD_PYTHON)
    # A compiled module goes with one minor version of Python.
    math(EXPR next_minor "${Python_VERSION_MINOR} + 1")
    set(CPACK_DEBIAN_PACKAGE_DEPENDS "python3 (>= ${Python_VERSION_MAJOR}.${Python_VERSION_MINOR}), \
python3 (<< ${Python_VERSION_MAJOR}.${next_minor}), python3-numpy")
  endif()
  if(VOR2_ASSIMP)
    set(CPACK_DEBIAN_PACKAGE_SUGGESTS libassimp-dev) # for programs that link vor2_convert
  endif()
  set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
endif()

include(Vor2Licences)
set(docs "${CMAKE_INSTALL_DATADIR}/doc/vor2")
install(FILES LICENSE DESTINATION "${docs}" RENAME copyright)
install(FILES "${VOR2_LICENCES}" README.md CHANGELOG.md DESTINATION "${docs}")
install(DIRECTORY docs DESTINATION "${docs}" PATTERN Doxyfile EXCLUDE PATTERN format.in.md EXCLUDE)
install(DIRECTORY examples DESTINATION "${docs}" USE_SOURCE_PERMISSIONS)
include(CPack)
