# Two packages, so that another provider of `shortcuts` can take the second one's place.
set(QUILLBAR_MAINTAINER "The Quillbar authors <authors@quillbar.invalid>" CACHE STRING
    "Name and address that the Debian packages give as their maintainer")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillbar)
set(CPACK_PACKAGE_CONTACT "${QUILLBAR_MAINTAINER}")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_COMPONENTS_ALL quillbar shortcuts)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

set(CPACK_DEBIAN_QUILLBAR_PACKAGE_NAME quillbar)
set(CPACK_DEBIAN_QUILLBAR_DESCRIPTION "run your shortcuts from the tray
Quillbar puts the automations you keep one click away: pin them once, then
run them from the tray menu, with a digit key while the menu is open, or with
a hotkey.
.
It drives the command-line tool shortcuts, which quillbar-shortcuts provides.")
# What is not linked but loaded or asked for: the symbols, their renderer, a session bus.
set(CPACK_DEBIAN_QUILLBAR_PACKAGE_DEPENDS
    "quillbar-shortcuts | shortcuts-provider, libqt6svg6, bootstrap-icons, default-dbus-session-bus | dbus-session-bus")
set(CPACK_DEBIAN_QUILLBAR_PACKAGE_RECOMMENDS
    "libglib2.0-bin, dunst | notification-daemon, qt6-wayland")

set(CPACK_DEBIAN_SHORTCUTS_PACKAGE_NAME quillbar-shortcuts)
set(CPACK_DEBIAN_SHORTCUTS_DESCRIPTION "list and run the shortcuts of your folder
The command-line tool shortcuts lists the executables and desktop entries in a
folder of yours and runs one by name. Quillbar drives it; it works without
Quillbar as well.")
set(CPACK_DEBIAN_SHORTCUTS_PACKAGE_PROVIDES shortcuts-provider)
set(CPACK_DEBIAN_SHORTCUTS_PACKAGE_CONFLICTS shortcuts-provider)
set(CPACK_DEBIAN_SHORTCUTS_PACKAGE_REPLACES shortcuts-provider)
set(CPACK_DEBIAN_SHORTCUTS_PACKAGE_RECOMMENDS libglib2.0-bin)

include(CPack)
