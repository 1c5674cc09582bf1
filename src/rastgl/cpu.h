// Instructions beyond the baseline: which the compiler is asked for in single functions, and what this
// machine has.
#pragma once

#if defined(__x86_64__) && defined(__GNUC__)
#define WB_X86_CHOICE 1
#define WB_AVX2 __attribute__((target("avx2")))
#define WB_VBMI __attribute__((target("avx2,avx512f,avx512bw,avx512vbmi")))
#define WB_INLINE __attribute__((always_inline)) inline
#include <immintrin.h>

namespace wb
{

inline bool HasAvx2()
{
    return __builtin_cpu_supports("avx2");
}

// Byte permutations of 512 bits.
inline bool HasVbmi()
{
    return HasAvx2() && __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vbmi");
}

} // namespace wb
#else
#define WB_X86_CHOICE 0
#endif
