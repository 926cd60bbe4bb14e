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
  share/icons/hicolor/scalable/apps/${name}.svg
  share/metainfo/example.vantrel.PlaylistEditor.metainfo.xml
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
