# Makes a Debian package of the tree that packaging/brand lays out. The settings of the product are passed with -D.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /)
set(CPACK_PACKAGE_FILE_NAME package)
set(CPACK_DEBIAN_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS accountsservice)
