// Several versions of one function, by the vector instructions of the processor.
#pragma once

// clang 14 can't choose between versions of a function at run time, and sanitizers run before the
// choice is made.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && \
    !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define STARSIFT_VECTOR_VERSIONS __attribute__((target_clones("avx512f", "avx2", "default")))
#define STARSIFT_BIT_COUNT_VERSIONS __attribute__((target_clones("popcnt", "default")))
#else
#define STARSIFT_VECTOR_VERSIONS
#define STARSIFT_BIT_COUNT_VERSIONS
#endif
