// A family's plan: for every cpu type and accuracy column, which kernel the
// slot runs. A cell is either a kernel of its own (the family's variant, the
// block width W, the floating-point guard, the loop form and the vector
// wrapper it runs on) or a forward to the kernel of another cell.
//
// The plan is the one place this is written. The per-cpu units instantiate
// each cell from it (kernels/common/family.h), frame/kernel_sets.cpp fills
// each function's kernel set from it (a forward becomes the pointer of the
// cell it names), and the tests and the report read it for what a slot runs
// and under which guard.
//
// Plain data with no instruction set: included by the per-cpu units, by
// frame/ and by the tests and tools alike.
#pragma once

#include <cstdint>

namespace zvl {

// The floating-point control a kernel installs on entry and undoes on exit
// (kernels/common/fp_guard.h): the full MXCSR guard to round to nearest or
// in a direction, its short form, and the x87 control word at 53 or 64
// significant bits, and that x87 word with the short MXCSR guard (the
// complex vector kernels, Tan HA).
enum class Guard : uint8_t {
    none,
    mxcsr,
    mxcsr_up,
    mxcsr_down,
    mxcsr_zero,
    mxcsr_short,
    x87_53,
    x87_64,
    x87_64_short,
};

// The loop forms of kernels/common/loops/.
enum class Loop : uint8_t {
    scratch,  // branch-free blocks, special lanes through the callout
    restart,  // a failing block is redone element by element
    pairs,    // two elements a round, each tested after the operation
    exact,    // the rounding family's: a block or its elements, nothing reported
    batch,    // batches of 64 with an extended-precision pass
    thin,     // one scalar routine call per element
    zblock,   // complex blocks by parts, refused lanes through the scalar routine
};

// The vector wrapper of the loop: the unit's own, one double at a time, or
// 128-bit vectors whatever the unit's width.
enum class Wrap : uint8_t { unit, scalar, v128 };

constexpr int kCpuTypeCount = 6;
constexpr int kColumns = 3;  // HA, LA, EP; the rounding family has HA alone

struct Cell {
    char variant;   // the family's name of the algorithm; 0 in a forward
    uint8_t width;  // W, elements per block
    Guard guard;
    Loop loop;
    Wrap wrap;
    int8_t to_cpu;  // a forward: the cpu type (kSameCpu: this one) ...
    int8_t to_col;  // ... and column whose kernel runs here; -1 otherwise

    static constexpr int8_t kSameCpu = -2;
    constexpr bool forwards() const { return to_col >= 0; }
    // Runs in round to nearest without flushing whatever the caller's
    // MXCSR: a guard that sets the mode, or arithmetic on the x87 stack.
    constexpr bool shielded() const {
        return guard == Guard::mxcsr || guard == Guard::mxcsr_short || guard == Guard::x87_64 ||
               guard == Guard::x87_64_short;
    }
};

// A kernel of its own.
constexpr Cell own(char variant, int width, Guard guard, Loop loop, Wrap wrap = Wrap::unit) {
    return {variant, static_cast<uint8_t>(width), guard, loop, wrap, -1, -1};
}
// The slot runs the kernel of another column of the same cpu type, or of
// another cpu type.
constexpr Cell runs(int col) { return {0, 0, Guard::none, Loop::scratch, Wrap::unit, Cell::kSameCpu, static_cast<int8_t>(col)}; }
constexpr Cell runs_at(int cpu, int col) {
    return {0, 0, Guard::none, Loop::scratch, Wrap::unit, static_cast<int8_t>(cpu), static_cast<int8_t>(col)};
}
constexpr Cell runs_cpu(int cpu) { return runs_at(cpu, 0); }
constexpr Cell kRunsHA = runs(0);

struct Where {
    int cpu, col;
};

struct Plan {
    Cell cell[kCpuTypeCount][kColumns];
    int columns;  // 3, or 1 for the rounding family

    constexpr const Cell& at(int cpu, int col) const { return cell[cpu][col]; }
    // The cell whose kernel the slot runs, forwards followed.
    constexpr Where target(int cpu, int col) const {
        for (int hops = 0; hops < kCpuTypeCount * kColumns && cell[cpu][col].forwards(); ++hops) {
            const Cell& c = cell[cpu][col];
            cpu = c.to_cpu == Cell::kSameCpu ? cpu : c.to_cpu;
            col = c.to_col;
        }
        return {cpu, col};
    }
    constexpr const Cell& kernel_at(int cpu, int col) const {
        const Where w = target(cpu, col);
        return cell[w.cpu][w.col];
    }
};

// A plan whose columns are given per cpu type, from type 0 up.
struct Row3 {
    Cell ha, la, ep;
};
constexpr Plan plan(Row3 t0, Row3 t1, Row3 t2, Row3 t3, Row3 t4, Row3 t5) {
    const Row3 rows[kCpuTypeCount] = {t0, t1, t2, t3, t4, t5};
    Plan p{};
    for (int c = 0; c < kCpuTypeCount; ++c) {
        p.cell[c][0] = rows[c].ha;
        p.cell[c][1] = rows[c].la;
        p.cell[c][2] = rows[c].ep;
    }
    p.columns = kColumns;
    return p;
}
// The rounding family: one kernel per cpu type.
constexpr Plan plan1(Cell t0, Cell t1, Cell t2, Cell t3, Cell t4, Cell t5) {
    const Cell cells[kCpuTypeCount] = {t0, t1, t2, t3, t4, t5};
    Plan p{};
    for (int c = 0; c < kCpuTypeCount; ++c) p.cell[c][0] = p.cell[c][1] = p.cell[c][2] = cells[c];
    p.columns = 1;
    return p;
}

// Every forward lands on a kernel of its own within the plan, and no kernel
// of its own lacks a width or a variant: checked where a plan is defined.
constexpr bool well_formed(const Plan& p) {
    for (int c = 0; c < kCpuTypeCount; ++c)
        for (int m = 0; m < p.columns; ++m) {
            const Cell& k = p.kernel_at(c, m);
            if (k.forwards() || k.width == 0 || k.variant == 0) return false;
        }
    return true;
}

}  // namespace zvl
