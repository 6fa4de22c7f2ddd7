// export: how functions cross the module's edge. The one place where the build's
// system shows in shared code.

#pragma once

#if defined(_WIN32)
#define MORVALIS_EXPORT extern "C" __declspec(dllexport)
#define MORVALIS_CALL __cdecl
#else
#define MORVALIS_EXPORT extern "C" __attribute__((visibility("default")))
#define MORVALIS_CALL
#endif
