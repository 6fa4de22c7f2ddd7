# The filter module for Windows hosts: core, back end and resources in one library without
# dependencies but the system's own.

enable_language(RC)

# Every picture's resource number is what its file's name begins with.
set(PICTURES_SCRIPT ${PROJECT_BINARY_DIR}/pictures.rc)
set(PICTURES_TEXT "// Made by the build.\n")
set(PICTURE_FILES)
foreach(kind IN ITEMS "bitmaps/*.bmp;BITMAP" "icons/*.ico;ICON" "cursors/*.cur;CURSOR"
    "scaled/*.pack;RCDATA")
  list(GET kind 0 pattern)
  list(GET kind 1 type)
  file(GLOB files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/${pattern})
  list(SORT files COMPARE NATURAL)
  foreach(file IN LISTS files)
    get_filename_component(name ${file} NAME)
    string(REGEX MATCH "^[0-9]+" number ${name})
    string(APPEND PICTURES_TEXT "${number} ${type} \"${file}\"\n")
  endforeach()
  list(APPEND PICTURE_FILES ${files})
endforeach()
file(CONFIGURE OUTPUT ${PICTURES_SCRIPT} CONTENT "${PICTURES_TEXT}" @ONLY)
set_source_files_properties(${PICTURES_SCRIPT} PROPERTIES OBJECT_DEPENDS "${PICTURE_FILES}")

add_library(morvalis_module MODULE
  ${PICTURES_SCRIPT} resources/windows/module.rc resources/windows/dialogs.rc)
set_target_properties(morvalis_module PROPERTIES
  OUTPUT_NAME Morvalis PREFIX "" SUFFIX .8bf
  LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}
  LINKER_LANGUAGE CXX)
string(REPLACE "." "," VERSION_WORDS "${PROJECT_VERSION},0")
# The resource compiler loses the quotes of definitions on its command line.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/module_version.h CONTENT
"#define MORVALIS_VERSION_WORDS ${VERSION_WORDS}
#define MORVALIS_VERSION_TEXT \"${PROJECT_VERSION}\"
" @ONLY)
target_include_directories(morvalis_module PRIVATE ${PROJECT_BINARY_DIR})
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  target_compile_definitions(morvalis_module PRIVATE $<$<COMPILE_LANGUAGE:RC>:MORVALIS_64>)
endif()

# What no other file calls is still what the host calls.
target_link_libraries(morvalis_module PRIVATE
  -Wl,--whole-archive morvalis_windows morvalis_core -Wl,--no-whole-archive)
# The run-time libraries go inside, since hosts do not look beside the module for others. The
# dialog procedure is exported under its plain name. The same sources give the same bytes.
target_link_options(morvalis_module PRIVATE -static -s -Wl,--kill-at -Wl,--no-insert-timestamp
  -Wl,--subsystem,windows)
