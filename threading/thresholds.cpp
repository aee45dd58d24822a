// Thresholds and the dynamic split.
//
// The fork cost is a number of element-cost units: 9000 for each other
// processor in another package, 60000 for one on another core of the same
// package, 500000 for a sibling on the same core, averaged over the other
// processors. A function's threshold is the fork cost over its cost per
// element, so no call forks unless its array is long enough to repay it.
// All of this is 32-bit float arithmetic in a fixed order, so thresholds
// come out the same to the element on every build.
#include <cstddef>
#include <cstdint>

#include "base/cpu_type.h"
#include "threading/threading.h"
#include "threading/thresholds.h"

namespace zvl {

Plain<int32_t> threshold_cpu_type{-1};
Plain<float> fork_cost{0.0f};
Plain<int32_t> topology_packages{0};
Plain<int32_t> topology_cores{0};
Plain<int32_t> topology_logical{0};

namespace {

constexpr int32_t kNever = 0x7fffffff;
constexpr int32_t kMinimum = 100;

// Shares of the other processors that sit in another package (a), on
// another core of the same package (b) and on the same core (c), from the
// integer quotients of the counts.
struct Shares {
    double a, b, c;
};

Shares shares(int32_t s, int32_t c, int32_t l) {
    const int32_t per_package = l / s, per_core = l / c, cores_per_package = c / s;
    const double others = l - 1;
    return {static_cast<double>(per_package) * (s - 1) / others,
            static_cast<double>(cores_per_package - 1) * per_core / others,
            static_cast<double>(per_core - 1) / others};
}

// acc plus the costs of the shares, added in this order.
float plus_fork_costs(float acc, const Shares& sh) {
    acc = acc + static_cast<float>(sh.a) * 9000.0f;
    acc = acc + static_cast<float>(sh.b) * 60000.0f;
    return acc + static_cast<float>(sh.c) * 500000.0f;
}

template <size_t N>
double entry(const std::array<double, N>& table, int32_t slot) {
    const int64_t i = int64_t{slot} + threshold_cpu_type;
    return i >= 0 && i < static_cast<int64_t>(N) ? table[static_cast<size_t>(i)] : 0.0;
}

void ensure_fork_cost(int32_t cpu) {
    if (threshold_cpu_type == -1) {
        threshold_cpu_type = cpu;
        init_fork_cost();
    }
}

template <size_t N>
int32_t lookup(const std::array<double, N>& table, int32_t slot, int32_t cpu) {
    ensure_fork_cost(cpu);
    const float cost = fork_cost;
    if (cost == -1.0f) return kNever;
    const float e = static_cast<float>(entry(table, slot));
    if (e == 0.0f) return kNever;
    const float q = cost / e;
    return q > 100.0f ? truncate_to_int(q) : kMinimum;
}

// Adds threads while their total fork cost, as a number of elements, stays
// below n. Processors are taken away from other packages first, then from
// other cores, then siblings, so each added thread costs at least as much
// as the one before.
template <size_t N>
int32_t split(const std::array<double, N>& table, int32_t* threads, int32_t n, int32_t slot) {
    ensure_fork_cost(static_cast<int32_t>(cpu_type()));
    int32_t s = topology_packages, c = topology_cores, l = topology_logical;
    int32_t t = 1;
    float acc = fork_cost;
    const double e = entry(table, slot);
    const float inv = static_cast<float>(e != 0.0 ? 1.0 / e : 0.0);
    for (;;) {
        // A zero entry makes the reach infinite or NaN, which truncates to
        // INT32_MIN: no n stops the loop.
        const int32_t reach = e != 0.0 ? truncate_to_int(acc * inv) : INT32_MIN;
        if (reach >= n) break;
        if (s > 1) {
            --s, --c, --l;
        } else if (c > 1) {
            --c, --l;
        } else if (l > 1) {
            --l;
        } else {
            break;
        }
        ++t;
        // With one processor left the shares are 0/0 and the total turns
        // NaN; its reach never meets n and nothing is left to take away.
        if (l == 1) break;
        acc = plus_fork_costs(acc, shares(s, c, l));
    }
    if (t > *threads) t = *threads;
    *threads = t;
    return t;
}

}  // namespace

int32_t truncate_to_int(float x) {
    if (!(x >= -2147483648.0f && x < 2147483648.0f)) return INT32_MIN;
    return static_cast<int32_t>(x);
}

float fork_cost_of(TopologyCounts n) {
    if (n.logical <= 1 || n.packages < 1 || n.cores < 1) return -1.0f;
    // 0 + x is x exactly: the three costs summed from the first
    return plus_fork_costs(0.0f, shares(n.packages, n.cores, n.logical));
}

void set_fork_topology(TopologyCounts counts) {
    topology_packages = counts.packages;
    topology_cores = counts.cores;
    topology_logical = counts.logical;
    fork_cost = fork_cost_of(counts);
}

void init_fork_cost() { set_fork_topology(walk_packages(*topology_ops)); }

int32_t threshold_d(int32_t slot, int32_t cpu) { return lookup(threshold_table_d, slot, cpu); }
int32_t threshold_z(int32_t slot, int32_t cpu) { return lookup(threshold_table_z, slot, cpu); }

int32_t split_threads_z(int32_t* threads, int32_t n, int32_t slot) {
    return split(threshold_table_z, threads, n, slot);
}
int32_t split_threads_c(int32_t* threads, int32_t n, int32_t slot) {
    return split(threshold_table_c, threads, n, slot);
}
int32_t split_threads_d(int32_t* threads, int32_t n, int32_t slot) {
    return split(threshold_table_d, threads, n, slot);
}
int32_t split_threads_s(int32_t* threads, int32_t n, int32_t slot) {
    return split(threshold_table_s, threads, n, slot);
}

}  // namespace zvl
