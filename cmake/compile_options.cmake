# Options shared by every target of the project.

add_library(morvalis_options INTERFACE)
target_include_directories(morvalis_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(morvalis_options INTERFACE -Wall -Wextra -Wshadow -Wnon-virtual-dtor
  # One floating-point mode for every build: table entries are truncated, so a last bit shows.
  -ffp-contract=off)
# GCC 12 warns of overlaps in its own string concatenation that cannot happen.
target_compile_options(morvalis_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  target_compile_options(morvalis_options INTERFACE
    -Wimplicit-fallthrough -Wextra-semi -Wcomma -Wunreachable-code
    # Whether a loop becomes lanes is GCC's affair, which builds what is given away.
    -Wno-pass-failed)
endif()
if(CMAKE_SYSTEM_PROCESSOR MATCHES "86|AMD64")
  target_compile_options(morvalis_options INTERFACE -msse2 -mfpmath=sse)
endif()
if(MORVALIS_WERROR)
  target_compile_options(morvalis_options INTERFACE -Werror)
endif()
if(MORVALIS_SANITIZE)
  target_compile_options(morvalis_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(morvalis_options INTERFACE -fsanitize=address,undefined)
  # Which the list above leaves out.
  target_compile_options(morvalis_options INTERFACE -fsanitize=float-cast-overflow)
endif()
if(MORVALIS_FUZZ)
  # Counts branches for the fuzzers; in other programs the counting goes nowhere, by what every
  # sanitizer's run-time library has for it.
  target_compile_options(morvalis_options INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(morvalis_options INTERFACE -fsanitize=undefined)
  # The fuzzers learn from comparisons of what they hand in, which pixels are not.
  set(MORVALIS_PIXEL_OPTIONS -fno-sanitize-coverage=trace-cmp)
endif()

# What files and hosts hand in should end in an error, and where it does not, in an end.
if(NOT WIN32)
  target_compile_options(morvalis_options INTERFACE -fstack-protector-strong -fstack-clash-protection)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "86|AMD64")
    target_compile_options(morvalis_options INTERFACE -fcf-protection)
  endif()
  if(NOT MORVALIS_SANITIZE)
    target_compile_options(morvalis_options INTERFACE
      $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  endif()
  target_link_options(morvalis_options INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
endif()
