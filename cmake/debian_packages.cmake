# Debian packages: the program, its windows, what editors load. The same sources and the same
# SOURCE_DATE_EPOCH give the same bytes.

# Everything that is compiled says where its source is by its place in the tree.
target_compile_options(morvalis_options INTERFACE -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)

set(MORVALIS_MAINTAINER "The Morvalis developers <morvalis@localhost.invalid>" CACHE STRING
  "whom the packages name as their maintainer")
set(DEBIAN_DOCUMENTS ${CMAKE_BINARY_DIR}/debian)
execute_process(
  COMMAND bash ${PROJECT_SOURCE_DIR}/scripts/debian_documents.sh ${PROJECT_VERSION}
    "${MORVALIS_MAINTAINER}" ${DEBIAN_DOCUMENTS}
  COMMAND_ERROR_IS_FATAL ANY)

set(PACKAGE_program morvalis)
set(PACKAGE_window morvalis-window)
set(PACKAGE_gimp gimp-morvalis)
set(PACKAGE_inkscape inkscape-morvalis)
set(PACKAGE_krita krita-morvalis)
set(SCRIPT_PARTS inkscape krita)  # nothing compiled
foreach(COMPONENT program window gimp ${SCRIPT_PARTS})
  install(FILES ${DEBIAN_DOCUMENTS}/copyright ${DEBIAN_DOCUMENTS}/${PACKAGE_${COMPONENT}}/changelog.gz
    DESTINATION share/doc/${PACKAGE_${COMPONENT}} COMPONENT ${COMPONENT})
  string(TOUPPER ${COMPONENT} PART)
  if(COMPONENT IN_LIST SCRIPT_PARTS)
    set(CPACK_DEBIAN_${PART}_PACKAGE_ARCHITECTURE all)
  else()
    set(CPACK_DEBIAN_${PART}_PACKAGE_SHLIBDEPS ON)
  endif()
endforeach()

# The desktop's entry starts the program, which stands in the package that this one depends on.
file(WRITE ${DEBIAN_DOCUMENTS}/overrides "morvalis-window: desktop-command-not-in-package *\n")
install(FILES ${DEBIAN_DOCUMENTS}/overrides DESTINATION share/lintian/overrides
  RENAME morvalis-window COMPONENT window)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME morvalis)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${MORVALIS_MAINTAINER})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL program window gimp inkscape krita)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME morvalis)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS "morvalis-window")
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION
"image filter that turns a shape into a lit, bevelled object
The edge of a selection grows a bevel, a relief is pressed in, two coloured
lights fall on it, and it mirrors an environment picture. This package holds
the command line program, its presets and its manual page.")

set(SAME_VERSION "morvalis (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_WINDOW_PACKAGE_NAME morvalis-window)
set(CPACK_DEBIAN_WINDOW_PACKAGE_DEPENDS "${SAME_VERSION}, qt6-qpa-plugins")
set(CPACK_DEBIAN_WINDOW_PACKAGE_RECOMMENDS "fonts-liberation, qt6-wayland")
set(CPACK_DEBIAN_WINDOW_PACKAGE_SUGGESTS "python3-nautilus")
set(CPACK_COMPONENT_WINDOW_DESCRIPTION
"dialog of morvalis for the desktop
The settings of the bevel filter in a window that shows the result while it
is set, the entry in the desktop's menus, and the filter among the actions of
picture files in Dolphin and, with python3-nautilus, in Nautilus.")

set(CPACK_DEBIAN_GIMP_PACKAGE_NAME gimp-morvalis)
set(OF_GIMP "gimp (>= 2.10), gimp (<< 2.99)")
if(TARGET morvalis_gimp3)
  set(OF_GIMP "gimp (>= 3.0)")
endif()
set(CPACK_DEBIAN_GIMP_PACKAGE_DEPENDS
  "${SAME_VERSION}, morvalis-window (= ${PROJECT_VERSION}), ${OF_GIMP}")
set(CPACK_DEBIAN_GIMP_PACKAGE_ENHANCES gimp)
set(CPACK_COMPONENT_GIMP_DESCRIPTION
"bevel filter for GIMP
Puts the filter of morvalis into GIMP's menus, below Filters, Light and
Shadow, with its dialog, and makes it available to scripts.")

# The dialog is one of their ways to choose, so it comes along unless it is refused.
set(CPACK_DEBIAN_INKSCAPE_PACKAGE_NAME inkscape-morvalis)
set(CPACK_DEBIAN_INKSCAPE_PACKAGE_DEPENDS
  "${SAME_VERSION}, inkscape (>= 1.2), python3:any, python3-lxml")
set(CPACK_DEBIAN_INKSCAPE_PACKAGE_RECOMMENDS "morvalis-window")
set(CPACK_DEBIAN_INKSCAPE_PACKAGE_ENHANCES inkscape)
set(CPACK_COMPONENT_INKSCAPE_DESCRIPTION
"bevel filter for Inkscape
Puts the filter of morvalis into Inkscape's menus, below Extensions, Render:
what is selected is rendered, lit, and laid over itself as a picture.")

set(CPACK_DEBIAN_KRITA_PACKAGE_NAME krita-morvalis)
set(CPACK_DEBIAN_KRITA_PACKAGE_DEPENDS
  "${SAME_VERSION}, morvalis-window (= ${PROJECT_VERSION}), krita (>= 1:5.1), python3-pyqt5")
set(CPACK_DEBIAN_KRITA_PACKAGE_ENHANCES krita)
set(CPACK_COMPONENT_KRITA_DESCRIPTION
"bevel filter for Krita
Puts the filter of morvalis into Krita's menus, below Tools, Scripts, once its
plug-in is switched on there: what is selected of a layer becomes a lit object
on a layer of its own.")

include(CPack)
