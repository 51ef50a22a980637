# `make package`: a Debian package of the programs, report layouts, help pages, icon and desktop entry,
# its dependencies found from the programs' libraries.
set(CPACK_GENERATOR "DEB")
set(CPACK_PACKAGE_NAME "quillary")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "Quillary <quillary@example.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Payroll for small New Zealand employers")
set(CPACK_DEBIAN_PACKAGE_SECTION "office")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The Qt platform plugins, fonts and the keyring library (loaded when asked for) are not found from
# the libraries.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, fonts-dejavu-core, libsecret-1-0")
set(CPACK_PACKAGE_INSTALL_DIRECTORY "quillary")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
include(CPack)
