# Where an installation puts things; shared by the install rules and by locmgr, which looks
# for the installed module relative to its own folder. Included wherever it is needed (no
# include guard: the variables belong to the including directory's scope).
include(GNUInstallDirs)

set(LM_MODULE_INSTALL_DIR "${CMAKE_INSTALL_LIBDIR}/localization_manager")
set(LM_PACKAGE_INSTALL_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/LocalizationManager")
