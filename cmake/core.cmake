# The portable core: everything that knows the effect, and nothing that knows a system.
# It leaves the procedures of platform/*.h open; a back end closes them at link time.

file(GLOB MORVALIS_CORE_SOURCES CONFIGURE_DEPENDS
  entry/*.cpp settings/*.cpp geometry/*.cpp shading/*.cpp
  pictures/*.cpp persistence/*.cpp services/*.cpp dialog/*.cpp)

add_library(morvalis_core STATIC ${MORVALIS_CORE_SOURCES})
target_link_libraries(morvalis_core PUBLIC morvalis_options)
# The core reports failures by result word and returned value only.
target_compile_options(morvalis_core PRIVATE -fno-exceptions -fno-rtti)
