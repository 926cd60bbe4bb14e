# Makes FOLDER anew of PROGRAMS and TEXTS, the Qt plugins of PLUGINS that the program uses, and every DLL of DLL_FOLDERS
# that one of them needs; then packs it as ZIP. A DLL that none of the folders has is a part of Windows.
cmake_minimum_required(VERSION 3.25)

# Copies the DLLs that a file of FOLDER names, and those that they name.
function(copy_dlls_of file)
  execute_process(COMMAND ${OBJDUMP} -p ${file} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "DLL Name: [^\r\n]+" lines "${headers}")
  foreach(line IN LISTS lines)
    string(REPLACE "DLL Name: " "" name "${line}")
    foreach(folder IN LISTS DLL_FOLDERS)
      if(EXISTS ${folder}/${name} AND NOT EXISTS ${FOLDER}/${name})
        file(COPY ${folder}/${name} DESTINATION ${FOLDER})
        copy_dlls_of(${FOLDER}/${name})
      endif()
    endforeach()
  endforeach()
endfunction()

file(REMOVE_RECURSE ${FOLDER})
file(REMOVE ${ZIP})
file(COPY ${PROGRAMS} ${TEXTS} DESTINATION ${FOLDER})
file(RENAME ${FOLDER}/LICENSE ${FOLDER}/LICENSE.txt)
file(COPY ${PLUGINS}/platforms/qwindows.dll ${PLUGINS}/platforms/qoffscreen.dll DESTINATION ${FOLDER}/platforms)
foreach(format gif ico jpeg)
  file(COPY ${PLUGINS}/imageformats/q${format}.dll DESTINATION ${FOLDER}/imageformats)
endforeach()
file(COPY ${PLUGINS}/styles/qwindowsvistastyle.dll DESTINATION ${FOLDER}/styles)
file(GLOB_RECURSE binaries ${FOLDER}/*.exe ${FOLDER}/*.dll)
foreach(binary IN LISTS binaries)
  copy_dlls_of(${binary})
endforeach()
file(GLOB_RECURSE binaries ${FOLDER}/*.exe ${FOLDER}/*.dll)
execute_process(COMMAND ${STRIP} ${binaries} COMMAND_ERROR_IS_FATAL ANY)

get_filename_component(parent ${FOLDER} DIRECTORY)
get_filename_component(name ${FOLDER} NAME)
execute_process(COMMAND ${CMAKE_COMMAND} -E tar cf ${ZIP} --format=zip -- ${name}
  WORKING_DIRECTORY ${parent} COMMAND_ERROR_IS_FATAL ANY)
