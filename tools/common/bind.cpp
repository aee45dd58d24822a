// Joins the measuring rows to the library's function table, and turns
// kernels, front-ends and peers into Callables.
#include <cstring>
#include <vector>

#include "frame/kernel_sets.h"
#include "kernels/plans.h"
#include "tools/common/functions.h"

namespace zvl_tools {
namespace {

using Front1 = void (*)(const int*, const double*, double*);
using Front2 = void (*)(const int*, const double*, const double*, double*);
using Front12 = void (*)(const int*, const double*, double*, double*);

struct Bound {
    const char* exported;
    Shape shape;
    const void* set;
    Front1 front1;
    Front2 front2;
    const zvl::Plan* plan;
    Front12 front12;  // one in, two out: measured by one D1 row per output
};

// One entry per function of the library's table that the tools can measure.
#define ZT_BIND_D1(EXPORT, report, id, fam) \
    {#EXPORT, Shape::D1, &zvl::kernels_##EXPORT, EXPORT, nullptr, &zvl::plans::fam, nullptr},
#define ZT_BIND_D2(EXPORT, report, id, fam) \
    {#EXPORT, Shape::D2, &zvl::kernels_##EXPORT, nullptr, EXPORT, &zvl::plans::fam, nullptr},
#define ZT_BIND_DX(EXPORT, report, id, fam) \
    {#EXPORT, Shape::DX, &zvl::kernels_##EXPORT, nullptr, EXPORT, &zvl::plans::fam, nullptr},
#define ZT_BIND_R1(EXPORT, report, fam) \
    {#EXPORT, Shape::R1, &zvl::kernels_##EXPORT, EXPORT, nullptr, &zvl::plans::fam, nullptr},
#define ZT_BIND_D12(EXPORT, report, id, fam) \
    {#EXPORT, Shape::D1, &zvl::kernels_##EXPORT, nullptr, nullptr, &zvl::plans::fam, EXPORT},

const Bound bound[] = {ZVL_FUNCTIONS(ZT_BIND_D1, ZT_BIND_D2, ZT_BIND_D12, ZT_BIND_DX,
                                     ZVL_IGNORE_ROW, ZVL_IGNORE_ROW, ZVL_IGNORE_ROW, ZT_BIND_R1,
                                     ZVL_IGNORE_ROW)};

struct Joined {
    std::vector<Function> live;
    std::vector<const char*> orphans;
};

const Joined& joined() {
    static const Joined j = [] {
        Joined out;
        for (const Bound& b : bound) {
            bool found = false;
            for (const FunctionRow& r : rows())
                if (std::strcmp(r.exported, b.exported) == 0 && r.shape == b.shape &&
                    (r.output != 0) == (b.front12 != nullptr)) {
                    out.live.push_back(
                        {&r, b.exported, b.shape, b.set, b.front1, b.front2, b.plan, b.front12, r.output});
                    found = true;
                }
            if (!found) out.orphans.push_back(b.exported);
        }
        return out;
    }();
    return j;
}

// each(i, j) for every run [i, j) of equal b, compared by bits so that NaN
// runs too: the array-and-scalar shape takes one b per call.
template <class Each>
void runs_of_equal_b(int32_t n, const double* b, Each each) {
    int32_t i = 0;
    while (i < n) {
        int32_t j = i + 1;
        while (j < n && std::memcmp(&b[j], &b[i], sizeof(double)) == 0) ++j;
        each(i, j);
        i = j;
    }
}

// Kernel trampolines by shape; ctx is the kernel.
void call_d1(const void* k, int32_t n, const double* a, const double*, double* r) {
    function_at<zvl::KernelD1>(k)(n, a, r);
}
void call_d2(const void* k, int32_t n, const double* a, const double* b, double* r) {
    function_at<zvl::KernelD2>(k)(n, a, b, r);
}
void call_dx(const void* k, int32_t n, const double* a, const double* b, double* r) {
    const auto kernel = function_at<zvl::KernelDx>(k);
    runs_of_equal_b(n, b, [&](int32_t i, int32_t j) { kernel(j - i, a + i, b[i], r + i); });
}

// One in, two out: the row's output into r, the other into a scratch array.
double* scratch_of(int32_t n) {
    thread_local std::vector<double> scratch;
    if (scratch.size() < static_cast<size_t>(n)) scratch.resize(static_cast<size_t>(n));
    return scratch.data();
}
void call_d12_y(const void* k, int32_t n, const double* a, const double*, double* r) {
    function_at<zvl::KernelD12>(k)(n, a, r, scratch_of(n));
}
void call_d12_z(const void* k, int32_t n, const double* a, const double*, double* r) {
    function_at<zvl::KernelD12>(k)(n, a, scratch_of(n), r);
}

// Timing inputs share one b (timing_inputs): one call, without the pass
// over b that finding runs takes, which at n = 1e7 costs as much as a
// kernel's memory traffic.
void call_dx_shared(const void* k, int32_t n, const double* a, const double* b, double* r) {
    function_at<zvl::KernelDx>(k)(n, a, b[0], r);
}

// Front-end trampolines; ctx is the Function.
void front_d1(const void* f, int32_t n, const double* a, const double*, double* r) {
    const int len = n;
    static_cast<const Function*>(f)->front1(&len, a, r);
}
void front_d2(const void* f, int32_t n, const double* a, const double* b, double* r) {
    const int len = n;
    static_cast<const Function*>(f)->front2(&len, a, b, r);
}
void front_dx(const void* f, int32_t n, const double* a, const double* b, double* r) {
    const auto entry = static_cast<const Function*>(f)->front2;
    runs_of_equal_b(n, b, [&](int32_t i, int32_t j) {
        const int len = j - i;
        entry(&len, a + i, b + i, r + i);
    });
}

void front_d12(const void* f, int32_t n, const double* a, const double*, double* r) {
    const int len = n;
    const Function& fn = *static_cast<const Function*>(f);
    double* other = scratch_of(n);
    fn.front12(&len, a, fn.output == 1 ? r : other, fn.output == 1 ? other : r);
}

// The kernel of one cpu type and mode from a function's KernelSet<K>.
template <class K>
const void* kernel_of(const Function& f, int cpu, Mode mode) {
    return reinterpret_cast<const void*>(
        static_cast<const zvl::KernelSet<K>*>(f.kernel_set)->k[cpu][mode]);
}

}  // namespace

List<Function> functions() {
    const auto& v = joined().live;
    return {v.data(), v.size()};
}

List<const char*> functions_without_row() {
    const auto& v = joined().orphans;
    return {v.data(), v.size()};
}

const Function* find_function(const char* name) {
    for (const Function& f : functions())
        if (std::strcmp(f.row->name, name) == 0 || std::strcmp(f.exported, name) == 0) return &f;
    return nullptr;
}

bool has_modes(const Function& f) { return f.shape != Shape::R1; }

const char* mode_label(const Function& f, int m) { return has_modes(f) ? kModeNames[m] : "-"; }

int arity(Shape s) { return s == Shape::D2 || s == Shape::DX ? 2 : 1; }

Callable kernel(const Function& f, int cpu, Mode mode) {
    if (f.output != 0) return {f.output == 1 ? call_d12_y : call_d12_z, kernel_of<zvl::KernelD12>(f, cpu, mode)};
    switch (f.shape) {
        case Shape::D1: return {call_d1, kernel_of<zvl::KernelD1>(f, cpu, mode)};
        case Shape::D2: return {call_d2, kernel_of<zvl::KernelD2>(f, cpu, mode)};
        case Shape::DX: return {call_dx, kernel_of<zvl::KernelDx>(f, cpu, mode)};
        case Shape::R1:
            return {call_d1, reinterpret_cast<const void*>(
                                 static_cast<const zvl::RoundingSet<zvl::KernelD1>*>(f.kernel_set)
                                     ->k[cpu])};
    }
    return {nullptr, nullptr};
}

Callable timed_kernel(const Function& f, int cpu, Mode mode) {
    const Callable k = kernel(f, cpu, mode);
    return f.shape == Shape::DX ? Callable{call_dx_shared, k.ctx} : k;
}

Callable front_end(const Function& f) {
    if (f.output != 0) return {front_d12, &f};
    switch (f.shape) {
        case Shape::D1:
        case Shape::R1: return {front_d1, &f};
        case Shape::D2: return {front_d2, &f};
        case Shape::DX: return {front_dx, &f};
    }
    return {nullptr, nullptr};
}

bool cpu_runnable(int cpu) {
    switch (cpu) {
        case 0: return true;
        case 1: return __builtin_cpu_supports("sse3");
        case 2: return __builtin_cpu_supports("ssse3");
        case 3: return __builtin_cpu_supports("sse4.1");
        case 4: return __builtin_cpu_supports("sse4.2");
        case 5: return __builtin_cpu_supports("avx");
        default: return false;
    }
}

bool isa_runnable(Isa isa) {
    switch (isa) {
        case Isa::Base: return true;
        case Isa::Sse41: return __builtin_cpu_supports("sse4.1");
        case Isa::Avx: return __builtin_cpu_supports("avx");
        case Isa::Avx2: return __builtin_cpu_supports("avx2");
        case Isa::Avx2Fma: return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    }
    return false;
}

}  // namespace zvl_tools
