// What every kernel of the function table owes its caller, run over each
// distinct kernel of every row, cpu type and accuracy mode: counts below and
// between block widths with nothing outside the arrays touched, a special
// element at any lane leaving its neighbours alone, reports in index order
// under the kernel's own name with a callback's replacement kept, output and
// input as one array, the caller's floating-point control words, and long
// arrays (fetched ahead, results streamed) giving what short calls give. Values
// are the directed cases' and the accuracy harness's business (tests/tools).
#include <gtest/gtest.h>

#include <cstring>
#include <algorithm>
#include <cstdint>
#include <vector>

#include "frame/kernel_sets.h"
#include "tests/common/capture.h"
#include "tests/common/fenced.h"
#include "tests/common/fp_control.h"
#include "tests/common/rows.h"

namespace zvl_test {
namespace {

constexpr int kWidest = 16;  // the widest block of any kernel
constexpr double kUntouched = -7.0;

// Results of one call, both outputs.
struct Out {
    std::vector<double> r, r2;
    explicit Out(size_t n) : r(n, kUntouched), r2(n, kUntouched) {}
};

class Contract : public testing::TestWithParam<Slot> {
  protected:
    void SetUp() override {
        if (!cpu_runs(GetParam().cpu)) GTEST_SKIP() << "this processor lacks cpu type 5";
    }
    const Row& row() const { return *GetParam().row; }
    bool two_out() const { return row().shape == Shape::D12; }
    bool two_in() const { return row().shape == Shape::D2 || row().shape == Shape::Z2; }
    // Doubles per element: 1, or 2 for a complex row.
    size_t e() const { return static_cast<size_t>(row().elem_doubles); }

