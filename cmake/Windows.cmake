# What an executable for Windows carries with it, and where its DLLs are found while it is built and tested.
enable_language(RC)

# windows_resources(NAME): icon, version and manifest of an executable.
function(windows_resources name)
  if(name STREQUAL "playlist-editor")
    set(description "Vantrel Playlist Editor")
  else()
    set(description "Vantrel Playlist Editor, listing playlists")
  endif()
  configure_file(${PROJECT_SOURCE_DIR}/resources/program.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${name}.rc @ONLY)
  target_sources(${name} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${name}.rc)
endfunction()

# Folders that hold DLLs, those of Qt first: of every prefix, of the toolchain, and of the compiler.
set(windows_dll_folders ${QT6_INSTALL_PREFIX}/bin)
foreach(prefix IN LISTS CMAKE_PREFIX_PATH)
  list(APPEND windows_dll_folders ${prefix}/bin)
endforeach()
if(CMAKE_TOOLCHAIN_FILE)
  get_filename_component(folder ${CMAKE_TOOLCHAIN_FILE} DIRECTORY)
  list(APPEND windows_dll_folders ${folder}/runtime)
endif()
get_filename_component(folder ${CMAKE_CXX_COMPILER} DIRECTORY)
list(APPEND windows_dll_folders ${folder})
list(REMOVE_DUPLICATES windows_dll_folders)

# Qt Test writes to a debugger otherwise, and the headless platform knows no fonts of its own.
set(windows_test_environment "QT_FORCE_STDERR_LOGGING=1")
if(CMAKE_CROSSCOMPILING)
  list(TRANSFORM windows_dll_folders PREPEND "z:" OUTPUT_VARIABLE folders)
  string(REPLACE ";" "\\;" folders "${folders}")
  string(APPEND windows_test_environment ";WINEPATH=${folders};QT_QPA_FONTDIR=z:/usr/share/fonts/truetype/dejavu")
else()
  string(APPEND windows_test_environment ";QT_QPA_FONTDIR=$ENV{SystemRoot}/Fonts")
endif()
