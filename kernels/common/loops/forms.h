// What a family gives each loop form, named by a tag. A family's struct F
// declares `using form = forms::<Tag>;`, and the loop checks every member the
// tag names against its exact signature when it instantiates F: a member
// that has drifted (a `const` dropped, another return type) is a compile
// error and never a quiet fall to another path.
//
// A family that carries data (a scalar second argument and what follows
// from it alone) is a struct with data members, whose members are const
// member functions; a family without data is an empty struct of static
// functions. vd is V::vd, the wrapper's vector; the bracketed arguments are
// those of the two-input shape (z, the second input) and of the two-output
// shape (u, the second output).
//
//   Lanes      block<V, NV>(const vd* x, [const vd* z,] vd* y, [vd* u]) -> void
//              special<V>(vd x[, vd z]) -> vd (all-ones lanes) or int (lane bits)
//              one(double x[, double z]) -> double            (one output)
//              one(double x, double* y, double* u) -> void    (two outputs)
//              callout(const double* x, [const double* z,] double* y[, double* u]) -> int32_t
//              optional in the scratch form: static constexpr bool pair_tail,
//              the elements left after the blocks run in blocks of two lanes
//              while two are left
//   BlockMask  block<V, NV>(...) -> uint32_t: the refused lanes' bits, from
//              inside the block; the remainder runs block<Scalar, 1>; callout
//   BlockAt    block_at<V, NV>(const double* src, const vd* x, vd* y) -> int:
//              the block also reads its inputs from memory (src, its first
//              element) and gives the refused lanes' bits; one, special and
//              callout as in Lanes; one input, one output
//   Checked    checked_block<V, NV>(const vd* x, [const vd* z,] vd* y) -> bool:
//              true when every element passes; element(const double* x,
//              [const double* z,] double* y) -> int32_t, the exact routine
//   CheckedAt  checked_block_at<V, NV>(const double* src, const vd* x, vd* y)
//              -> bool; element as in Checked; one input
//   Exact      block<V, NV>(const vd* x, vd* y[, vd* u]) -> bool;
//              element(double x, double* y[, double* u]) -> void: the
//              rounding family's, which reports nothing
//   Pairs      eval<V>(vd x[, vd z]) -> vd, the operation;
//              refused<V>(vd z) -> vd, the lanes to test after it;
//              status(double x, double z) -> int32_t for such a lane
//   Thin       element(Elem* y, const Elem* x[, const Elem* z]) -> void:
//              one scalar routine per element (the complex thin loop)
//   ZBlock     block<V, W>(const double* x, const double* y, double* re,
//              double* im) -> uint32_t: W complex elements by their parts,
//              the refused lanes' bits; element(Elem* y, const Elem* x),
//              the scalar routine that redoes them (complex vector kernels)
//   Batch      pass<V, NV>(const vd* x, vd* y, vd* t) per block, then
//              extended(const double* t, double* y, int count) over the
//              batch: a vector pass and one in extended precision
#pragma once

#include <cstdint>
#include <type_traits>

namespace forms {
struct Lanes {};
struct BlockMask {};
struct BlockAt {};
struct Checked {};
struct CheckedAt {};
struct Exact {};
struct Pairs {};
struct Thin {};
struct ZBlock {};
struct Batch {};
}  // namespace forms

namespace {

// The shape of a kernel entry: arrays in and out, and their element type.
// The array-and-scalar shape is one input whose family carries the scalar.
template <int In, int Out, class Elem = double>
struct Shape {
    static constexpr int in = In, out = Out;
    using elem = Elem;
};

template <class Sig>
struct ConstMemberOf;
template <class R, class... A>
struct ConstMemberOf<R(A...)> {
    using type = R(A...) const;
};
template <class Sig>
using ConstMember = typename ConstMemberOf<Sig>::type;
template <class Sig>
using FnPtr = Sig*;

// ZVL_EXACT(F, Sig, member) takes F's member as exactly the function type
// Sig: a static function of an empty family, a const member function of
// one with data. It does not compile when F has no such member of that
// type, whatever other overloads F has.
// (The vector types' attributes drop out of the function types, harmlessly:
// the check is on the wrapper's types as declared.)
#define ZVL_EXACT(F, Sig, ...)                                             \
    [] {                                                                   \
        _Pragma("GCC diagnostic push");                                    \
        _Pragma("GCC diagnostic ignored \"-Wignored-attributes\"");        \
        if constexpr (std::is_empty_v<F>) {                                \
            [[maybe_unused]] FnPtr<Sig> p = &F::__VA_ARGS__;               \
        } else {                                                           \
            [[maybe_unused]] ConstMember<Sig> F::*p = &F::__VA_ARGS__;     \
        }                                                                  \
        _Pragma("GCC diagnostic pop");                                     \
    }()

template <class F, class Tag>
constexpr bool has_form() {
    return std::is_same_v<typename F::form, Tag>;
}

}  // namespace
