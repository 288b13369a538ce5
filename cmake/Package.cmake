# The Debian package that `cpack` makes of a build: scripts/package of the one that is shipped, the tests of their own.

set(CORVANE_MAINTAINER "Corvane developers <developers@corvane.invalid>" CACHE STRING
    "Whom the package names as its maintainer, with an address; the default's leads nowhere")

# What `cmake --install` leaves out: for this package alone.
set(debian ${PROJECT_SOURCE_DIR}/packaging/debian)
install(FILES ${debian}/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/corvane
    COMPONENT debian EXCLUDE_FROM_ALL)
install(FILES ${debian}/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME corvane
    COMPONENT debian EXCLUDE_FROM_ALL)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME corvane)
set(CPACK_VERBATIM_VARIABLES ON)

# Below /usr, where systemd, the bus and polkit look. What installs the helper from elsewhere stays out: this one is
# there, and stays the package manager's.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL corvane debian)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${debian}/finish.cmake)

# The build's number is the revision, so that a newer build replaces an older one of the same version.
set(CPACK_DEBIAN_PACKAGE_NAME corvane)
set(CPACK_DEBIAN_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CORVANE_BUILD_NUMBER})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${CORVANE_MAINTAINER})
if(CORVANE_HOME_PAGE)
    set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${CORVANE_HOME_PAGE})
endif()
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "keeps a computer awake and cools it harder
Corvane is for renders, uploads and builds that run overnight. It keeps the
computer awake, also with its lid closed, keeps external drives from spinning
down, and controls the fans: a floor in percent for a limited time, or a
profile that follows the temperature.

It only ever cools harder than the computer's firmware would. On real heat,
and on every doubt, it hands the fans back to the firmware and checks that it
did.")

# What no linker sees: the parts of Qt Quick that the views are made of, the bus, what starts the helper, and displays
# without an X server.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
string(JOIN ", " CPACK_DEBIAN_PACKAGE_DEPENDS
    "default-dbus-system-bus | dbus-system-bus" systemd
    qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript qml6-module-qtquick
    qml6-module-qtquick-layouts qml6-module-qtquick-templates qml6-module-qtquick-window qt6-wayland)
# The typeface and the pictures in texts; the uninstaller's prompt; batteries and drives; pages and icons.
string(JOIN ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS
    fonts-inter fonts-noto-color-emoji pkexec polkitd upower udisks2 xdg-utils hicolor-icon-theme
    "default-dbus-session-bus | dbus-session-bus")
# The tray of a desktop that has none of its own.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS gnome-shell-extension-appindicator)

set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${debian}/postinst ${debian}/prerm ${debian}/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

include(CPack)
