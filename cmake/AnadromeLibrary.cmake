# The floors up to Models as a library for other programs: static libraries, headers and a CMake package. Not a
# part of the Debian package; installed by: cmake --install BUILD --component library
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(library_package ${CMAKE_INSTALL_LIBDIR}/cmake/anadrome)

add_library(anadrome_library INTERFACE)
set_target_properties(anadrome_library PROPERTIES EXPORT_NAME anadrome)
target_link_libraries(anadrome_library INTERFACE anadrome_models)

install(TARGETS anadrome_library anadrome_models anadrome_media anadrome_base EXPORT anadromeTargets
    ARCHIVE COMPONENT library EXCLUDE_FROM_ALL)
install(EXPORT anadromeTargets NAMESPACE anadrome:: DESTINATION ${library_package}
    COMPONENT library EXCLUDE_FROM_ALL)
foreach(floor IN ITEMS anadrome_base anadrome_media anadrome_models)
    get_target_property(folders ${floor} ANADROME_FOLDERS)
    foreach(folder IN LISTS folders)
        # Headers in folders below a framework's are internal.
        file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.h)
        install(FILES ${headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/anadrome/${folder}
            COMPONENT library EXCLUDE_FROM_ALL)
    endforeach()
endforeach()

file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/anadromeConfig.cmake [[
include(CMakeFindDependencyMacro)
find_dependency(Threads)
find_dependency(Qt6 COMPONENTS Core)
find_dependency(nlohmann_json)
find_dependency(PkgConfig)
pkg_check_modules(LIBAV REQUIRED IMPORTED_TARGET
    libavformat libavdevice libavcodec libavfilter libavutil libswscale libswresample)
include(${CMAKE_CURRENT_LIST_DIR}/anadromeTargets.cmake)
]])
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/anadromeConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/anadromeConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/anadromeConfigVersion.cmake
    DESTINATION ${library_package} COMPONENT library EXCLUDE_FROM_ALL)
