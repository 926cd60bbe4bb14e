# Unpacks ZIP into the folder STAGING, compares what is there with what should be, and runs its lister from there, with
# nothing set that would tell it where its DLLs and plugins are. EMULATOR runs it where the host is not Windows.
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE ${STAGING})
file(ARCHIVE_EXTRACT INPUT ${ZIP} DESTINATION ${STAGING})
get_filename_component(name ${ZIP} NAME_WLE)
set(folder ${STAGING}/${name})

set(expected
  LICENSE.txt
  Qt6Core.dll
  Qt6Gui.dll
  Qt6Widgets.dll
  VTLPLE20.htd
  VTLPLEH.htm
  imageformats/qgif.dll
  imageformats/qico.dll
  imageformats/qjpeg.dll
  libgcc_s_seh-1.dll
  libstdc++-6.dll
  libtag.dll
  libwinpthread-1.dll
  licences/GCC-exception.txt
  licences/GPL-3.txt
  licences/LGPL-2.1.txt
  licences/LGPL-3.txt
  licences/Qt-parts.txt
  licences/SOURCES.txt
  licences/mingw-w64.txt
  platforms/qoffscreen.dll
  platforms/qwindows.dll
  playlist-editor.exe
  playlist-inspect.exe
  styles/qwindowsvistastyle.dll)
file(GLOB_RECURSE found RELATIVE ${folder} ${folder}/*)
list(SORT found)
if(NOT found STREQUAL expected)
  message(FATAL_ERROR "expected: ${expected}\nfound: ${found}")
endif()

foreach(program playlist-editor playlist-inspect)
  foreach(setting "Microsoft.Windows.Common-Controls" "PerMonitorV2" "<longPathAware [^>]*>true<")
    file(STRINGS ${folder}/${program}.exe lines REGEX "${setting}")
    if(NOT lines)
      message(FATAL_ERROR "the manifest of ${program}.exe lacks ${setting}")
    endif()
  endforeach()
endforeach()

file(WRITE ${STAGING}/list.m3u "gone.mp3\n")
foreach(variable WINEPATH QT_PLUGIN_PATH QT_QPA_PLATFORM QT_QPA_FONTDIR)
  unset(ENV{${variable}})
endforeach()
execute_process(COMMAND ${EMULATOR} ./playlist-inspect.exe ../list.m3u --picture ../picture.png
  WORKING_DIRECTORY ${folder} RESULT_VARIABLE failed OUTPUT_VARIABLE listing ERROR_VARIABLE output)
if(failed OR NOT listing MATCHES "\ngone.mp3\t.*\npanel 1: Total: 1\r?\n" OR NOT EXISTS ${STAGING}/picture.png)
  message(FATAL_ERROR "the packed program fails: ${failed}\n${listing}${output}")
endif()
