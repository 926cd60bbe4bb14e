# The target windows-package: a folder with all that the program needs on any Windows, and its ZIP.
set(windows_folder ${PROJECT_BINARY_DIR}/${desktop_name}-${PROJECT_VERSION}-win64)
set(windows_zip ${windows_folder}.zip)

add_custom_command(OUTPUT ${windows_zip}
  COMMAND ${CMAKE_COMMAND}
    "-DPROGRAMS=$<TARGET_FILE:playlist-editor>;$<TARGET_FILE:playlist-inspect>"
    "-DTEXTS=${resources}/VTLPLEH.htm;${resources}/VTLPLE20.htd;${PROJECT_SOURCE_DIR}/LICENSE;${PROJECT_BINARY_DIR}/licences"
    -DPLUGINS=${QT6_INSTALL_PREFIX}/${QT6_INSTALL_PLUGINS}
    "-DDLL_FOLDERS=${windows_dll_folders}"
    -DOBJDUMP=${CMAKE_OBJDUMP} -DSTRIP=${CMAKE_STRIP}
    -DFOLDER=${windows_folder} -DZIP=${windows_zip}
    -P ${PROJECT_SOURCE_DIR}/cmake/WindowsDeploy.cmake
  DEPENDS playlist-editor playlist-inspect ${resources}/VTLPLEH.htm ${resources}/VTLPLE20.htd
    ${PROJECT_SOURCE_DIR}/LICENSE ${resources}/licences.tar.xz ${resources}/SOURCES.txt
    ${PROJECT_SOURCE_DIR}/cmake/WindowsDeploy.cmake
  COMMENT "Packing ${windows_zip}" VERBATIM)
add_custom_target(windows-package ALL DEPENDS ${windows_zip})
