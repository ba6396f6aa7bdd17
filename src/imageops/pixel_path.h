#pragma once
// Which implementation a pixel loop takes. Every loop over all pixels has a
// plain C++ path, which defines the result, and an AVX2 path that gives the
// same bytes; Best picks AVX2 when the processor has it. Tests compare both.

namespace tivox {

enum class PixelPath { Best, Scalar };

// True when `path` asks for the vector code and this processor can run it.
inline bool UseAvx2(PixelPath path) {
#if defined(__x86_64__) || defined(__i386__)
    return path == PixelPath::Best && __builtin_cpu_supports("avx2");
#else
    (void)path;
    return false;
#endif
}

} // namespace tivox
