// A family's kernels from its plan. PlannedFamily runs cell (cpu type,
// column) of the plan: its guard, then its loop form on its wrapper with its
// block width, over the struct the family names for the cell's variant
// letter. ZVL_KERNELS_<shape>(Fam, Family) defines the unit's kernel
// entries of every column: a cell of its own runs its kernel under the
// entry's name, and a forward calls the kernel of the cell it names. So
// every kernel symbol of every cpu type exists, and the kernel sets of
// frame/ take the forwards' targets straight from the plan.
//
// Included by unit.h, inside each per-cpu unit.
#pragma once

#include <type_traits>

#include "kernels/common/kernel_types.h"
#include "kernels/common/plan.h"

namespace {

// The family's struct T for the letter L of its plan.
template <char L, class T>
struct Letter {
    static constexpr char letter = L;
    using type = T;
};
template <char L, class... Letters>
struct ByLetter {};  // no struct for the letter: `type` is missing
template <char L, class First, class... Rest>
struct ByLetter<L, First, Rest...>
    : std::conditional_t<First::letter == L, First, ByLetter<L, Rest...>> {};

// The name a variant reports under: the entry's, or the variant's own
// `label` (the older cpu types' trigonometric callouts report under fixed
// labels).
template <class F, class = void>
struct LabelOf {
    static constexpr const char* get(const char* name) { return name; }
};
template <class F>
struct LabelOf<F, std::void_t<decltype(F::label)>> {
    static constexpr const char* get(const char*) { return F::label; }
};

// A family of plan P and shape S whose variants are Letter<letter, struct>.
template <const zvl::Plan& P, class S, class... Letters>
struct PlannedFamily {
    static constexpr const zvl::Plan& plan = P;

    template <int Cpu, int Col>
    __attribute__((always_inline)) static void run_arrays(int32_t n, const double* a, const double* b, double* r, double* r2,
                           const char* name) {
        constexpr zvl::Cell c = P.at(Cpu, Col);
        static_assert(!c.forwards(), "a forward has no kernel of its own");
        using F = typename ByLetter<c.variant, Letters...>::type;
        [[maybe_unused]] GuardFor<c.guard> guard;
        run_loop<Cpu, c.loop, WrapFor<c.wrap>, c.width, F, S>(F{}, n, a, b, r, r2, LabelOf<F>::get(name));
    }
    // The entry shapes: one in, two in, two out.
    template <int Cpu, int Col>
    static void run(int32_t n, const double* a, double* r, const char* name) {
        run_arrays<Cpu, Col>(n, a, nullptr, r, nullptr, name);
    }
    template <int Cpu, int Col>
    static void run(int32_t n, const double* a, const double* b, double* r, const char* name) {
        run_arrays<Cpu, Col>(n, a, b, r, nullptr, name);
    }
    template <int Cpu, int Col>
    static void run(int32_t n, const double* a, double* r, double* r2, const char* name) {
        run_arrays<Cpu, Col>(n, a, nullptr, r, r2, name);
    }

    // The complex shapes run the thin form or the block form and report
    // nothing. (The complex array-and-scalar shape passes one scalar, not an
    // array: such a family writes its own run, as Powx does.)
    template <int Cpu, int Col>
    static void run_complex(int32_t n, const ZVLComplex16* a, const ZVLComplex16* b, ZVLComplex16* r) {
        constexpr zvl::Cell c = P.at(Cpu, Col);
        static_assert(!c.forwards() && (c.loop == zvl::Loop::thin || c.loop == zvl::Loop::zblock),
                      "complex kernels of their own run the thin or the block form");
        using F = typename ByLetter<c.variant, Letters...>::type;
        [[maybe_unused]] GuardFor<c.guard> guard;
        if (n <= 0) return;
        if constexpr (c.loop == zvl::Loop::thin)
            thin_loop<F, S>(n, a, b, r);
        else
            zblock_loop<WrapFor<c.wrap>, c.width, F, S>(n, a, r);
    }
    template <int Cpu, int Col>
    static void run(int32_t n, const ZVLComplex16* a, ZVLComplex16* r, const char*) {
        run_complex<Cpu, Col>(n, a, nullptr, r);
    }
    template <int Cpu, int Col>
    static void run(int32_t n, const ZVLComplex16* a, const ZVLComplex16* b, ZVLComplex16* r,
                    const char*) {
        run_complex<Cpu, Col>(n, a, b, r);
    }
};

template <class K>
constexpr K pick(const zvl::KernelSet<K>& all, zvl::Where w) {
    return all.k[w.cpu][w.col];
}
template <class K>
constexpr K pick(const zvl::RoundingSet<K>& all, zvl::Where w) {
    return all.k[w.cpu];
}

// The entry of column Col: the cell's kernel, or a call of the kernel the
// forward names (among `all`, the family's kernels of every cpu type).
template <class Family, int Col, class All, class... A>
__attribute__((always_inline)) inline void planned_entry(const All& all, const char* name,
                                                         A... args) {
    if constexpr (Family::plan.at(kCpu, Col).forwards()) {
        (void)name;
        constexpr zvl::Where w = Family::plan.target(kCpu, Col);
        pick(all, w)(args...);
    } else {
        Family::template run<kCpu, Col>(args..., name);
    }
}

}  // namespace

