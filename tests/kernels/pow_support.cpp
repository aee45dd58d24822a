#include "tests/kernels/pow_support.h"

#include <cinttypes>
#include <cstdio>

#include "state/state.h"

namespace pow_test {

bool runnable(int cpu) { return cpu != 5 || __builtin_cpu_supports("avx"); }

namespace {

std::vector<std::pair<int32_t, int32_t>> g_reports;
bool g_replace = false;
double g_replacement = 0.0;

int record(ZVLErrorRecord* rec) {
    g_reports.emplace_back(rec->status, rec->index);
    if (g_replace) rec->r1 = g_replacement;
    return 0;
}

}  // namespace

Reports::Reports(bool replace, double replacement) : saved_mode_(zvl::get_mode()) {
    g_reports.clear();
    g_replace = replace;
    g_replacement = replacement;
    zvl::set_callback(record);
    zvl::set_array_base(nullptr);  // indices relative to the arrays passed
    // The accuracy field is left alone: kernels are called directly.
    zvl::set_mode((saved_mode_ & ~zvl::kErrorActionMask) | zvl::kCallbackBit);
}

Reports::~Reports() {
    zvl::clear_callback();
    zvl::set_mode(saved_mode_);
}

const std::vector<std::pair<int32_t, int32_t>>& Reports::list() const { return g_reports; }
void Reports::clear() { g_reports.clear(); }

std::string kernel_name(const testing::TestParamInfo<std::tuple<int, int>>& p) {
    return "cpu" + std::to_string(std::get<0>(p.param)) + "_" + kColumn[std::get<1>(p.param)];
}

std::string hex(double x) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%a (0x%016" PRIx64 ")", x, bits(x));
    return buf;
}

}  // namespace pow_test
