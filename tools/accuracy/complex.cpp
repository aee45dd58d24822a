#include "tools/accuracy/complex.h"

#include <cmath>

#include "tools/common/rng.h"

namespace zvl_tools {
namespace {

const ZRegion& pick_region(const ComplexRow& row, double u) {
    for (const ZRegion& r : row.regions) {
        if (u < r.weight) return r;
        u -= r.weight;
    }
    return row.regions[row.regions.size() - 1];
}

// The samples' first arguments in z, their second in b (two-argument rows;
// Powx's b constant over each run of kSharedRun).
void make_samples(const ComplexRow& row, size_t random, uint64_t seed, std::vector<ZVLComplex16>& z,
                  std::vector<ZVLComplex16>& b) {
    const bool two = row.shape != ZShape::Z1;
    for (const Pair& p : row.special) z.push_back({p.a, p.b});
    for (const ZPair& p : row.special2) {
        // Powx: a whole run for each point, so that the runs stay aligned
        for (size_t k = 0; k < (row.shape == ZShape::ZX ? kSharedRun : 1); ++k) {
            z.push_back({p.ar, p.ai});
            b.push_back({p.br, p.bi});
        }
    }
    Rng rng(seed);
    double total = row.circle;
    for (const ZRegion& r : row.regions) total += r.weight;
    ZVLComplex16 shared = {};
    for (size_t i = 0; i < random; ++i) {
        double u = rng.unit() * total;
        if (u < row.circle) {
            // |z| = 1 + d, d from 2^-60 to 2^-4 of either sign, any angle
            const double d = std::ldexp(1.0, -4 - static_cast<int>(rng.unit() * 56)) * (rng.unit() < 0.5 ? -1 : 1);
            const double t = rng.unit() * 6.283185307179586;
            z.push_back({(1 + d) * std::cos(t), (1 + d) * std::sin(t)});
            continue;
        }
        const ZRegion& pick = pick_region(row, u - row.circle);
        z.push_back({draw(rng, pick.re), draw(rng, pick.im)});
        if (!two) continue;
        const ZVLComplex16 w = {draw(rng, pick.bre), draw(rng, pick.bim)};
        if (row.shape == ZShape::Z2 || b.size() % kSharedRun == 0) shared = w;
        b.push_back(shared);
    }
}

// 1 + |b ln a|, the factor by which exp(b ln a) magnifies relative errors
// of its parts.
long double condition(const ZVLComplex16& a, const ZVLComplex16& b) {
    const long double l = std::log(std::hypot(static_cast<long double>(a.real), static_cast<long double>(a.imag)));
    const long double t = std::atan2(static_cast<long double>(a.imag), static_cast<long double>(a.real));
    return 1 + std::hypot(static_cast<long double>(b.real), static_cast<long double>(b.imag)) * std::hypot(l, t);
}

std::vector<ZExact> exact_values(const ComplexRow& row, const std::vector<ZVLComplex16>& z,
                                 const std::vector<ZVLComplex16>& b) {
    std::vector<ZExact> out(z.size());
    mpfr_t x, y, u, v, re, im, t;
    mpfr_inits2(192, x, y, u, v, re, im, t, static_cast<mpfr_ptr>(nullptr));
    for (size_t i = 0; i < z.size(); ++i) {
        mpfr_set_d(x, z[i].real, MPFR_RNDN);
        mpfr_set_d(y, z[i].imag, MPFR_RNDN);
        mpfr_clear_flags();
        if (row.shape == ZShape::Z1) {
            row.ref(re, im, x, y);
        } else {
            mpfr_set_d(u, b[i].real, MPFR_RNDN);
            mpfr_set_d(v, b[i].imag, MPFR_RNDN);
            row.ref2(re, im, x, y, u, v);
        }
        ZExact& e = out[i];
        e.part[0] = exact_of(re, t);
        e.part[1] = exact_of(im, t);
        const bool numbers = std::isfinite(e.part[0].rn) && std::isfinite(e.part[1].rn);
        e.norm = numbers ? std::hypot(static_cast<long double>(e.part[0].rn), static_cast<long double>(e.part[1].rn)) : 0;
        e.cond = row.conditioned ? condition(z[i], b[i]) : 1;
    }
    mpfr_clears(x, y, u, v, re, im, t, static_cast<mpfr_ptr>(nullptr));
    return out;
}

void measure_one(const ZVLComplex16& got, const ZExact& e, size_t i, ZStats& s) {
    ++s.count;
    const double part[2] = {got.real, got.imag};
    long double sq = 0;
    for (int k = 0; k < 2; ++k) {
        const double u = ulp_error(part[k], e.part[k]);
        if (e.norm > 0) sq += std::pow(static_cast<long double>(u) * ulp_of(e.part[k].rn), 2);
        const bool cancelling = e.norm > 0 && std::fabs(e.part[k].rn) < kCancelling * e.norm;
        if (!cancelling && u > s.max_ulp[k]) {
            s.max_ulp[k] = u;
            s.worst_ulp[k] = i;
        }
    }
    if (e.norm > 0) {
        // below the normal range an ulp is fixed: measured against 2^-1022
        const long double mag = (e.norm < 0x1p-1022L ? 0x1p-1022L : e.norm) * e.cond;
        const double norm = static_cast<double>(std::sqrt(sq) / mag);
        if (norm > s.max_norm) {
            s.max_norm = norm;
            s.worst_norm = i;
        }
    }
}

}  // namespace

ZTable measure_complex(const ComplexFunction& f, size_t random, uint64_t seed, unsigned cpus) {
    ZTable t;
    make_samples(*f.row, random, seed, t.samples, t.second);
    t.exact = exact_values(*f.row, t.samples, t.second);
    const size_t n = t.samples.size();
    const ZVLComplex16* b = t.second.empty() ? nullptr : t.second.data();
    std::vector<ZVLComplex16> block(n), one(n);
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!(cpus >> cpu & 1) || !cpu_runnable(cpu)) continue;
        for (int m = 0; m < kModes; ++m) {
            call_complex(f, cpu, m, static_cast<int32_t>(n), t.samples.data(), b, block.data());
            for (size_t i = 0; i < n; ++i) call_complex(f, cpu, m, 1, &t.samples[i], b ? b + i : nullptr, &one[i]);
            ZStats& s = t.stats[cpu][m];
            for (size_t i = 0; i < n; ++i) {
                measure_one(block[i], t.exact[i], i, s);
                measure_one(one[i], t.exact[i], i, s);
            }
            t.ran[cpu][m] = true;
        }
    }
    return t;
}

double measured(const Budget& b, const ZStats& s) { return b.relative ? s.max_norm : s.ulp(); }

bool within(const Budget& b, const ZStats& s) {
    if (b.relative) return s.max_norm <= b.bound;
    return s.ulp() <= b.bound && s.max_norm <= b.bound * 0x1p-52;
}

}  // namespace zvl_tools
