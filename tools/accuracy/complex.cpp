#include "tools/accuracy/complex.h"

#include <cmath>

#include "tools/common/rng.h"

namespace zvl_tools {
namespace {

std::vector<ZVLComplex16> make_samples(const ComplexRow& row, size_t random, uint64_t seed) {
    std::vector<ZVLComplex16> z;
    for (const Pair& p : row.special) z.push_back({p.a, p.b});
    Rng rng(seed);
    double total = row.circle;
    for (const ZRegion& r : row.regions) total += r.weight;
    for (size_t i = 0; i < random; ++i) {
        double u = rng.unit() * total;
        if (u < row.circle) {
            // |z| = 1 + d, d from 2^-60 to 2^-4 of either sign, any angle
            const double d = std::ldexp(1.0, -4 - static_cast<int>(rng.unit() * 56)) * (rng.unit() < 0.5 ? -1 : 1);
            const double t = rng.unit() * 6.283185307179586;
            z.push_back({(1 + d) * std::cos(t), (1 + d) * std::sin(t)});
            continue;
        }
        u -= row.circle;
        const ZRegion* pick = &row.regions[row.regions.size() - 1];
        for (const ZRegion& r : row.regions) {
            if (u < r.weight) {
                pick = &r;
                break;
            }
            u -= r.weight;
        }
        z.push_back({draw(rng, pick->re), draw(rng, pick->im)});
    }
    return z;
}

std::vector<ZExact> exact_values(const ComplexRow& row, const std::vector<ZVLComplex16>& z) {
    std::vector<ZExact> out(z.size());
    mpfr_t x, y, re, im, t;
    mpfr_inits2(192, x, y, re, im, t, static_cast<mpfr_ptr>(nullptr));
    for (size_t i = 0; i < z.size(); ++i) {
        mpfr_set_d(x, z[i].real, MPFR_RNDN);
        mpfr_set_d(y, z[i].imag, MPFR_RNDN);
        mpfr_clear_flags();
        row.ref(re, im, x, y);
        ZExact& e = out[i];
        e.part[0] = exact_of(re, t);
        e.part[1] = exact_of(im, t);
        const bool numbers = std::isfinite(e.part[0].rn) && std::isfinite(e.part[1].rn);
        e.norm = numbers ? std::hypot(static_cast<long double>(e.part[0].rn), static_cast<long double>(e.part[1].rn)) : 0;
    }
    mpfr_clears(x, y, re, im, t, static_cast<mpfr_ptr>(nullptr));
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
        const long double mag = e.norm < 0x1p-1022L ? 0x1p-1022L : e.norm;
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
    t.samples = make_samples(*f.row, random, seed);
    t.exact = exact_values(*f.row, t.samples);
    const size_t n = t.samples.size();
    std::vector<ZVLComplex16> block(n), one(n);
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!(cpus >> cpu & 1) || !cpu_runnable(cpu)) continue;
        for (int m = 0; m < kModes; ++m) {
            const LoopZ k = f.kernel(cpu, m);
            k(static_cast<int32_t>(n), t.samples.data(), block.data());
            for (size_t i = 0; i < n; ++i) k(1, &t.samples[i], &one[i]);
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
