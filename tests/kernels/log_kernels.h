// What the Ln and Log10 kernel tests share: the two kernel sets, which
// algorithm and guard sits in each slot, and a callback that records
// reports.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "frame/kernel_sets.h"

namespace zvl_test {

enum Guard { kNoGuard, kMxcsrFull, kX87 };

struct LogFamily {
    const char* name;  // as in kernel names: Ln, Log10
    const zvl::KernelSet<zvl::KernelD1>* set;
};

extern const LogFamily kLn;
extern const LogFamily kLog10;

// One slot of a kernel set.
struct LogSlot {
    const LogFamily* f;
    int cpu;
    int col;  // zvl::kHA, kLA, kEP
    zvl::KernelD1 kernel() const { return f->set->k[cpu][col]; }
};

// The column whose kernel the slot runs (LA and EP slots may run HA).
int effective_column(const LogSlot& s);
// The algorithm behind the slot: slots with the same one give the same bits.
std::string variant(const LogSlot& s);
Guard guard(const LogSlot& s);
// The name the slot's kernel reports under.
std::string kernel_name(const LogSlot& s);
// Every slot that this processor can run (type 5 needs AVX).
std::vector<LogSlot> runnable_slots();
std::string slot_label(const LogSlot& s);

// Positive normal arguments away from every special class, 37 of them, so
// that every block width and a remainder are covered.
std::vector<double> ordinary_inputs();

// Reports recorded by record_report, which a test installs as the callback
// with the callback as the only error action.
struct Report {
    int32_t index;
    int32_t status;
    std::string name;
};
void start_recording(bool replace = false, double replacement = 0.0);
void stop_recording();
const std::vector<Report>& reports();

}  // namespace zvl_test
