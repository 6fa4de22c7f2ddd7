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
  set_target_properties(${LIBRARY} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
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

include(GNUInstallDirs)
install(TARGETS morvalis RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# Where the program looks for them, seen from its own folder.
install(TARGETS morvalis_formats morvalis_window LIBRARY DESTINATION lib/morvalis)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/presets DESTINATION ${CMAKE_INSTALL_DATADIR}/morvalis
  FILES_MATCHING PATTERN "*.q9q" PATTERN "*.bmp")
install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/command_line/morvalis.desktop
  DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/hicolor
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
install(FILES ${MANUAL_PAGE} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${BASH_COMPLETION}
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${ZSH_COMPLETION} DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
install(FILES ${FISH_COMPLETION} DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
