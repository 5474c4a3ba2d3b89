#pragma once

/// CRV_API marks the symbols that the shared library exports; all others are hidden. The build
/// defines CRV_EXPORTS while it compiles the shared library and CRV_STATIC for it and its callers
/// when the library is static.
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

/// Declares that the library has compiled a class template. On Windows callers compile it
/// themselves: a library there exports no member functions that are defined in their class.
#if defined(_WIN32)
#define CRV_EXTERN_TEMPLATE(...) static_assert(true)
#else
#define CRV_EXTERN_TEMPLATE(...) extern template class CRV_API __VA_ARGS__
#endif
