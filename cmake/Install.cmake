# What `cmake --install` puts where, and the Debian package that CPack makes of it.
include(GNUInstallDirs)

set(desktop_name vantrel-playlist-editor)
set(resources ${PROJECT_SOURCE_DIR}/resources)

# The texts of others' licences, as they are given out, and the note that tells whose they are.
file(ARCHIVE_EXTRACT INPUT ${resources}/licences.tar.xz DESTINATION ${PROJECT_BINARY_DIR})
configure_file(${resources}/SOURCES.txt ${PROJECT_BINARY_DIR}/licences/SOURCES.txt COPYONLY)

install(TARGETS playlist-editor playlist-inspect RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# The program looks for these beside its own folder, in ../share.
install(FILES ${resources}/VTLPLEH.htm ${resources}/VTLPLE20.htd DESTINATION ${CMAKE_INSTALL_DATADIR}/${desktop_name})

set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Vantrel <maintainers@vantrel.example>")

# compress(FILE): makes FILE.gz, as packages hold their pages and texts.
function(compress file)
  file(ARCHIVE_CREATE OUTPUT ${file}.gz PATHS ${file} FORMAT raw COMPRESSION GZip COMPRESSION_LEVEL 9)
endfunction()

# A package without a changelog of this form is faulty.
function(make_debian_changelog folder)
  string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
  file(WRITE ${folder}/changelog
"${desktop_name} (${PROJECT_VERSION}) unstable; urgency=medium

  * Version ${PROJECT_VERSION}.

 -- ${CPACK_DEBIAN_PACKAGE_MAINTAINER}  ${date}
")
  compress(${folder}/changelog)
endfunction()

if(UNIX AND NOT APPLE)
  install(FILES ${resources}/${desktop_name}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${resources}/example.vantrel.PlaylistEditor.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(DIRECTORY ${resources}/hicolor DESTINATION ${CMAKE_INSTALL_DATADIR}/icons
    FILES_MATCHING PATTERN "${desktop_name}.png" PATTERN "${desktop_name}.svg")
  set(documents ${CMAKE_INSTALL_DATADIR}/doc/${desktop_name})
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${documents} RENAME copyright)
  make_debian_changelog(${PROJECT_BINARY_DIR}/debian)
  install(FILES ${PROJECT_BINARY_DIR}/debian/changelog.gz DESTINATION ${documents})
  install(DIRECTORY ${PROJECT_BINARY_DIR}/licences DESTINATION ${documents})
  foreach(program playlist-editor playlist-inspect)
    configure_file(${resources}/man/${program}.1 ${PROJECT_BINARY_DIR}/debian/${program}.1 COPYONLY)
    compress(${PROJECT_BINARY_DIR}/debian/${program}.1)
    install(FILES ${PROJECT_BINARY_DIR}/debian/${program}.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  endforeach()
else()
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/${desktop_name})
  install(DIRECTORY ${PROJECT_BINARY_DIR}/licences DESTINATION ${CMAKE_INSTALL_DATADIR}/${desktop_name})
endif()

if(WIN32)
  set(CPACK_GENERATOR ZIP)
else()
  set(CPACK_GENERATOR DEB)
endif()
set(CPACK_PACKAGE_NAME ${desktop_name})
set(CPACK_PACKAGE_VENDOR "Vantrel")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_HOMEPAGE_URL "https://vantrel.example/playlist-editor")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "desktop editor for M3U playlists")
set(CPACK_PACKAGE_DESCRIPTION
"Opens, builds, reorders and saves M3U playlists of MP3, OGG Vorbis, WAV and
WMA files. Every item shows its size and folder, and for MP3 files the length
and the data of the audio stream; items whose files are gone are kept and shown as
missing. Playlists written on Windows open where their disks are mounted.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Folders get the rights of a package, whatever the umask of whoever builds it.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
# A desktop that speaks Wayland alone, and icons and documents opened by the desktop's own programs.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "hicolor-icon-theme, qt6-wayland, xdg-utils")
include(CPack)
