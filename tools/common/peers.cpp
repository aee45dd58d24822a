// Peers: glibc's vector math library and SLEEF, looked up by symbol in the
// libraries CMake found, and driven over arrays by a few generic loops. A
// peer is skipped, with its reason, when its library or the processor
// feature it needs is missing.
#include <immintrin.h>

#include <cstring>

#include "tools/common/functions.h"

#if defined(__unix__)
#include <dlfcn.h>
#endif

namespace zvl_tools {
namespace {

#define ZT_AVX __attribute__((target("avx")))

using V4x1 = __m256d (*)(__m256d);
using V4x2 = __m256d (*)(__m256d, __m256d);
using V2x1 = __m128d (*)(__m128d);
using V2x2 = __m128d (*)(__m128d, __m128d);

// Each driver runs the vector function over whole vectors and finishes the
// array through a padded copy, so any n works. b is null for one argument.
ZT_AVX void drive_4x1(const void* f, int32_t n, const double* a, const double*, double* r) {
    const auto fn = function_at<V4x1>(f);
    int32_t i = 0;
    for (; i + 4 <= n; i += 4) _mm256_storeu_pd(r + i, fn(_mm256_loadu_pd(a + i)));
    if (i < n) {
        double ta[4] = {1, 1, 1, 1}, tr[4];
        std::memcpy(ta, a + i, (n - i) * sizeof(double));
        _mm256_storeu_pd(tr, fn(_mm256_loadu_pd(ta)));
        std::memcpy(r + i, tr, (n - i) * sizeof(double));
    }
}

ZT_AVX void drive_4x2(const void* f, int32_t n, const double* a, const double* b, double* r) {
    const auto fn = function_at<V4x2>(f);
    int32_t i = 0;
    for (; i + 4 <= n; i += 4)
        _mm256_storeu_pd(r + i, fn(_mm256_loadu_pd(a + i), _mm256_loadu_pd(b + i)));
    if (i < n) {
        double ta[4] = {1, 1, 1, 1}, tb[4] = {1, 1, 1, 1}, tr[4];
        std::memcpy(ta, a + i, (n - i) * sizeof(double));
        std::memcpy(tb, b + i, (n - i) * sizeof(double));
        _mm256_storeu_pd(tr, fn(_mm256_loadu_pd(ta), _mm256_loadu_pd(tb)));
        std::memcpy(r + i, tr, (n - i) * sizeof(double));
    }
}

void drive_2x1(const void* f, int32_t n, const double* a, const double*, double* r) {
    const auto fn = function_at<V2x1>(f);
    int32_t i = 0;
    for (; i + 2 <= n; i += 2) _mm_storeu_pd(r + i, fn(_mm_loadu_pd(a + i)));
    if (i < n) r[i] = _mm_cvtsd_f64(fn(_mm_set_pd(1.0, a[i])));
}

void drive_2x2(const void* f, int32_t n, const double* a, const double* b, double* r) {
    const auto fn = function_at<V2x2>(f);
    int32_t i = 0;
    for (; i + 2 <= n; i += 2) _mm_storeu_pd(r + i, fn(_mm_loadu_pd(a + i), _mm_loadu_pd(b + i)));
    if (i < n) r[i] = _mm_cvtsd_f64(fn(_mm_set_pd(1.0, a[i]), _mm_set_pd(1.0, b[i])));
}

void drive_local(const void* f, int32_t n, const double* a, const double* b, double* r) {
    function_at<LoopFn>(f)(n, a, b, r);
}

const char* library_path(PeerLib lib) {
    switch (lib) {
#ifdef ZVL_TOOLS_MVEC_LIBRARY
        case PeerLib::Mvec: return ZVL_TOOLS_MVEC_LIBRARY;
#endif
#ifdef ZVL_TOOLS_SLEEF_LIBRARY
        case PeerLib::Sleef: return ZVL_TOOLS_SLEEF_LIBRARY;
#endif
        default: return nullptr;
    }
}

void* lookup(PeerLib lib, const char* symbol, const char** why) {
    const char* path = library_path(lib);
    if (!path) {
        *why = lib == PeerLib::Mvec ? "libmvec not found at build time"
                                    : "SLEEF not found at build time";
        return nullptr;
    }
#if defined(__unix__)
    // Opened once per library and kept for the life of the process.
    static void* handles[3] = {};
    void*& h = handles[static_cast<int>(lib)];
    if (!h) h = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (!h) {
        *why = "library did not load";
        return nullptr;
    }
    void* f = dlsym(h, symbol);
    if (!f) *why = "symbol not in the library";
    return f;
#else
    (void)symbol;
    *why = "no run-time symbol lookup on this system";
    return nullptr;
#endif
}

}  // namespace

std::vector<const Peer*> peers_of(const FunctionRow& row) {
    std::vector<const Peer*> out = {&row.baseline};
    for (const Peer& p : row.peers) out.push_back(&p);
    return out;
}

Callable bind_peer(const Peer& p, Shape shape, const char** why) {
    const char* unused;
    if (!why) why = &unused;
    if (!isa_runnable(p.isa)) {
        *why = "processor lacks the instructions";
        return {nullptr, nullptr};
    }
    if (p.lib == PeerLib::Local) return {drive_local, reinterpret_cast<const void*>(p.loop)};
    void* f = lookup(p.lib, p.symbol, why);
    if (!f) return {nullptr, nullptr};
    const bool two = arity(shape) == 2;
    if (p.width == 4) return {two ? drive_4x2 : drive_4x1, f};
    return {two ? drive_2x2 : drive_2x1, f};
}

}  // namespace zvl_tools
