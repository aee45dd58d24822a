#include "tools/accuracy/accuracy.h"

#include <cfenv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tools/common/rng.h"

namespace zvl_tools {
namespace {

constexpr double kInf = HUGE_VAL;

const Region& pick_region(Rng& rng, const List<Region>& regions, double total) {
    double u = rng.unit() * total;
    for (const Region& r : regions) {
        if (u < r.weight) return r;
        u -= r.weight;
    }
    return regions[regions.size() - 1];
}

// Doubles in order of value as integers: -0 and +0 both map to 0.
int64_t ordinal(double x) {
    const uint64_t b = bits(x);
    const int64_t m = static_cast<int64_t>(b & 0x7fffffffffffffff);
    return (b >> 63) ? -m : m;
}
double from_ordinal(int64_t o) {
    return o < 0 ? from_bits(static_cast<uint64_t>(-o) | 0x8000000000000000)
                 : from_bits(static_cast<uint64_t>(o));
}

// p, the `k` doubles on each side of it, and p(1 +- 2^-j) for j = 1, 4, ...
void sweep(double p, int k, std::vector<double>* out) {
    if (std::isnan(p)) {
        out->push_back(p);
        out->push_back(from_bits(0x7ff0000000000001));  // signalling
        out->push_back(from_bits(0xfff8000000000000));  // the default NaN of x86
        return;
    }
    const int64_t o = ordinal(p);
    for (int i = -k; i <= k; ++i) {
        out->push_back(i == 0 ? p : from_ordinal(o + i));
    }
    if (p != 0 && std::isfinite(p))
        for (int j = 1; j <= 52; j += 3) {
            out->push_back(p * (1 + std::ldexp(1.0, -j)));
            out->push_back(p * (1 - std::ldexp(1.0, -j)));
        }
}

struct Builder {
    const FunctionRow& row;
    const SampleOptions& opt;
    Rng rng;
    bool two;
    double total = 0;
    Samples s;

    Builder(const FunctionRow& r, const SampleOptions& o)
        : row(r), opt(o), rng(o.seed), two(arity(r.shape) == 2) {
        for (const Region& g : row.regions) total += g.weight;
    }

    void add(double a, double b, Origin origin) {
        s.a.push_back(a);
        if (two) s.b.push_back(b);
        s.origin.push_back(origin);
    }

    // One random pair; the first argument from the user's range if given.
    Pair random_pair() {
        if (row.sampler && two) {
            Pair p;
            row.sampler(rng, opt.range, false, 1, &p.a, &p.b);
            return p;
        }
        Pair p = {0, 0};
        if (total > 0) {
            const Region& g = pick_region(rng, row.regions, total);
            p.a = draw(rng, g.a);
            p.b = draw(rng, g.b);
        }
        if (opt.range) p.a = draw(rng, *opt.range);
        return p;
    }

    void random(size_t n) {
        if (row.shape != Shape::DX) {
            for (size_t i = 0; i < n; ++i) {
                const Pair p = random_pair();
                add(p.a, p.b, Origin::Random);
            }
            return;
        }
        // One b per group of 64, so that the kernel sees whole blocks.
        const size_t group = 64;
        double a[group], b[group];
        for (size_t done = 0; done < n; done += group) {
            const size_t m = n - done < group ? n - done : group;
            if (row.sampler) {
                row.sampler(rng, opt.range, true, m, a, b);
            } else {
                const double shared = random_pair().b;
                for (size_t i = 0; i < m; ++i) {
                    a[i] = random_pair().a;
                    b[i] = shared;
                }
            }
            for (size_t i = 0; i < m; ++i) add(a[i], b[i], Origin::Random);
        }
    }

    void sweeps() {
        std::vector<double> pts;
        for (double p : row.special_a) {
            sweep(p, opt.neighbours, &pts);
            if (row.mirror) sweep(-p, opt.neighbours, &pts);
        }
        // A swept first argument goes with the ordinary b, so that an
        // array-and-scalar kernel runs the sweep as one array.
        for (double q : pts) {
            const double b = !two ? 0 : row.shape == Shape::DX ? row.ordinary_b : random_pair().b;
            add(q, b, Origin::Sweep);
        }
        pts.clear();
        for (double p : row.special_b) {
            sweep(p, opt.neighbours, &pts);
            if (row.mirror) sweep(-p, opt.neighbours, &pts);
        }
        for (double q : pts)
            for (int i = 0; i < (row.shape == Shape::DX ? 8 : 1); ++i)
                add(random_pair().a, q, Origin::Sweep);
        for (const Pair& p : row.special_pairs) add(p.a, p.b, Origin::Special);
    }

