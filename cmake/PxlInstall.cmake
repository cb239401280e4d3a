# What a host gets: the optional static library, the install rules, and the
# two ways to find an installed pxl (a CMake package and a pkg-config file).
#
#   cmake --install <build> --prefix <P>
#     <P>/lib/libpxl.so.X.Y.Z, libpxl.so.X, libpxl.so   (and libpxl.a)
#     <P>/include/pxl/*.h
#     <P>/lib/cmake/pxl/       find_package(pxl CONFIG): pxl::pxl, pxl::pxl_static
#     <P>/lib/pkgconfig/pxl.pc pkg-config --cflags --libs pxl
#
# (lib is CMAKE_INSTALL_LIBDIR, from GNUInstallDirs.)

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(PXL_EXPORTED_TARGETS pxl)

if(PXL_BUILD_STATIC)
  # The same objects as the shared library, and the same visible symbols:
  # the archive holds one object, linked from all of them, in which every
  # hidden symbol is made local.  A host that links it statically sees the
  # exports and nothing of the library's internals.
  add_library(pxl_static STATIC $<TARGET_OBJECTS:pxl_objects>)
  add_library(pxl::pxl_static ALIAS pxl_static)
  set_target_properties(pxl_static PROPERTIES OUTPUT_NAME pxl EXPORT_NAME pxl_static)
  target_include_directories(pxl_static PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                                               $<INSTALL_INTERFACE:include>)
  # A C host links the archive with its C compiler driver, which does not add
  # the C++ runtime on its own.
  target_link_libraries(pxl_static INTERFACE $<$<NOT:$<LINK_LANGUAGE:CXX>>:stdc++> m)
  set(merged ${CMAKE_CURRENT_BINARY_DIR}/pxl_static_merged.o)
  add_custom_command(TARGET pxl_static POST_BUILD
    COMMAND ${CMAKE_LINKER} -r --whole-archive $<TARGET_FILE:pxl_static> -o ${merged}
    COMMAND ${CMAKE_OBJCOPY} --localize-hidden ${merged}
    COMMAND ${CMAKE_COMMAND} -E rm -f $<TARGET_FILE:pxl_static>
    COMMAND ${CMAKE_AR} qc $<TARGET_FILE:pxl_static> ${merged}
    COMMAND ${CMAKE_RANLIB} $<TARGET_FILE:pxl_static>
    COMMENT "Keeping only the exports visible in libpxl.a"
    VERBATIM)
  list(APPEND PXL_EXPORTED_TARGETS pxl_static)
endif()

install(TARGETS ${PXL_EXPORTED_TARGETS} EXPORT pxlTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/pxl DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h")

set(PXL_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/pxl)
install(EXPORT pxlTargets NAMESPACE pxl:: DESTINATION ${PXL_CMAKE_DIR})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/pxlConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/pxlConfig.cmake
                              INSTALL_DESTINATION ${PXL_CMAKE_DIR})
# Before 1.0 a minor version may change the exports.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/pxlConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/pxlConfig.cmake ${PROJECT_BINARY_DIR}/pxlConfigVersion.cmake
        DESTINATION ${PXL_CMAKE_DIR})

# The prefix is written relative to the .pc file, so that the file stays
# right for whatever prefix `cmake --install --prefix` is given.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(PXL_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
  set(PXL_PC_LIBDIR "${CMAKE_INSTALL_LIBDIR}")
else()
  file(RELATIVE_PATH up /root/${CMAKE_INSTALL_LIBDIR}/pkgconfig /root)
  string(REGEX REPLACE "/$" "" up "${up}")
  set(PXL_PC_PREFIX "\${pcfiledir}/${up}")
  set(PXL_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
endif()
if(IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(PXL_PC_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}")
else()
  set(PXL_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/pxl.pc.in ${PROJECT_BINARY_DIR}/pxl.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/pxl.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
