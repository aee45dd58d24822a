// Drawing arguments from a row's intervals.
#include "tools/common/functions.h"
#include "tools/common/rng.h"

namespace zvl_tools {

double draw(Rng& rng, const Interval& in) {
    switch (in.spread) {
        case Spread::Linear: return rng.linear(in.lo, in.hi);
        case Spread::Log: return rng.by_bits(in.lo, in.hi);
        case Spread::LogBoth: {
            const double x = rng.by_bits(in.lo < 0 ? -in.lo : in.lo, in.hi < 0 ? -in.hi : in.hi);
            return (rng.next() & 1) ? -x : x;
        }
    }
    return in.lo;
}

void timing_inputs(const FunctionRow& row, size_t n, std::vector<double>* a,
                   std::vector<double>* b) {
    Rng rng(12345);
    a->resize(n);
    for (double& x : *a) x = draw(rng, row.timing_a);
    b->clear();
    if (arity(row.shape) == 1) return;
    b->resize(n);
    const double shared = draw(rng, row.timing_b);
    for (double& y : *b) y = row.shape == Shape::DX ? shared : draw(rng, row.timing_b);
}

}  // namespace zvl_tools