    void hardcases() {
        std::vector<Pair> cases;
        if (!row.hardcases || !read_hardcases(row.hardcases, &cases)) return;
        for (const Pair& p : cases) {
            if (two && std::isnan(p.b)) continue;  // a one-argument file
            add(p.a, p.b, Origin::Hard);
        }
    }
};

void set_ulp_scaled(mpfr_ptr t, mpfr_srcptr r, double rn) {
    mpfr_sub_d(t, r, rn, MPFR_RNDN);
    int e;
    std::frexp(ulp_of(rn), &e);
    mpfr_mul_2si(t, t, -(e - 1), MPFR_RNDN);
}

}  // namespace

Samples make_samples(const FunctionRow& row, const SampleOptions& opt) {
    Builder b(row, opt);
    b.random(opt.random);
    if (opt.sweeps && !opt.range) b.sweeps();
    if (opt.hardcases && !opt.range) b.hardcases();
    return std::move(b.s);
}

double ulp_of(double rn) {
    const double m = std::fabs(rn);
    if (!(m >= 0x1p-1022)) return 0x1p-1074;  // subnormal, zero
    if (std::isinf(m)) return 0x1p971;
    int e;
    std::frexp(m, &e);  // m in [2^(e-1), 2^e)
    return std::ldexp(1.0, e - 53);
}

Exact exact_of(mpfr_srcptr r, mpfr_ptr t) {
    Exact e;
    e.tail = 0;
    if (mpfr_nan_p(r)) {
        e.kind = Exact::NotANumber;
        e.rn = __builtin_nan("");
    } else if (mpfr_inf_p(r)) {
        // Past MPFR's own exponent range: a finite exact value.
        e.rn = mpfr_signbit(r) ? -kInf : kInf;
        e.kind = mpfr_overflow_p() ? Exact::Overflow : Exact::Infinite;
        e.tail = e.kind == Exact::Overflow ? e.rn : 0;
    } else if (mpfr_zero_p(r)) {
        e.rn = mpfr_signbit(r) ? -0.0 : 0.0;
        e.kind = mpfr_underflow_p() ? Exact::Number : Exact::Zero;
    } else {
        e.rn = mpfr_get_d(r, MPFR_RNDN);
        if (std::isinf(e.rn)) {
            e.kind = Exact::Overflow;
            mpfr_set_ui_2exp(t, 1, 1024, MPFR_RNDN);
            if (e.rn < 0) mpfr_neg(t, t, MPFR_RNDN);
            mpfr_sub(t, r, t, MPFR_RNDN);
            mpfr_mul_2si(t, t, -971, MPFR_RNDN);
            e.tail = mpfr_get_d(t, MPFR_RNDN);
        } else {
            e.kind = Exact::Number;
            set_ulp_scaled(t, r, e.rn);
            e.tail = mpfr_get_d(t, MPFR_RNDN);
        }
    }
    return e;
}

std::vector<Exact> exact_values(const FunctionRow& row, const Samples& s, int precision) {
    std::vector<Exact> out(s.size());
    mpfr_t x, y, r, t;
    mpfr_inits2(precision, x, y, r, t, static_cast<mpfr_ptr>(nullptr));
    const bool two = arity(row.shape) == 2;
    for (size_t i = 0; i < s.size(); ++i) {
        mpfr_set_d(x, s.a[i], MPFR_RNDN);
        mpfr_clear_flags();
        if (two) {
            mpfr_set_d(y, s.b[i], MPFR_RNDN);
            row.ref2(r, x, y, MPFR_RNDN);
        } else {
            row.ref1(r, x, MPFR_RNDN);
        }
        out[i] = exact_of(r, t);
    }
    mpfr_clears(x, y, r, t, static_cast<mpfr_ptr>(nullptr));
    return out;
}

double ulp_error(double got, const Exact& e) {
    switch (e.kind) {
        case Exact::NotANumber: return std::isnan(got) ? 0 : kInf;
        case Exact::Infinite: return got == e.rn ? 0 : kInf;
        case Exact::Zero:
            if (got == 0) return std::signbit(got) == std::signbit(e.rn) ? 0 : kInf;
            if (std::isnan(got)) return kInf;
            return static_cast<double>(std::fabs(static_cast<long double>(got)) * 0x1p1074L);
        case Exact::Number:
        case Exact::Overflow: break;
    }
    if (std::isnan(got)) return kInf;
    if (e.kind == Exact::Overflow && got == e.rn) return 0;
    // In long double, where got - rn is exact for nearby values and 2^1024
    // and 2^1074 are in range.
    const long double two1024 = 0x1p1024L;
    const long double g =
        std::isinf(got) ? std::copysign(two1024, static_cast<long double>(got)) : got;
    const long double h =
        e.kind == Exact::Overflow ? std::copysign(two1024, static_cast<long double>(e.rn)) : e.rn;
    const long double err = std::fabs((g - h) / static_cast<long double>(ulp_of(e.rn)) - e.tail);
    return static_cast<double>(err);
}

double rel_error(double ulps, const Exact& e) {
    if (ulps == 0) return 0;
    if (e.kind != Exact::Number && e.kind != Exact::Overflow) return kInf;
    const long double u = ulp_of(e.rn);
    const long double h =
        e.kind == Exact::Overflow ? std::copysign(0x1p1024L, static_cast<long double>(e.rn)) : e.rn;
    long double mag = std::fabs(h + e.tail * u);
    if (mag < 0x1p-1022L) mag = 0x1p-1022L;
    return static_cast<double>(ulps * u / mag);
}

Stats measure(const Callable& fn, const Samples& s, const std::vector<Exact>& exact, bool single,
              std::vector<float>* per_sample, const std::vector<bool>* skip, int rounding) {
    Stats st;
    const size_t n = s.size();
    std::vector<double> r(n);
    if (per_sample) per_sample->assign(n, 0.0f);
    auto account = [&](size_t i, double got, bool one) {
        if (skip && (*skip)[i]) return;
        const double u = ulp_error(got, exact[i]);
        const double rel = rel_error(u, exact[i]);
        if (st.count++ == 0 || u > st.max_ulp) {
            st.max_ulp = u;
            st.worst_ulp = i;
            st.got_ulp = got;
            st.single_ulp = one;
        }
        if (rel > st.max_rel) {
            st.max_rel = rel;
            st.worst_rel = i;
            st.got_rel = got;
        }
        if (per_sample && u > (*per_sample)[i]) (*per_sample)[i] = static_cast<float>(u);
    };
    // The whole array in chunks, so that n fits the kernels' 32-bit count.
    const size_t chunk = size_t{1} << 30;
    for (size_t i = 0; i < n; i += chunk) {
        const size_t m = n - i < chunk ? n - i : chunk;
        std::fesetround(rounding);
        fn(static_cast<int32_t>(m), s.a.data() + i, s.b.empty() ? nullptr : s.b.data() + i,
           r.data() + i);
        std::fesetround(FE_TONEAREST);
    }
    for (size_t i = 0; i < n; ++i) account(i, r[i], false);
    if (single) {
        for (size_t i = 0; i < n; ++i) {
            double one;
            std::fesetround(rounding);
            fn(1, &s.a[i], s.b.empty() ? nullptr : &s.b[i], &one);
            std::fesetround(FE_TONEAREST);
            account(i, one, true);
        }
    }
    return st;
}

Table measure_function(const Function& f, const SampleOptions& opt, unsigned cpus, unsigned modes,
                       bool keep_per_sample) {
    Table t;
    t.samples = make_samples(*f.row, opt);
    t.exact = exact_values(*f.row, t.samples);
    if (!has_modes(f)) modes &= 1;
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!(cpus >> cpu & 1) || !cpu_runnable(cpu)) continue;
        for (int m = 0; m < kModes; ++m) {
            if (!(modes >> m & 1)) continue;
            const Callable k = kernel(f, cpu, static_cast<Mode>(m));
            std::vector<bool> skip;
            if (f.row->departs) {
                skip.resize(t.samples.size());
                for (size_t i = 0; i < skip.size(); ++i) skip[i] = f.row->departs(cpu, m, t.samples.a[i]);
            }
            t.stats[cpu][m] = measure(k, t.samples, t.exact, true,
                                      keep_per_sample ? &t.per_sample[cpu][m] : nullptr,
                                      f.row->departs ? &skip : nullptr, opt.rounding);
            t.ran[cpu][m] = true;
        }
    }
    return t;
}

