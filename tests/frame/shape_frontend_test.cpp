// The front-ends of the shapes that no exported function has yet: one in
// two out with a threshold (SinCos) and the three complex shapes. Each runs
// here on stand-in kernels that record their calls, with the record of a
// function at its place in the table: its argument checks in position
// order, its column by the accuracy field, its threshold from its table
// (real or complex), and its parallel driver covering every element once.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include "frame/frontend.h"
#include "frame/function_table.h"
#include "state/state.h"
#include "tests/common/capture.h"

namespace zvl_test {
namespace {

using Z = ZVLComplex16;

std::string parameter_error(int position, const char* name) {
    return "\nZEL ERROR: Parameter " + std::to_string(position) + " was incorrect on entry to " +
           name + "\n";
}

// What the stand-in kernels saw: calls by column, elements, and the last
// arguments.
std::atomic<int> g_calls[3];
std::atomic<long> g_elements;
const void* g_scalar;  // the scalar pointer the kernel was given
Z g_scalar_value;

void seen(int col, int32_t n) {
    ++g_calls[col];
    g_elements += n;
}
template <int Col>
void d12(int32_t n, const double*, double* y, double* z) {
    seen(Col, n);
    for (int32_t i = 0; i < n; ++i) y[i] = z[i] = Col;
}
template <int Col>
void z1(int32_t n, const Z*, Z* r) {
    seen(Col, n);
    for (int32_t i = 0; i < n; ++i) r[i] = {double(Col), 0};
}
template <int Col>
void z2(int32_t n, const Z*, const Z*, Z* r) {
    seen(Col, n);
    for (int32_t i = 0; i < n; ++i) r[i] = {double(Col), 0};
}
template <int Col>
void zx(int32_t n, const Z*, const Z* b, Z* r) {
    seen(Col, n);
    g_scalar = b;
    g_scalar_value = *b;
    for (int32_t i = 0; i < n; ++i) r[i] = {double(Col), 0};
}

template <class K>
zvl::KernelSet<K> set_of(K ha, K la, K ep) {
    zvl::KernelSet<K> s;
    for (auto& row : s.k) row[0] = ha, row[1] = la, row[2] = ep;
    return s;
}

class ShapeFrontEnd : public testing::Test {
  protected:
    void SetUp() override {
        for (auto& c : g_calls) c = 0;
        g_elements = 0;
        zvl::ThreadContext* c = zvl::library_context();
        c->mode = ZVL_MODE_DEFAULT;
        c->callback = nullptr;
        c->status = 0;
    }
    // Checks of a shape with `arrays` checked pointers: `call(n, null)`
    // makes a call with the checked array `null` (or none, -1) given as null.
    template <class Call>
    void checks_in_order(const char* name, int arrays, Call call) {
        EXPECT_EQ(capture_stdout([&] { call(-1, -1); }), parameter_error(1, name));
        EXPECT_EQ(zvl::get_status(), ZVL_STATUS_BADSIZE);
        zvl::set_status(0);
        EXPECT_EQ(capture_stdout([&] { call(0, 0); }), "");
        for (int i = 0; i < arrays; ++i) {
            EXPECT_EQ(capture_stdout([&] { call(4, i); }), parameter_error(i + 2, name)) << i;
            EXPECT_EQ(zvl::get_status(), ZVL_STATUS_BADMEM);
        }
        EXPECT_EQ(g_calls[0] + g_calls[1] + g_calls[2], 0) << "no kernel runs after a failed check";
        zvl::set_status(0);
        for (uint32_t field : {2u, 1u, 3u, 0u}) {
            zvl::library_context()->mode = (ZVL_MODE_DEFAULT & ~0xFu) | field;
            call(5, -1);
        }
        EXPECT_EQ(g_calls[zvl::kHA], 1);
        EXPECT_EQ(g_calls[zvl::kLA], 1);
        EXPECT_EQ(g_calls[zvl::kEP], 2);
        // Long enough for any threshold: the driver covers every element once.
        g_elements = 0;
        call(kLong, -1);
        EXPECT_EQ(g_elements, kLong);
        EXPECT_EQ(zvl::get_status(), 0);
    }
    static constexpr int kLong = 1 << 21;
};

constexpr zvl::FunctionInfo info(const char* report, int len, const char* family, bool complex) {
    return {report, len, 18 * (complex ? zvl::table::place(zvl::table::kComplexOrder, family)
                                       : zvl::table::place(zvl::table::kRealOrder, family)),
            complex};
}

TEST_F(ShapeFrontEnd, OneInTwoOut) {
    static zvl::Cells<zvl::KernelD12> cells;
    static const auto set = set_of<zvl::KernelD12>(d12<0>, d12<1>, d12<2>);
    constexpr zvl::FunctionInfo f = info("vdSinCos", 8, "SinCos", false);
    static_assert(f.id == 234);
    std::vector<double> a(kLong, 0.5), y(kLong), z(kLong);
    checks_in_order("vdSinCos", 3, [&](int n, int null) {
        zvl::Front::d12(&n, null == 0 ? nullptr : a.data(), null == 1 ? nullptr : y.data(),
                        null == 2 ? nullptr : z.data(), f, cells, set);
    });
    EXPECT_EQ(y[kLong - 1], zvl::kEP);
    EXPECT_EQ(z[0], zvl::kEP);
}

TEST_F(ShapeFrontEnd, ComplexOneInOneOut) {
    static zvl::Cells<zvl::KernelZ1> cells;
    static const auto set = set_of<zvl::KernelZ1>(z1<0>, z1<1>, z1<2>);
    constexpr zvl::FunctionInfo f = info("vzExp", 5, "Exp", true);
    static_assert(f.id == 54);
    std::vector<Z> a(kLong, Z{0.5, 0.5}), r(kLong);
    checks_in_order("vzExp", 2, [&](int n, int null) {
        zvl::Front::z1(&n, null == 0 ? nullptr : a.data(), null == 1 ? nullptr : r.data(), f, cells,
                       set);
    });
    EXPECT_EQ(r[kLong - 1].real, zvl::kEP);
}

TEST_F(ShapeFrontEnd, ComplexTwoInOneOut) {
    static zvl::Cells<zvl::KernelZ2> cells;
    static const auto set = set_of<zvl::KernelZ2>(z2<0>, z2<1>, z2<2>);
    constexpr zvl::FunctionInfo f = info("vzPow", 5, "Pow", true);
    static_assert(f.id == 18);
    std::vector<Z> a(kLong), b(kLong), r(kLong);
    checks_in_order("vzPow", 3, [&](int n, int null) {
        zvl::Front::z2(&n, null == 0 ? nullptr : a.data(), null == 1 ? nullptr : b.data(),
                       null == 2 ? nullptr : r.data(), f, cells, set);
    });
}

// The scalar is never checked, and the kernel sees a copy of it.
TEST_F(ShapeFrontEnd, ComplexArrayAndScalar) {
    static zvl::Cells<zvl::KernelZx> cells;
    static const auto set = set_of<zvl::KernelZx>(zx<0>, zx<1>, zx<2>);
    constexpr zvl::FunctionInfo f = info("vzPowx", 6, "Powx", true);
    static_assert(f.id == 36);
    std::vector<Z> a(kLong), r(kLong);
    const Z b = {2.0, -1.0};
    checks_in_order("vzPowx", 2, [&](int n, int null) {
        zvl::Front::zx(&n, null == 0 ? nullptr : a.data(), &b, null == 1 ? nullptr : r.data(), f,
                       cells, set);
    });
    EXPECT_NE(g_scalar, static_cast<const void*>(&b));
    EXPECT_EQ(g_scalar_value.real, 2.0);
    EXPECT_EQ(g_scalar_value.imag, -1.0);
}

}  // namespace
}  // namespace zvl_test
