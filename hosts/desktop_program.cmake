# The program `morvalis`, in three parts: the program itself, which needs little; the library that
# reads and writes most formats; the library that has windows. The program loads either when a
# command needs it.

find_package(CLI11 REQUIRED)
find_package(PkgConfig REQUIRED)
find_package(ZLIB REQUIRED)
pkg_check_modules(ISAL REQUIRED IMPORTED_TARGET libisal)
pkg_check_modules(VIPS REQUIRED IMPORTED_TARGET vips>=8.13)
pkg_check_modules(FONTCONFIG REQUIRED IMPORTED_TARGET fontconfig)

# Picture files, and running the effect on them.
file(GLOB RUN_SOURCES CONFIGURE_DEPENDS
  process/*.cpp process/libraries/*.cpp picture_files/*.cpp png_files/*.cpp small_formats/*.cpp effect_choices/*.cpp
  effect_runs/*.cpp)
add_library(morvalis_runs STATIC ${RUN_SOURCES})
if(MORVALIS_SANITIZE)
  set_source_files_properties(process/libraries/library_guard.cpp PROPERTIES
    COMPILE_DEFINITIONS MORVALIS_SANITIZED)
endif()
target_link_libraries(morvalis_runs PUBLIC
  morvalis_options PkgConfig::ISAL ZLIB::ZLIB ${CMAKE_DL_LIBS})

file(GLOB FORMATS_SOURCES CONFIGURE_DEPENDS formats_library/*.cpp)
add_library(morvalis_formats SHARED ${FORMATS_SOURCES})
target_link_libraries(morvalis_formats PRIVATE
  morvalis_runs PkgConfig::VIPS PkgConfig::FONTCONFIG)

file(GLOB WINDOW_SOURCES CONFIGURE_DEPENDS window_commands/*.cpp)
list(FILTER WINDOW_SOURCES EXCLUDE REGEX "/window_entry\\.cpp$")
add_library(morvalis_window_commands STATIC ${WINDOW_SOURCES})
target_link_libraries(morvalis_window_commands PUBLIC
  morvalis_runs morvalis_substitute_host morvalis_desktop morvalis_core)
add_library(morvalis_window SHARED window_commands/window_entry.cpp)
target_link_libraries(morvalis_window PRIVATE $<LINK_GROUP:RESCAN,morvalis_window_commands,morvalis_runs,morvalis_substitute_host,morvalis_core,morvalis_desktop>)
foreach(LIBRARY morvalis_formats morvalis_window)
  # No name of its own: nothing links it, and the system's loader need not know of it.
  set_target_properties(${LIBRARY} PROPERTIES
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR} NO_SONAME ON)
  target_link_options(${LIBRARY} PRIVATE -Wl,-Bsymbolic -Wl,--as-needed)
endforeach()

file(GLOB COMMAND_LINE_SOURCES CONFIGURE_DEPENDS commands/*.cpp command_line/*.cpp)
list(FILTER COMMAND_LINE_SOURCES EXCLUDE REGEX "/main\\.cpp$")
add_library(morvalis_command_line STATIC ${COMMAND_LINE_SOURCES})
target_link_libraries(morvalis_command_line PUBLIC morvalis_runs CLI11::CLI11)
target_compile_definitions(morvalis_command_line PRIVATE MORVALIS_VERSION="${PROJECT_VERSION}")
add_executable(morvalis command_line/main.cpp)
target_link_libraries(morvalis PRIVATE morvalis_command_line
  $<LINK_GROUP:RESCAN,morvalis_runs,morvalis_substitute_host,morvalis_core,morvalis_screenless>)
add_dependencies(morvalis morvalis_formats morvalis_window)

# The plug-in for GIMP, for each version whose library is there.
file(GLOB GIMP_SOURCES CONFIGURE_DEPENDS gimp/*.cpp)
list(FILTER GIMP_SOURCES EXCLUDE REGEX "/gimp[0-9]_plugin\\.cpp$")
foreach(VERSION 2 3)
  pkg_check_modules(GIMP${VERSION} IMPORTED_TARGET gimp-${VERSION}.0>=2.10 gegl-0.4)
  if(NOT GIMP${VERSION}_FOUND)
    continue()
  endif()
  add_executable(morvalis_gimp${VERSION} gimp/gimp${VERSION}_plugin.cpp ${GIMP_SOURCES})
  target_link_libraries(morvalis_gimp${VERSION} PRIVATE PkgConfig::GIMP${VERSION}
    $<LINK_GROUP:RESCAN,morvalis_runs,morvalis_substitute_host,morvalis_core,morvalis_screenless>)
  set_target_properties(morvalis_gimp${VERSION} PROPERTIES OUTPUT_NAME gimp${VERSION}-morvalis)
  add_dependencies(morvalis morvalis_gimp${VERSION})
endforeach()

# The manual page and the completions come from the program itself.
set(PROGRAM_DOCUMENTS ${CMAKE_BINARY_DIR}/documents)
file(MAKE_DIRECTORY ${PROGRAM_DOCUMENTS})
set(MANUAL_PAGE ${PROGRAM_DOCUMENTS}/morvalis.1)
set(BASH_COMPLETION ${PROGRAM_DOCUMENTS}/morvalis)
set(ZSH_COMPLETION ${PROGRAM_DOCUMENTS}/_morvalis)
set(FISH_COMPLETION ${PROGRAM_DOCUMENTS}/morvalis.fish)
# Part of the program's own target, so that whoever has built it can install it.
add_custom_command(TARGET morvalis POST_BUILD
  COMMAND morvalis manual > ${MANUAL_PAGE}
  COMMAND morvalis completion bash > ${BASH_COMPLETION}
  COMMAND morvalis completion zsh > ${ZSH_COMPLETION}
  COMMAND morvalis completion fish > ${FISH_COMPLETION}
  BYPRODUCTS ${MANUAL_PAGE} ${BASH_COMPLETION} ${ZSH_COMPLETION} ${FISH_COMPLETION}
  COMMENT "Writing the manual page and the completions"
  VERBATIM)

# Three parts that can be installed one by one: what runs anywhere, what needs windows, and what GIMP
# starts.
include(GNUInstallDirs)
set(SHARED_DATA ${CMAKE_INSTALL_DATADIR})
set(ZSH_FOLDER ${SHARED_DATA}/zsh/site-functions CACHE STRING "where zsh looks for completions")
install(TARGETS morvalis RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
# Where the program looks for them, seen from its own folder.
install(TARGETS morvalis_formats LIBRARY DESTINATION lib/morvalis COMPONENT program)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/presets DESTINATION ${SHARED_DATA}/morvalis
  COMPONENT program FILES_MATCHING PATTERN "*.q9q" PATTERN "*.bmp")
if(MORVALIS_PACKAGES)
  add_custom_command(TARGET morvalis POST_BUILD
    COMMAND gzip -9nkf ${MANUAL_PAGE} BYPRODUCTS ${MANUAL_PAGE}.gz VERBATIM)
  install(FILES ${MANUAL_PAGE}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
else()
  install(FILES ${MANUAL_PAGE} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
endif()
install(FILES ${BASH_COMPLETION} DESTINATION ${SHARED_DATA}/bash-completion/completions
  COMPONENT program)
install(FILES ${ZSH_COMPLETION} DESTINATION ${ZSH_FOLDER} COMPONENT program)
install(FILES ${FISH_COMPLETION} DESTINATION ${SHARED_DATA}/fish/vendor_completions.d
  COMPONENT program)

install(TARGETS morvalis_window LIBRARY DESTINATION lib/morvalis COMPONENT window)
install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/command_line/morvalis.desktop
  DESTINATION ${SHARED_DATA}/applications COMPONENT window)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/hicolor DESTINATION ${SHARED_DATA}/icons
  COMPONENT window)
string(TIMESTAMP MORVALIS_DATE "%Y-%m-%d" UTC)
set(METAINFO_FOLDER ${SHARED_DATA}/metainfo)
configure_file(command_line/morvalis.metainfo.xml.in
  ${PROGRAM_DOCUMENTS}/org.quorrelin.morvalis.metainfo.xml @ONLY)
install(FILES ${PROGRAM_DOCUMENTS}/org.quorrelin.morvalis.metainfo.xml
  DESTINATION ${METAINFO_FOLDER} COMPONENT window)

include(editor_plugins.cmake)

# The plug-ins stand among the program's parts, which they look for beside themselves; GIMP finds a
# link.
set(GIMP_METAINFO ${PROGRAM_DOCUMENTS}/org.quorrelin.morvalis.gimp.metainfo.xml)
configure_file(gimp/morvalis.metainfo.xml.in ${GIMP_METAINFO} @ONLY)
foreach(VERSION 2 3)
  if(NOT TARGET morvalis_gimp${VERSION})
    continue()
  endif()
  pkg_get_variable(PREFIX_OF_GIMP gimp-${VERSION}.0 prefix)
  pkg_get_variable(LIBRARIES_OF_GIMP gimp-${VERSION}.0 gimplibdir)
  file(RELATIVE_PATH LINK_FOLDER ${PREFIX_OF_GIMP} ${LIBRARIES_OF_GIMP}/plug-ins/morvalis)
  file(RELATIVE_PATH PLUG_IN /${LINK_FOLDER} /lib/morvalis/gimp${VERSION}-morvalis)
  file(MAKE_DIRECTORY ${PROGRAM_DOCUMENTS}/gimp${VERSION})
  file(CREATE_LINK ${PLUG_IN} ${PROGRAM_DOCUMENTS}/gimp${VERSION}/morvalis SYMBOLIC)
  install(TARGETS morvalis_gimp${VERSION} RUNTIME DESTINATION lib/morvalis COMPONENT gimp)
  install(FILES ${PROGRAM_DOCUMENTS}/gimp${VERSION}/morvalis DESTINATION ${LINK_FOLDER}
    COMPONENT gimp)
  install(FILES ${GIMP_METAINFO} DESTINATION ${METAINFO_FOLDER} COMPONENT gimp)
endforeach()