bool read_hardcases(const char* stems, std::vector<Pair>* out) {
    const char* comma = std::strchr(stems, ',');
    if (comma) {
        const std::string first(stems, comma);
        const bool ok = read_hardcases(first.c_str(), out);
        return read_hardcases(comma + 1, out) && ok;
    }
    const char* stem = stems;
    const std::string path = data_path(std::string("ulp-hardcases/") + stem + ".txt");
    FILE* f = std::fopen(path.c_str(), "r");
    if (!f) return false;
    char line[512];
    bool symmetric = false;
    const size_t first = out->size();
    while (std::fgets(line, sizeof line, f)) {
        char* p = line;
        while (*p == ' ' || *p == '\t') ++p;
        if (*p == '#') {
            if (std::strncmp(p, "# symmetric", 11) == 0) symmetric = true;
            continue;
        }
        char* end;
        const double x = std::strtod(p, &end);
        if (end == p) continue;
        double y = __builtin_nan("");
        if (*end == ',') {
            char* q = end + 1;
            y = std::strtod(q, &end);
            if (end == q) continue;
        }
        out->push_back({x, y});
    }
    std::fclose(f);
    if (symmetric) {
        const size_t last = out->size();
        for (size_t i = first; i < last; ++i) out->push_back({-(*out)[i].a, (*out)[i].b});
    }
    return true;
}

std::string data_path(const std::string& relative) {
    const char* dir = std::getenv("ZVL_DATA_DIR");
#ifdef ZVL_TOOLS_DATA_DIR
    if (!dir || !*dir) dir = ZVL_TOOLS_DATA_DIR;
#endif
    if (!dir || !*dir) dir = "tests/data";
    return std::string(dir) + "/" + relative;
}

std::string show(double x) {
    char buf[80];
    std::snprintf(buf, sizeof buf, "%a (%.17g)", x, x);
    return buf;
}

}  // namespace zvl_tools
