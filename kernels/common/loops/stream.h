// Long arrays: inputs fetched well ahead, results stored around the caches.
//
// Streaming from memory, a kernel waits on its input whenever the
// processor's own prefetchers run too short a distance ahead of the loop
// (they restart at every 4 KiB page, and a memory access costs hundreds of
// cycles): at n = 1e7 that added 0.4 to 0.7 ns an element to kernels that
// compute in 1 to 1.5, more than the memory traffic itself takes. So every
// block of a long array first asks for the input 8 KiB further on.
//
// Once the arrays are far larger than the caches, a result line written by a
// plain store is first read from memory (to own it) and later written back:
// three transfers an element with the input's read. A non-temporal store
// writes the line without reading it, and leaves the caches to the tables
// and the input stream. Below that size the caller is likely to read the
// results while still cached, and plain stores keep them there.
//
// Both are decided once per call. Results stream when the output is 16-byte
// aligned, as non-temporal stores need: blocks are whole vectors from
// element 0, so every block store is then aligned alike. Stores of special
// lanes, of the remainder and of the error pipeline stay plain; the
// pipeline and a callback read back what this thread stored, which the
// processor orders. A fence at the end orders the streamed stores before
// whatever the caller or another thread does next.
#pragma once

#include <immintrin.h>

#include <cstdint>

namespace {

// Inputs are fetched this many elements ahead (8 KiB) once an array is
// longer than a core's second-level cache holds with its results (2^17
// elements, 1 MiB each way). Below that the data come from that cache in
// time anyway, and the early fetches only cost: Log10 HA at n = 1e5 took
// 0.3 ns an element more with them.
constexpr int32_t kFetchAhead = 1024;
constexpr int32_t kFetchMin = int32_t{1} << 17;
// Results stream from 2^21 elements (16 MiB of results).
constexpr int32_t kStreamMin = int32_t{1} << 21;

struct LongArray {
    int32_t fetch_below;  // blocks from below this element fetch ahead
    bool stream;          // block results by non-temporal stores
};

inline bool aligned16(const double* p) { return (reinterpret_cast<uintptr_t>(p) & 15) == 0; }

// For a call over n elements with outputs r and r2 (r2 null for one output).
inline LongArray long_array(int32_t n, const double* r, const double* r2 = nullptr) {
    return {n >= kFetchMin ? n - kFetchAhead : 0,
            n >= kStreamMin && aligned16(r) && (r2 == nullptr || aligned16(r2))};
}

// Asks for the input lines kFetchAhead elements after a block of W from
// `base`, one per 8 elements (a 64-byte line); blocks shorter than a line
// ask at every line start.
template <int W>
inline void fetch_ahead(const LongArray& l, int32_t base, const double* a, const double* b = nullptr) {
    if (base >= l.fetch_below || (W < 8 && (base & 7) != 0)) return;
    for (int j = 0; j < W; j += 8) {
        _mm_prefetch(reinterpret_cast<const char*>(a + base + kFetchAhead + j), _MM_HINT_T0);
        if (b) _mm_prefetch(reinterpret_cast<const char*>(b + base + kFetchAhead + j), _MM_HINT_T0);
    }
}

template <class V>
inline void put(const LongArray& l, double* p, typename V::vd y) {
    if (l.stream)
        V::stream(p, y);
    else
        V::store(p, y);
}

inline void end_long_array(const LongArray& l) {
    if (l.stream) _mm_sfence();
}

}  // namespace
