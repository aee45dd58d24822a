// The front-ends of Sqrt, InvSqrt, Cbrt and InvCbrt, run once per cpu type:
// the accuracy field picks the kernel of its column.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "frame/cpu_type.h"
#include "frame/kernel_sets.h"
#include "state/state.h"
#include "zvl.h"

namespace {

using Front = void (*)(const int*, const double*, double*);

struct Root {
    const char* name;
    Front f;
    const zvl::KernelSet<zvl::KernelD1>* set;
};
const Root kRoots[] = {{"Sqrt", VDSQRT, &zvl::kernels_VDSQRT},
                       {"InvSqrt", VDINVSQRT, &zvl::kernels_VDINVSQRT},
                       {"Cbrt", VDCBRT, &zvl::kernels_VDCBRT},
                       {"InvCbrt", VDINVCBRT, &zvl::kernels_VDINVCBRT}};

class RootFrontEnd : public ::testing::Test {
  protected:
    void SetUp() override {
        if (zvl::cpu_type() > 5) GTEST_SKIP() << "no kernel set for this cpu type";
        saved_ = zvl::get_mode();
        zvl::set_mode(ZVL_ERRMODE_IGNORE);
        zvl::set_status(0);
    }
    void TearDown() override {
        zvl::set_mode(saved_);
        zvl::set_status(0);
    }
    uint32_t saved_ = 0;
};

TEST_F(RootFrontEnd, AccuracyFieldPicksTheColumn) {
    const uint32_t cpu = zvl::cpu_type();
    std::vector<double> a;
    for (int i = 0; i < 203; ++i) a.push_back(0.013 + i * 1.7);
    const int n = static_cast<int>(a.size());
    struct Pick {
        uint32_t accuracy;
        int column;
    };
    const Pick picks[] = {{ZVL_HA, zvl::kHA}, {ZVL_LA, zvl::kLA}, {ZVL_EP, zvl::kEP}, {0x7, zvl::kEP}};
    for (const Root& f : kRoots)
        for (const Pick& p : picks) {
            std::vector<double> want(a.size()), got(a.size());
            f.set->k[cpu][p.column](n, a.data(), want.data());
            zvl::set_mode(p.accuracy);
            f.f(&n, a.data(), got.data());
            EXPECT_EQ(0, std::memcmp(want.data(), got.data(), sizeof(double) * a.size()))
                << f.name << " accuracy " << p.accuracy;
        }
}

}  // namespace
