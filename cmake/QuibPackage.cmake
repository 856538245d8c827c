# cpack -G DEB: one package, whose library dependencies are those that the programs are linked to. The caches of the
# desktop (types of files, entries, icons) are brought up to date by the triggers of the packages that own them.
set(CPACK_PACKAGE_NAME quib)
set(CPACK_PACKAGE_VENDOR Quibworks)
set(CPACK_PACKAGE_CONTACT "Quibworks <support@quibworks.net>")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://quibworks.net")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "notes in a light markup, found by tags and words")
set(CPACK_PACKAGE_DESCRIPTION "Quib keeps notes. A note is one plain text, from which title, tags, to-dos and links are read.
Scripts and other programs make, read and change notes through quib: URLs,
the session bus and quibctl.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION editors)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# xdg-open answers callbacks; without the fonts and picture plugins other fonts are used and some pictures not shown.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "xdg-utils, fonts-dejavu-core")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, qt6-image-formats-plugins, hunspell-en-us | hunspell-dictionary, fonts-inter, fonts-lato, fonts-liberation2, dbus-user-session | dbus-x11")
include(CPack)
