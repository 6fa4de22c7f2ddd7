# What editors and file managers load by themselves to start the program: files of Python and text.

# A line of the menu for every preset.
file(GLOB PRESET_FILES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/presets/*.q9q)
set(MORVALIS_PRESET_OPTIONS)
foreach(PRESET IN LISTS PRESET_FILES)
  get_filename_component(PRESET ${PRESET} NAME_WLE)
  string(APPEND MORVALIS_PRESET_OPTIONS "    <option value=\"${PRESET}\">${PRESET}</option>\n")
endforeach()
configure_file(inkscape/morvalis.inx.in ${PROGRAM_DOCUMENTS}/inkscape/morvalis.inx @ONLY)
configure_file(inkscape/morvalis_render.py ${PROGRAM_DOCUMENTS}/inkscape/morvalis_render.py COPYONLY)
install(DIRECTORY ${PROGRAM_DOCUMENTS}/inkscape/ DESTINATION ${SHARED_DATA}/inkscape/extensions/morvalis
  COMPONENT inkscape)

install(DIRECTORY krita/ DESTINATION ${SHARED_DATA}/krita/pykrita COMPONENT krita
  PATTERN "__pycache__" EXCLUDE)

# File managers offer the program for what its entry in the menus opens.
file(READ command_line/morvalis.desktop DESKTOP_ENTRY)
string(REGEX MATCH "\nMimeType=([^\n]*)" MORVALIS_MIME_TYPES "${DESKTOP_ENTRY}")
set(MORVALIS_MIME_TYPES "${CMAKE_MATCH_1}")
foreach(ACTION edit again)
  configure_file(file_managers/morvalis-${ACTION}.desktop.in
    ${PROGRAM_DOCUMENTS}/file_managers/morvalis-${ACTION}.desktop @ONLY)
  install(FILES ${PROGRAM_DOCUMENTS}/file_managers/morvalis-${ACTION}.desktop
    DESTINATION ${SHARED_DATA}/kio/servicemenus COMPONENT window)
endforeach()
configure_file(file_managers/morvalis_nautilus.py.in
  ${PROGRAM_DOCUMENTS}/file_managers/morvalis_nautilus.py @ONLY)
install(FILES ${PROGRAM_DOCUMENTS}/file_managers/morvalis_nautilus.py
  DESTINATION ${SHARED_DATA}/nautilus-python/extensions COMPONENT window)
