# Installation, and the CMake package through which a host project finds it:
#
#   find_package(LocalizationManager REQUIRED)
#   target_link_libraries(app PRIVATE LocalizationManager::host)
#   target_compile_definitions(app PRIVATE "LM_MODULE=\"${LocalizationManager_MODULE}\"")
#
# Installed are the module, the headers a host compiles against (not the platform layer under
# include/ulo/rtl, which only the module uses), the host library and locmgr.
include(InstallDirs)
include(CMakePackageConfigHelpers)

set(LM_MODULE_FILE_NAME "localization_manager.so")
set(LM_MODULE_INSTALL_FILE "${LM_MODULE_INSTALL_DIR}/${LM_MODULE_FILE_NAME}")

if(TARGET localization_manager)
  install(TARGETS localization_manager LIBRARY DESTINATION "${LM_MODULE_INSTALL_DIR}")
endif()

install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/ulo/"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/ulo"
  FILES_MATCHING PATTERN "*.h"
  PATTERN "rtl" EXCLUDE
)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/localization_manager/"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/localization_manager"
  FILES_MATCHING PATTERN "*.h"
)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/host/include/"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
  FILES_MATCHING PATTERN "*.h"
)

install(TARGETS localization_manager_host EXPORT LocalizationManagerTargets
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
)
install(EXPORT LocalizationManagerTargets
  NAMESPACE LocalizationManager::
  DESTINATION "${LM_PACKAGE_INSTALL_DIR}"
)

if(TARGET locmgr)
  install(TARGETS locmgr RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()

configure_package_config_file(
  "${CMAKE_CURRENT_LIST_DIR}/LocalizationManagerConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/LocalizationManagerConfig.cmake"
  INSTALL_DESTINATION "${LM_PACKAGE_INSTALL_DIR}"
  PATH_VARS LM_MODULE_INSTALL_FILE
)
# 0.x releases may change the interfaces with every minor version.
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/LocalizationManagerConfigVersion.cmake"
  VERSION "${PROJECT_VERSION}"
  COMPATIBILITY SameMinorVersion
)
install(FILES
  "${PROJECT_BINARY_DIR}/include/localization_manager/Version.h"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/localization_manager"
)

# pkg-config finds the prefix from where the file is, so that the package may move.
set(LM_PC_INSTALL_DIR "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH LM_PC_PREFIX_FROM_PCFILEDIR "/prefix/${LM_PC_INSTALL_DIR}" "/prefix")
configure_file("${CMAKE_CURRENT_LIST_DIR}/localization-manager.pc.in"
               "${PROJECT_BINARY_DIR}/localization-manager.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/localization-manager.pc" DESTINATION "${LM_PC_INSTALL_DIR}")

# The example hosts, to build against the installed package.
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples/host/"
  DESTINATION "${CMAKE_INSTALL_DOCDIR}/examples/host"
)

install(FILES
  "${PROJECT_BINARY_DIR}/LocalizationManagerConfig.cmake"
  "${PROJECT_BINARY_DIR}/LocalizationManagerConfigVersion.cmake"
  DESTINATION "${LM_PACKAGE_INSTALL_DIR}"
)
