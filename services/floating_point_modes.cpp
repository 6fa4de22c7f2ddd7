#include "services/floating_point_modes.h"

#if defined(__SSE2__)
#include <xmmintrin.h>
constexpr uint32_t kDefaultVectorControl = 0x1F80;  // to nearest, every trap off, denormals kept
#endif

// The library's own calls leave the vector unit out on some systems.
void enterDefaultModes(FloatingPointModes* found) {
#if defined(__SSE2__)
  found->vectorControl = _mm_getcsr();
#endif
  std::feholdexcept(&found->environment);
  std::fesetenv(FE_DFL_ENV);
#if defined(__SSE2__)
  _mm_setcsr(kDefaultVectorControl);
#endif
}

void restoreModes(const FloatingPointModes& found) {
  std::fesetenv(&found.environment);
#if defined(__SSE2__)
  _mm_setcsr(found.vectorControl);
#endif
}
