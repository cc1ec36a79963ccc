# The Debian packages, one for each component of the install rules. `cpack` makes them from a build of the preset
# "package"; scripts/release makes those that are given away.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zantor)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_CONTACT "${ZANTOR_MAINTAINER}")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL console common)
if(ZANTOR_WINDOW)
    list(APPEND CPACK_COMPONENTS_ALL window)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# Not "games": Debian wants such programs in /usr/games, which not everybody has in PATH.
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${PROJECT_HOMEPAGE_URL})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# What the programs are linked with. Nothing of ours is loaded in another way, but Qt's door to the display: that
# to X comes with the library of Qt's windows, that to Wayland is a package of its own.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

set(same_version "zantor-common (= ${PROJECT_VERSION})")
set(speech "speech-dispatcher, speech-dispatcher-espeak-ng")

set(CPACK_DEBIAN_WINDOW_PACKAGE_NAME zantor)
set(CPACK_DEBIAN_WINDOW_PACKAGE_DEPENDS "${same_version}")
set(CPACK_DEBIAN_WINDOW_PACKAGE_RECOMMENDS
    "${speech}, at-spi2-core, fonts-dejavu-core | fonts-liberation, qt6-wayland")
set(CPACK_DEBIAN_WINDOW_PACKAGE_SUGGESTS "orca, fonts-wqy-microhei")
set(CPACK_DEBIAN_WINDOW_DESCRIPTION "client for text games (MUDs) that reads them aloud
Zantor connects to MUDs, the multi-user games of text that one plays over
telnet. It shows the game's coloured text and speaks everything that arrives,
through the speech service of the desktop or through the screen reader. Every
control has a name and a key.

It has triggers, macros, speed walks, game sounds and music, compression, and
games in English, in UTF-8 and in Chinese.

This package contains the window.")

set(CPACK_DEBIAN_CONSOLE_PACKAGE_NAME zantor-console)
set(CPACK_DEBIAN_CONSOLE_PACKAGE_DEPENDS "${same_version}")
set(CPACK_DEBIAN_CONSOLE_PACKAGE_RECOMMENDS "${speech}")
set(CPACK_DEBIAN_CONSOLE_DESCRIPTION "client for text games (MUDs) in the terminal, with speech
Zantor connects to MUDs, the multi-user games of text that one plays over
telnet. It has triggers, macros, speed walks, speech, game sounds and music,
compression, and games in English, in UTF-8 and in Chinese.

This package contains the client for the terminal, which can also be used in
scripts. It needs no graphical libraries.")

set(CPACK_DEBIAN_COMMON_PACKAGE_NAME zantor-common)
set(CPACK_DEBIAN_COMMON_DESCRIPTION "client for text games (MUDs), demo game and shared files
Zantor connects to MUDs, the multi-user games of text that one plays over
telnet.

This package contains what its window and its terminal client share: the
database that a new player starts with, and a small game to learn with, which
runs on the player's own machine.")

set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/SetTimes.cmake)

include(CPack)
