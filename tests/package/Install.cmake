# Installs BUILD into the folder STAGING and compares what is there with what should be. Its entry in the menu must
# find its program and its icon, and the program its help page.
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE ${STAGING})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${STAGING}
  RESULT_VARIABLE failed OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(failed)
  message(FATAL_ERROR "the installation fails:\n${output}")
endif()

set(name vantrel-playlist-editor)
set(expected
  bin/playlist-editor
  bin/playlist-inspect
  share/applications/${name}.desktop
  share/doc/${name}/changelog.gz
  share/doc/${name}/copyright
  share/doc/${name}/licences/GCC-exception.txt
  share/doc/${name}/licences/GPL-3.txt
  share/doc/${name}/licences/LGPL-2.1.txt
  share/doc/${name}/licences/LGPL-3.txt
  share/doc/${name}/licences/Qt-parts.txt
  share/doc/${name}/licences/SOURCES.txt
  share/doc/${name}/licences/mingw-w64.txt
  share/icons/hicolor/scalable/apps/${name}.svg
  share/man/man1/playlist-editor.1.gz
  share/man/man1/playlist-inspect.1.gz
  share/metainfo/example.vantrel.PlaylistEditor.metainfo.xml
  share/${name}/VTLPLE20.htd
  share/${name}/VTLPLEH.htm)
foreach(size 16 22 24 32 48 64 128 256)
  list(APPEND expected share/icons/hicolor/${size}x${size}/apps/${name}.png)
endforeach()
list(SORT expected)
file(GLOB_RECURSE found RELATIVE ${STAGING} ${STAGING}/*)
list(SORT found)
if(NOT found STREQUAL expected)
  message(FATAL_ERROR "expected: ${expected}\nfound: ${found}")
endif()

file(STRINGS ${STAGING}/share/applications/${name}.desktop lines)
foreach(line "Exec=playlist-editor %f" "Icon=${name}" "MimeType=audio/x-mpegurl;application/vnd.apple.mpegurl;")
  if(NOT line IN_LIST lines)
    message(FATAL_ERROR "the desktop entry lacks the line ${line}")
  endif()
endforeach()

# The copy runs from where it stands.
file(WRITE ${STAGING}/list.m3u "gone.mp3\n")
execute_process(COMMAND ${STAGING}/bin/playlist-inspect ${STAGING}/list.m3u
  RESULT_VARIABLE failed OUTPUT_VARIABLE listing ERROR_VARIABLE output)
if(failed OR NOT listing MATCHES "\ngone.mp3\t.*\npanel 1: Total: 1\n")
  message(FATAL_ERROR "the installed program fails:\n${listing}${output}")
endif()
execute_process(COMMAND ${STAGING}/bin/playlist-inspect ${STAGING}/list.m3u
  OUTPUT_FILE /dev/full RESULT_VARIABLE failed ERROR_VARIABLE output)
if(NOT failed EQUAL 1 OR NOT output STREQUAL "playlist-inspect: cannot write the list\n")
  message(FATAL_ERROR "a full disk is not reported: ${failed}\n${output}")
endif()

# The note names every part, and the texts are whole.
file(READ ${STAGING}/share/doc/${name}/licences/SOURCES.txt note)
foreach(part Qt TagLib GCC mingw-w64 "https://")
  if(NOT note MATCHES "${part}")
    message(FATAL_ERROR "the note on sources lacks ${part}")
  endif()
endforeach()
foreach(text GPL-3 LGPL-3 LGPL-2.1)
  file(READ ${STAGING}/share/doc/${name}/licences/${text}.txt whole)
  if(NOT whole MATCHES "GNU (LESSER )?GENERAL PUBLIC LICENSE.*permanent authorization|END OF TERMS AND CONDITIONS")
    message(FATAL_ERROR "${text}.txt is not whole")
  endif()
endforeach()

# The package is one that Debian's own judge finds no error in.
if(LINTIAN)
  execute_process(COMMAND ${CMAKE_COMMAND} -E rm -rf ${STAGING}/package)
  execute_process(COMMAND ${CPACK} --config ${BUILD}/CPackConfig.cmake -G DEB -B ${STAGING}/package
    WORKING_DIRECTORY ${BUILD} RESULT_VARIABLE failed OUTPUT_VARIABLE output ERROR_VARIABLE output)
  file(GLOB package ${STAGING}/package/*.deb)
  if(failed OR NOT package)
    message(FATAL_ERROR "the package cannot be made:\n${output}")
  endif()
  execute_process(COMMAND ${LINTIAN} --fail-on error --no-tag-display-limit ${package}
    RESULT_VARIABLE failed OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(failed)
    message(FATAL_ERROR "lintian finds errors:\n${output}")
  endif()
endif()
