// The per-element cost tables and the fork cost behind the thresholds and
// the dynamic split.
#pragma once

#include <array>
#include <cstdint>

#include "threading/settings.h"
#include "threading/topology.h"

namespace zvl {

// Cost per element in units of the fork cost. A function owns 18 entries
// from its base slot: HA, LA and EP rows of cpu types 0 to 5.
extern const std::array<double, 432> threshold_table_z;  // complex double
extern const std::array<double, 432> threshold_table_c;  // complex float
extern const std::array<double, 648> threshold_table_d;  // real double
extern const std::array<double, 648> threshold_table_s;  // real float

// Set by the first lookup: the cpu type whose column is read from then on
// (-1 before), the package walk's counts and the fork cost derived from them.
extern Plain<int32_t> threshold_cpu_type;
extern Plain<float> fork_cost;
extern Plain<int32_t> topology_packages;
extern Plain<int32_t> topology_cores;
extern Plain<int32_t> topology_logical;

// The fork cost of a machine with these counts; -1.0 (never fork) for one
// logical processor.
float fork_cost_of(TopologyCounts counts);

// Stores the counts and their fork cost, as the first lookup does after the
// package walk. Tests use it to stand in for the walk.
void set_fork_topology(TopologyCounts counts);

// A 32-bit float truncated to an integer the way the processor converts:
// NaN and values out of range give INT32_MIN.
int32_t truncate_to_int(float x);

}  // namespace zvl
