// Loops for the vector units of the machine at hand.
#pragma once

#include <cmath>  // which also tells the C library

/// Before a function: the compiler builds it for machines with and without AVX2, and the loader
/// takes the right one. Both give the same bits, because neither may fuse or reorder operations.
/// Only where the tools support it; sanitizers do not.
#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__) && defined(__GLIBC__) && \
    defined(NDEBUG) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define CRV_VECTOR_CLONES __attribute__((target_clones("avx2", "default")))
#else
#define CRV_VECTOR_CLONES
#endif
