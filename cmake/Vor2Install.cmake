# What `cmake --install` puts where: the library with its headers, for find_package(Vor2) and pkg-config, and the tool.
include(CMakePackageConfigHelpers)

set(VOR2_INCLUDE_DIR "${CMAKE_INSTALL_INCLUDEDIR}/vor2")
set(VOR2_LIBRARIES vor2_support vor2_format vor2_inspect vor2_optimise vor2_convert)
foreach(library ${VOR2_LIBRARIES})
  target_include_directories(${library} INTERFACE "$<INSTALL_INTERFACE:${VOR2_INCLUDE_DIR}>")
  target_compile_features(${library} INTERFACE cxx_std_20)
endforeach()
install(TARGETS ${VOR2_LIBRARIES} EXPORT Vor2Targets ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")
install(DIRECTORY support format inspect optimise convert DESTINATION "${VOR2_INCLUDE_DIR}" FILES_MATCHING PATTERN "*.h")

set(VOR2_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/Vor2")
install(EXPORT Vor2Targets NAMESPACE Vor2:: DESTINATION "${VOR2_PACKAGE_DIR}")
configure_package_config_file(cmake/Vor2Config.cmake.in "${CMAKE_BINARY_DIR}/Vor2Config.cmake"
                              INSTALL_DESTINATION "${VOR2_PACKAGE_DIR}")
write_basic_package_version_file("${CMAKE_BINARY_DIR}/Vor2ConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${CMAKE_BINARY_DIR}/Vor2Config.cmake" "${CMAKE_BINARY_DIR}/Vor2ConfigVersion.cmake"
        DESTINATION "${VOR2_PACKAGE_DIR}")
# Found from where the file lies, so that the installed tree can be moved.
file(RELATIVE_PATH VOR2_PREFIX_FROM_PC "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file(cmake/vor2.pc.in "${CMAKE_BINARY_DIR}/vor2.pc" @ONLY)
install(FILES "${CMAKE_BINARY_DIR}/vor2.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
