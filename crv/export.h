#pragma once

/// CRV_API marks what leaves the library; everything else stays hidden in it. The build defines
/// CRV_EXPORTS while it compiles the shared library and CRV_STATIC for it and its callers when
/// the library is static.
#if defined(CRV_STATIC)
#define CRV_API
#elif defined(_WIN32)
#if defined(CRV_EXPORTS)
#define CRV_API __declspec(dllexport)
#else
#define CRV_API __declspec(dllimport)
#endif
#else
#define CRV_API __attribute__((visibility("default")))
#endif
