# One target carries the warnings, the Qt switches and the instrumentation of every target of the project.
add_library(project_options INTERFACE)

target_compile_definitions(project_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_FOREACH QT_NO_KEYWORDS QT_USE_QSTRINGBUILDER
  QT_STRICT_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
target_compile_options(project_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
  -Wunused -Wold-style-cast -Wnull-dereference $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op>)
if(PLAYLIST_EDITOR_WERROR)
  target_compile_options(project_options INTERFACE -Werror)
endif()
if(MINGW)
  # Here it sees null pointers behind every check of a QPointer.
  target_compile_options(project_options INTERFACE -Wno-null-dereference)
endif()
if(PLAYLIST_EDITOR_SANITIZE)
  # -Wnull-dereference sees paths that only the instrumentation adds.
  target_compile_options(project_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -Wno-null-dereference)
  target_link_options(project_options INTERFACE -fsanitize=address,undefined)
endif()
if(PLAYLIST_EDITOR_FUZZ)
  target_compile_options(project_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(PLAYLIST_EDITOR_COVERAGE)
  target_compile_options(project_options INTERFACE --coverage)
  target_link_options(project_options INTERFACE --coverage)
endif()

# room_library(NAME SOURCES ... LINK ...): one static library of a room.
function(room_library name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${ROOM_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ROOM_LINK} PRIVATE project_options)
endfunction()