// The three entries of a family of each shape in this unit; `kind` is d
// for a real family, z for a complex one.
#define ZVL_ENTRY(kind, fam, Family, K, tag, col, params, ...)                          \
    extern "C" void ZVL_HERE_OF(kind, fam, tag) params {                                 \
        planned_entry<Family, col>(ZVL_ALL_OF(kind, K, fam), ZVL_HERE_NAME_OF(kind, fam, tag), \
                                   __VA_ARGS__);                                         \
    }
#define ZVL_ENTRIES(kind, fam, Family, K, params, ...)           \
    ZVL_DECLARE_KIND(kind, K, fam)                               \
    ZVL_ENTRY(kind, fam, Family, K, HA, 0, params, __VA_ARGS__)  \
    ZVL_ENTRY(kind, fam, Family, K, 50, 1, params, __VA_ARGS__)  \
    ZVL_ENTRY(kind, fam, Family, K, 26, 2, params, __VA_ARGS__)

#define ZVL_KERNELS_D1(fam, Family) \
    ZVL_ENTRIES(d, fam, Family, KernelD1, (int32_t n, const double* a, double* r), n, a, r)
#define ZVL_KERNELS_D2(fam, Family)                                                          \
    ZVL_ENTRIES(d, fam, Family, KernelD2, (int32_t n, const double* a, const double* b, double* r), \
                n, a, b, r)
#define ZVL_KERNELS_D12(fam, Family)                                                        \
    ZVL_ENTRIES(d, fam, Family, KernelD12, (int32_t n, const double* a, double* r, double* r2), \
                n, a, r, r2)
#define ZVL_KERNELS_DX(fam, Family) \
    ZVL_ENTRIES(d, fam, Family, KernelDx, (int32_t n, const double* a, double b, double* r), n, a, b, r)
#define ZVL_KERNELS_Z1(fam, Family) \
    ZVL_ENTRIES(z, fam, Family, KernelZ1, (int32_t n, const ZVLComplex16* a, ZVLComplex16* r), n, a, r)
#define ZVL_KERNELS_Z2(fam, Family)                                                                  \
    ZVL_ENTRIES(z, fam, Family, KernelZ2,                                                            \
                (int32_t n, const ZVLComplex16* a, const ZVLComplex16* b, ZVLComplex16* r), n, a, b, r)
#define ZVL_KERNELS_ZX(fam, Family) ZVL_KERNELS_Z2(fam, Family)

// The rounding family: one entry, no accuracy tag and no name, as nothing
// is reported.
#define ZVL_ROUNDING_ENTRY(fam, Family, K, params, ...)                                        \
    ZVL_DECLARE_ROUNDING(K, fam)                                                               \
    extern "C" void ZVL_HERE_ROUNDING(fam) params {                                            \
        planned_entry<Family, 0>(ZVL_ALL_ROUNDING(K, fam), nullptr, __VA_ARGS__);            \
    }
#define ZVL_KERNELS_R1(fam, Family) \
    ZVL_ROUNDING_ENTRY(fam, Family, KernelD1, (int32_t n, const double* a, double* r), n, a, r)
#define ZVL_KERNELS_R12(fam, Family)                                                       \
    ZVL_ROUNDING_ENTRY(fam, Family, KernelD12, (int32_t n, const double* a, double* r, double* r2), \
                       n, a, r, r2)
