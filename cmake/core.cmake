# The portable core: everything that knows the effect, and nothing that knows a system.
# It leaves the procedures of platform/*.h open; a back end closes them at link time.

file(GLOB MORVALIS_CORE_SOURCES CONFIGURE_DEPENDS
  entry/*.cpp settings/*.cpp geometry/*.cpp geometry/field/*.cpp geometry/preview/*.cpp
  shading/*.cpp shading/lanes/*.cpp
  pictures/*.cpp pictures/sources/*.cpp persistence/*.cpp services/*.cpp dialog/*.cpp dialog/*/*.cpp)

# The passes of vector/ are compiled once per instruction set, each in a name space of its own.
file(GLOB MORVALIS_PASSES CONFIGURE_DEPENDS vector/*_passes.cpp vector/field/*_passes.cpp)
set(MORVALIS_SETS baseline)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "86|AMD64")
  list(APPEND MORVALIS_SETS sse41 avx2)
  set(MORVALIS_OPTIONS_sse41 -msse4.1)
  set(MORVALIS_OPTIONS_avx2 -mavx2)
  if(MINGW)
    # The stack of 64-bit Windows is aligned to 16 bytes, and GCC moves 32 as if it were to 32.
    list(APPEND MORVALIS_OPTIONS_avx2 -Wa,-muse-unaligned-vector-move)
  endif()
endif()

add_library(morvalis_core STATIC ${MORVALIS_CORE_SOURCES} vector/instruction_sets.cpp)
target_link_libraries(morvalis_core PUBLIC morvalis_options)
if(MORVALIS_PIXEL_OPTIONS)
  set(PIXEL_SOURCES ${MORVALIS_CORE_SOURCES})
  list(FILTER PIXEL_SOURCES INCLUDE REGEX "/(geometry|shading|pictures|dialog)/")
  set_source_files_properties(${PIXEL_SOURCES} PROPERTIES COMPILE_OPTIONS "${MORVALIS_PIXEL_OPTIONS}")
endif()
# The core reports failures by result word and returned value only.
set(MORVALIS_CORE_OPTIONS -fno-exceptions -fno-rtti)
target_compile_options(morvalis_core PRIVATE ${MORVALIS_CORE_OPTIONS})
if(avx2 IN_LIST MORVALIS_SETS)
  target_compile_definitions(morvalis_core PRIVATE MORVALIS_X86_SETS)
endif()

foreach(set IN LISTS MORVALIS_SETS)
  add_library(morvalis_passes_${set} OBJECT ${MORVALIS_PASSES})
  target_link_libraries(morvalis_passes_${set} PRIVATE morvalis_options)
  target_compile_definitions(morvalis_passes_${set} PRIVATE MORVALIS_SET=${set})
  target_compile_options(morvalis_passes_${set} PRIVATE
    ${MORVALIS_CORE_OPTIONS} -fno-trapping-math -fno-math-errno ${MORVALIS_OPTIONS_${set}} ${MORVALIS_PIXEL_OPTIONS})
  target_sources(morvalis_core PRIVATE $<TARGET_OBJECTS:morvalis_passes_${set}>)
endforeach()
