// The mode word, status word and callback services in the library case,
// where all six copies share one thread context.
#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <thread>

#include "state/state.h"
#include "zvl.h"

namespace {

using SetMode = uint32_t (*)(uint32_t);
using GetMode = uint32_t (*)();

// Every way in: the exported form, the dispatcher and the six copies.
uint32_t exported_set(uint32_t m) { return ZVLSETMODE(&m); }
#define ZT_COPIES(f) zvl::Services<0>::f, zvl::Services<1>::f, zvl::Services<2>::f, \
                     zvl::Services<3>::f, zvl::Services<4>::f, zvl::Services<5>::f
const SetMode kSetters[] = {exported_set, zvl::set_mode, ZT_COPIES(set_mode)};
const GetMode kGetters[] = {ZVLGETMODE, zvl::get_mode, ZT_COPIES(get_mode)};

void reset() {
    zvl::ThreadContext* c = zvl::library_context();
    c->mode = ZVL_MODE_DEFAULT;
    c->status = 0;
    c->callback = nullptr;
}

struct MergeRow {
    const char* what;
    uint32_t start;
    uint32_t set;
    uint32_t after;
};

// Each field is replaced as a whole or not at all.
const MergeRow kMerges[] = {
    {"zero changes nothing", 0x1A02, 0, 0x1A02},
    {"accuracy only", 0x1A02, 0x3, 0x1A03},
    {"ignore alone drops errno, raise and callback", 0x1A02, 0x100, 0x0102},
    {"print alone", 0x1A02, 0x400, 0x0402},
    {"outside the fields", 0x1A02, 0xFFFC0000, 0x1A02},
    {"bits 4 to 7", 0x1A02, 0xF0, 0x1A02},
    {"FP field", 0x1A02, 0x10000, 0x11A02},
    {"FP field replaced", 0x11A02, 0x20000, 0x21A02},
    {"every bit", 0x1A02, 0xFFFFFFFF, 0x3FF0F},
    {"spare error bits", 0x1A02, 0xE000, 0xE002},
};

TEST(Mode, SetModeMergesFieldByField) {
    for (size_t s = 0; s < std::size(kSetters); ++s) {
        for (const MergeRow& row : kMerges) {
            SCOPED_TRACE(std::string(row.what) + ", setter " + std::to_string(s));
            zvl::library_context()->mode = row.start;
            EXPECT_EQ(kSetters[s](row.set), row.start);
            for (GetMode get : kGetters) EXPECT_EQ(get(), row.after);
        }
    }
    reset();
}

TEST(Mode, EachThreadHasItsOwn) {
    reset();
    const uint32_t ignore = 0x100;
    ZVLSETMODE(&ignore);
    uint32_t seen = 0, after = 0;
    std::thread([&] {
        seen = ZVLGETMODE();
        const uint32_t la = ZVL_LA;
        ZVLSETMODE(&la);
        after = ZVLGETMODE();
        zvl::set_status(3);
    }).join();
    EXPECT_EQ(seen, ZVL_MODE_DEFAULT);
    EXPECT_EQ(after, 0x1A01u);
    EXPECT_EQ(ZVLGETMODE(), 0x0102u);
    EXPECT_EQ(zvl::get_status(), 0);
    reset();
}

TEST(Mode, StatusServices) {
    reset();
    EXPECT_EQ(zvl::set_status(-2), 0);
    EXPECT_EQ(zvl::Services<3>::get_status(), -2);
    EXPECT_EQ(zvl::Services<5>::set_status(4), -2);
    EXPECT_EQ(zvl::clear_status(), 4);
    EXPECT_EQ(zvl::get_status(), 0);
}

int callback_a(ZVLErrorRecord*) { return 0; }
int callback_b(ZVLErrorRecord*) { return 0; }

struct CallbackRow {
    const char* what;
    uint32_t mode;
    ZVLErrorCallback before;
    int op;  // 0 set callback_b, 1 set null, 2 clear
    uint32_t mode_after;
    ZVLErrorCallback after;
};

// The callback bit follows the callback, through set mode's merge rules.
const CallbackRow kCallbackRows[] = {
    {"set on the default word", 0x1A02, nullptr, 0, 0x1A02, callback_b},
    {"set with print only", 0x0402, nullptr, 0, 0x1402, callback_b},
    {"set replaces", 0x1402, callback_a, 0, 0x1402, callback_b},
    {"set null clears the bit", 0x1402, callback_a, 1, 0x0402, nullptr},
    {"clear clears the bit", 0x1A02, callback_a, 2, 0x0A02, nullptr},
    // the field would become zero, which set mode ignores: the bit stays
    {"clear when the bit is the only action", 0x1002, callback_a, 2, 0x1002, nullptr},
    {"set null when the bit is the only action", 0x1002, callback_a, 1, 0x1002, nullptr},
    {"the FP field and accuracy survive", 0x20401, nullptr, 0, 0x21401, callback_b},
};

TEST(Mode, CallbackAndItsBit) {
    for (const CallbackRow& row : kCallbackRows) {
        SCOPED_TRACE(row.what);
        zvl::ThreadContext* c = zvl::library_context();
        c->mode = row.mode;
        c->callback = row.before;
        ZVLErrorCallback old = row.op == 0   ? zvl::set_callback(callback_b)
                               : row.op == 1 ? zvl::set_callback(nullptr)
                                             : zvl::clear_callback();
        EXPECT_EQ(old, row.before);
        EXPECT_EQ(zvl::get_callback(), row.after);
        EXPECT_EQ(ZVLGETMODE(), row.mode_after);
    }
    reset();
}

TEST(Mode, ArrayBase) {
    double x[2];
    EXPECT_EQ(zvl::set_array_base(x), x);
    EXPECT_EQ(zvl::library_context()->array_base, x);
    EXPECT_EQ(zvl::Services<2>::set_array_base(nullptr), nullptr);
    EXPECT_EQ(zvl::library_context()->array_base, nullptr);
}

TEST(Mode, LibraryCase) {
    EXPECT_EQ(zvl::module_kind(), 1);
    for (auto context : {ZT_COPIES(context)})
        EXPECT_EQ(context(), zvl::library_context());
}

}  // namespace
