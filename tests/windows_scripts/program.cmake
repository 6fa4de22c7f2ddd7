# The scripts of the dialog as a program for Windows: the module's code and resources, a user who
# plays by messages, and the test library built from its sources for this compiler.
find_path(GTEST_SOURCES src/gtest-all.cc
  PATHS /usr/src/googletest/googletest /usr/src/gtest NO_CMAKE_FIND_ROOT_PATH)
if(NOT GTEST_SOURCES)
  message(STATUS "The test library's sources are not here: no scripts of the dialog for Windows")
  return()
endif()

set(SCRIPTS_MISSING -include ${CMAKE_CURRENT_LIST_DIR}/missing_here.h)
add_library(windows_gtest STATIC ${GTEST_SOURCES}/src/gtest-all.cc)
target_include_directories(windows_gtest SYSTEM PUBLIC ${GTEST_SOURCES}/include
  PRIVATE ${GTEST_SOURCES})
target_compile_definitions(windows_gtest PUBLIC GTEST_HAS_NOTIFICATION_=1)
target_compile_options(windows_gtest PUBLIC ${SCRIPTS_MISSING})

file(GLOB SCRIPTS_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.cpp
  ${PROJECT_SOURCE_DIR}/tests/support/dialog/*.cpp)
set(SUPPORT ${PROJECT_SOURCE_DIR}/tests/support)
set(WINDOWS_HOST ${PROJECT_SOURCE_DIR}/hosts/windows_host)
add_executable(windows_scripts ${SCRIPTS_SOURCES}
  ${SUPPORT}/hosts/bitmap_files.cpp ${SUPPORT}/hosts/host_pictures.cpp ${SUPPORT}/hosts/large_host.cpp ${SUPPORT}/written_settings.cpp
  ${WINDOWS_HOST}/context_drawing.cpp ${WINDOWS_HOST}/dialog_readings.cpp
  ${WINDOWS_HOST}/kept_values.cpp ${WINDOWS_HOST}/picture_files.cpp
  ${WINDOWS_HOST}/user_thread.cpp
  ${PICTURES_SCRIPT} ${PROJECT_SOURCE_DIR}/resources/windows/module.rc
  ${PROJECT_SOURCE_DIR}/resources/windows/dialogs.rc)
set_target_properties(windows_scripts PROPERTIES CXX_EXTENSIONS ON LINKER_LANGUAGE CXX)
target_include_directories(windows_scripts PRIVATE ${PROJECT_BINARY_DIR})
# As the other tests: compiled to run once.
target_precompile_headers(windows_scripts PRIVATE
  "$<$<COMPILE_LANGUAGE:CXX>:<gtest/gtest.h$<ANGLE-R>>" "$<$<COMPILE_LANGUAGE:CXX>:<functional$<ANGLE-R>>")
target_compile_options(windows_scripts PRIVATE
  "$<$<COMPILE_LANGUAGE:CXX>:-O1;-Wno-array-bounds;-Wno-stringop-overflow>")
target_link_libraries(windows_scripts PRIVATE morvalis_substitute_host morvalis_core
  morvalis_windows morvalis_core windows_gtest oleacc oleaut32 ole32)
target_link_options(windows_scripts PRIVATE -static)
