# The Debian package.
file(STRINGS changelog first_line LIMIT_COUNT 1)
if(NOT first_line MATCHES "^sonnel \\(${PROJECT_VERSION}\\) ")
    message(FATAL_ERROR "packaging/changelog does not begin with version ${PROJECT_VERSION}")
endif()
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS changelog)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME sonnel)
set(CPACK_PACKAGE_VENDOR "The Sonnel developers")
set(CPACK_PACKAGE_CONTACT "The Sonnel developers <developers@sonnel-player.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://www.sonnel-player.example/)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "karaoke player for the desktop")
set(CPACK_PACKAGE_DESCRIPTION "Sonnel plays the music of a MIDI file with a General MIDI SoundFont,
shows the words page by page and colours them at the moment they are sung.
Its library lists your songs by title, author or album; a test measures how
early words have to be drawn on the screen it runs on.
.
It also plays karaoke MIDI files, changes key and tempo while a song plays,
shows the words on a second screen for the singers, and keeps a queue of
songs with their singers that announces the next one.
.
Five demo songs come with it.")
# Files outside of the prefix (/etc) are packed too.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/conffiles)
# The libraries, with them Qt's X11 platform and SVG plugins, are found; a SoundFont is no library.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
string(JOIN " | " CPACK_DEBIAN_PACKAGE_DEPENDS
    timgm6mb-soundfont fluid-soundfont-gm musescore-general-soundfont fluidr3mono-gm-soundfont)
string(JOIN ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS
    shared-mime-info desktop-file-utils xdg-utils fonts-liberation
    "pavucontrol | pavucontrol-qt | kmix | mate-media | gnome-control-center")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS qt6-wayland)
include(CPack)