    Out run(const Args& x) const {
        Out o(x.a.size());
        GetParam().kernel()(static_cast<int32_t>(x.a.size() / e()), x.a.data(), x.bp(), o.r.data(),
                            o.r2.data());
        return o;
    }
    // Each element of x run on its own.
    Out alone(const Args& x) const {
        Out o(x.a.size());
        for (size_t i = 0; i < x.a.size(); i += e()) {
            const double* b = two_in() ? &x.b[i] : x.bp();
            GetParam().kernel()(1, &x.a[i], b, &o.r[i], &o.r2[i]);
        }
        return o;
    }
    // Element i, all its parts.
    bool same_at(const Out& x, const Out& y, size_t i, size_t j) const {
        for (size_t k = 0; k < e(); ++k)
            if (!same(x.r[i * e() + k], y.r[j * e() + k]) ||
                (two_out() && !same(x.r2[i * e() + k], y.r2[j * e() + k])))
                return false;
        return true;
    }
    bool same_at(const Out& x, const Out& y, size_t i) const { return same_at(x, y, i, i); }
};

// Every count up to three of the widest blocks, the arrays against an
// inaccessible page on either side: each result within the mode's reach of
// the HA kernel of cpu type 0, and nothing read or written outside. Counts
// of zero and below touch nothing, not even the memory the pointers name.
TEST_P(Contract, CountsAndArrayEnds) {
    const Row& r = row();
    const Kernel k = GetParam().kernel(), ref = r.kernel(0, zvl::kHA);
    Fenced fa(1), fb(1), fr(1), fr2(1);
    const Args all = ordinary(r, 3 * kWidest + 1);
    for (int n = -2; n <= 3 * kWidest + 1; ++n) {
        for (const bool at_end : {true, false}) {
            const int m = n > 0 ? n * r.elem_doubles : 0;
            auto place = [&](Fenced& f) { return at_end ? f.end() - m : f.begin(); };
            double *a = place(fa), *b = place(fb), *out = place(fr), *out2 = place(fr2);
            for (int i = 0; i < m; ++i) {
                a[i] = all.a[static_cast<size_t>(i)];
                if (two_in()) b[i] = all.b[static_cast<size_t>(i)];
                out[i] = out2[i] = kUntouched;
            }
            const double* bp = r.shape == Shape::DX || r.shape == Shape::ZX ? all.b.data() : b;
            k(n, a, bp, out, out2);
            for (int i = 0; i < m; i += r.elem_doubles) {
                double want[2], want2 = 0;
                ref(1, &a[i], two_in() ? &b[i] : bp, want, &want2);
                for (int j = 0; j < r.elem_doubles; ++j)
                    EXPECT_TRUE(close(out[i + j], want[j], GetParam().col, r.rounding))
                        << "n " << n << " double " << i + j << ": " << out[i + j] << " want " << want[j];
                if (two_out()) EXPECT_TRUE(close(out2[i], want2, GetParam().col, r.rounding));
            }
        }
    }
}

// The reporting element and one that leaves the vector path silently, at
// every position of two widest blocks and a remainder: the element's result
// (or the callback's replacement) and its report are what it gets alone, and
// every other element is what it gets with an ordinary element in its place
// (or, where a whole block is redone element by element, what it gets alone).
TEST_P(Contract, SpecialElementAtEveryLane) {
    const Row& r = row();
    const Traits& t = *r.traits;
    const int n = 2 * kWidest + 3;
    ReportLog log(true);
    const Args base = ordinary(r, n);
    const Out each = alone(base);
    const Element specials[2][2] = {{t.reports, t.reports_standin}, {t.quiet, t.quiet_standin}};
    for (int s = r.has_report() ? 0 : 1; s < 2; ++s) {
        Args one = ordinary(r, 1);
        one.set(0, specials[s][0], r.shape);
        log.clear();
        const Out lone = run(one);
        const std::vector<Report> lone_reports = log.list();
        ASSERT_EQ(lone_reports.size(), s == 0 ? 1u : 0u);
        if (s == 0) EXPECT_EQ(lone_reports[0].status, t.status);
        for (int p = 0; p < n; ++p) {
            SCOPED_TRACE(testing::Message()
                         << (s == 0 ? "reporting" : "quiet") << " element at " << p);
            Args x = base;
            x.set(p, specials[s][1], r.shape);
            const Out plain = run(x);
            x.set(p, specials[s][0], r.shape);
            log.clear();
            const Out got = run(x);
            const size_t q = static_cast<size_t>(p);
            EXPECT_TRUE(same_at(got, lone, q, 0)) << got.r[q * e()] << " alone " << lone.r[0];
            ASSERT_EQ(log.list().size(), lone_reports.size());
            if (s == 0) {
                const Report& rep = log.list()[0];
                EXPECT_EQ(rep.index, p);
                EXPECT_EQ(rep.status, t.status);
                EXPECT_TRUE(same(rep.r1, lone_reports[0].r1)) << rep.r1;
                EXPECT_EQ(rep.name, GetParam().name());
            }
            const bool pairs = std::strchr(t.pair_variants, r.cell(GetParam().cpu, GetParam().col).variant);
            for (size_t i = 0; i < static_cast<size_t>(n); ++i) {
                if (static_cast<int>(i) == p) continue;
                if (pairs && static_cast<int>(i) == (p ^ 1)) {
                    EXPECT_TRUE(close(got.r[i], each.r[i], GetParam().col, false))
                        << "the pair's element " << i << ": " << got.r[i] << ", " << each.r[i] << " alone";
                    continue;
                }
                EXPECT_TRUE(same_at(got, plain, i) || same_at(got, each, i))
                    << "element " << i << ": " << got.r[i] << ", " << plain.r[i] << " without";
            }
        }
    }
}

// Reporting elements scattered over blocks and remainder: one report each,
// in index order, each element holding the callback's replacement.
TEST_P(Contract, ReportsInIndexOrder) {
    const Row& r = row();
    if (!r.has_report()) GTEST_SKIP() << "nothing in " << r.report << " reports";
    const int n = 3 * kWidest + 3;
    Args x = ordinary(r, n);
    std::vector<int> at;
    for (int i = 1; i < n; i += 3) at.push_back(i);
    at.push_back(n - 1);
    for (int i : at) x.set(i, r.traits->reports, r.shape);
    ReportLog log(true);
    const Out got = run(x);
    ASSERT_EQ(log.list().size(), at.size());
    for (size_t j = 0; j < at.size(); ++j) {
        EXPECT_EQ(log.list()[j].index, at[j]);
        EXPECT_EQ(log.list()[j].status, r.traits->status);
        EXPECT_EQ(log.list()[j].name, GetParam().name());
        EXPECT_EQ(got.r[static_cast<size_t>(at[j])], kReplaced);
    }
}

// The output may be an input array: r = a, r = b, and Modf's z = a.
TEST_P(Contract, OutputMayBeAnInput) {
    const Row& r = row();
    const int n = 5 * kWidest + 3;
    Args x = ordinary(r, n);
    if (r.has_report()) x.set(1, r.traits->reports, r.shape);
    x.set(kWidest + 2, r.traits->quiet, r.shape);
    ReportLog log;
    const Out want = run(x);
    const Kernel k = GetParam().kernel();
    auto expect = [&](const char* what, const std::vector<double>& got,
                      const std::vector<double>& w) {
        for (size_t i = 0; i < got.size(); ++i) EXPECT_TRUE(same(got[i], w[i])) << what << " " << i;
    };
    Args io = x;
    Out o(io.a.size());
    k(n, io.a.data(), io.bp(), io.a.data(), o.r2.data());
    expect("r = a", io.a, want.r);
    if (two_in()) {
        io = x;
        k(n, io.a.data(), io.b.data(), io.b.data(), nullptr);
        expect("r = b", io.b, want.r);
    }
    if (two_out()) {
        io = x;
        k(n, io.a.data(), nullptr, o.r.data(), io.a.data());
        expect("z = a", io.a, want.r2);
    }
}

// Entered with rounding toward zero, flush-to-zero and denormals-are-zero,
// and the x87 unit rounding toward zero at 53 bits: both control words come
// back as they were (sticky flags aside), and a shielded kernel gives the
// bits it gives in the default state.
TEST_P(Contract, CallersControlWords) {
    const Row& r = row();
    const Slot& s = GetParam();
    Args x = ordinary(r, 4 * kWidest + 1);
    if (r.has_report()) x.set(5, r.traits->reports, r.shape);
    if (r.traits->subnormal.a != 0) x.set(2, r.traits->subnormal, r.shape);
    ReportLog log;
    const Out want = run(x);
    const uint32_t mxcsr = read_mxcsr();
    const uint16_t x87 = read_x87();
    const uint32_t odd_mxcsr = 0x1f80u | 0x6000u | 0x8000u | 0x40u;
    const uint16_t odd_x87 = 0x0e7f;
    write_mxcsr(odd_mxcsr);
    write_x87(odd_x87);
    const Out got = run(x);
    const uint32_t mxcsr_after = read_mxcsr();
    const uint16_t x87_after = read_x87();
    write_mxcsr(mxcsr);
    write_x87(x87);
    EXPECT_EQ(mxcsr_after & 0xffc0u, odd_mxcsr & 0xffc0u);
    EXPECT_EQ(x87_after, odd_x87);
    if (r.shielded(s.cpu, s.col))
        for (size_t i = 0; i < x.a.size() / e(); ++i)
            EXPECT_TRUE(same_at(got, want, i)) << "element " << i << ": " << got.r[i];
}

// A long array (past the size from which inputs are fetched ahead and
// results stored around the caches), with reporting and quiet elements
// strewn over it: the same results and reports as the same elements in
// short calls of 1024, whether the outputs are 16-byte aligned (streamed)
// or not (plain stores). The loop forms are shared, so cpu types 1 (128-bit
// stores) and 5 (256-bit) stand for all.
TEST_P(Contract, LongArrayAsShortCalls) {
    if (GetParam().cpu != 1 && GetParam().cpu != 5) GTEST_SKIP() << "cpu types 1 and 5 stand for all";
    const Row& r = row();
    // The complex loop forms compute for tens of ns an element and leave
    // memory to the processor: they neither prefetch nor stream.
    if (r.elem_doubles != 1) GTEST_SKIP() << "complex kernels neither prefetch nor stream";
    const Traits& t = *r.traits;
    const int n = (1 << 21) + 13, chunk = 1024, tile = 4093;
    // Kept from test to test: fresh pages would cost more than the kernels.
    static Args x;
    static std::vector<double> want, want2, out, out2;
    const Args few = ordinary(r, tile);
    x.b = few.b;
    x.a.resize(n);
    if (r.shape == Shape::D2) x.b.resize(n);
    for (int i = 0; i < n; ++i) {
        x.a[i] = few.a[i % tile];
        if (r.shape == Shape::D2) x.b[i] = few.b[i % tile];
    }
    for (int i = 7; i < n; i += 300007) {
        if (r.has_report()) x.set(i, t.reports, r.shape);
        x.set(i + 1000, t.quiet, r.shape);
    }
    x.set(n - 1, r.has_report() ? t.reports : t.quiet, r.shape);
    const Kernel k = GetParam().kernel();
    ReportLog log(true);
    want.assign(n, kUntouched);
    want2.assign(n, kUntouched);
    std::vector<int> want_at;
    for (int at = 0; at < n; at += chunk) {
        const int m = std::min(chunk, n - at);
        log.clear();
        k(m, &x.a[at], r.shape == Shape::D2 ? &x.b[at] : x.bp(), &want[at], &want2[at]);
        for (const Report& rep : log.list()) want_at.push_back(at + rep.index);
    }
    for (const int shift : {0, 1}) {
        SCOPED_TRACE(shift ? "outputs 8 bytes off 16" : "outputs 16-byte aligned");
        out.assign(n + 1, kUntouched);
        out2.assign(n + 1, kUntouched);
        // out.data() is 16-byte aligned, as operator new aligns
        double* o1 = out.data() + shift;
        double* o2 = out2.data() + shift;
        log.clear();
        k(n, x.a.data(), x.bp(), o1, o2);
        ASSERT_EQ(log.list().size(), want_at.size());
        for (size_t j = 0; j < want_at.size(); ++j) EXPECT_EQ(log.list()[j].index, want_at[j]);
        int wrong = 0;
        for (size_t i = 0; i < static_cast<size_t>(n) && wrong < 5; ++i)
            if (!same(o1[i], want[i]) || (two_out() && !same(o2[i], want2[i])))
                ADD_FAILURE() << "element " << i << ": " << o1[i] << " want " << want[i] << (++wrong, "");
    }
}

INSTANTIATE_TEST_SUITE_P(EveryKernel, Contract, testing::ValuesIn(distinct_slots()),
                         [](const testing::TestParamInfo<Slot>& p) { return slot_label(p.param); });

// The kernel sets put the HA kernel in the LA and EP slots just where the
// plan forwards, and a distinct kernel everywhere else.
TEST(KernelSets, HaSlotsAsPlanned) {
    for (const Row& r : rows()) {
        if (r.rounding) continue;
        for (int cpu = 0; cpu < kCpuTypes; ++cpu)
            for (int col : {zvl::kLA, zvl::kEP})
                EXPECT_EQ(r.kernel(cpu, col).fn == r.kernel(cpu, zvl::kHA).fn, runs_ha(r, cpu, col))
                    << r.report << " cpu " << cpu << " column " << col;
    }
}

// Slots that run one algorithm give the same bits whatever their cpu type,
// block width and loop form: a wrapper that rounds or orders lanes
// differently shows here.
TEST(KernelSets, OneAlgorithmOneResult) {
    for (const Row& r : rows()) {
        const Args x = ordinary(r, 1003, 11);
        std::vector<double> first[128];
        for (int col = 0; col < r.plan->columns; ++col)
            for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
                if (!cpu_runs(cpu)) continue;
                std::vector<double> y(x.a.size()), y2(x.a.size());
                r.kernel(cpu, col)(static_cast<int32_t>(y.size() / static_cast<size_t>(r.elem_doubles)),
                                   x.a.data(), x.bp(), y.data(), y2.data());
                std::vector<double>& f = first[static_cast<int>(r.cell(cpu, col).variant)];
                if (f.empty()) f = y;
                for (size_t i = 0; i < y.size(); ++i)
                    ASSERT_TRUE(same(y[i], f[i]))
                        << r.report << " cpu " << cpu << " column " << col << " at " << x.a[i];
            }
    }
}

}  // namespace
}  // namespace zvl_test
