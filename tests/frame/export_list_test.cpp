// The function table, the public header and frame/exports.txt agree: every
// row's two entries are declared in zvl.h with the row's shape (checked when
// this file compiles) and listed for export, and the list names nothing
// else but the mode and thread calls. The exports test then holds the
// product to the list.
#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string>
#include <type_traits>

#include "frame/function_table.h"
#include "zvl.h"

namespace {

using Z = ZVLComplex16;
using D1 = void(const int*, const double*, double*);
using D1Idx = void(const int*, const double*, int, double*, int);
using D2 = void(const int*, const double*, const double*, double*);
using D2Idx = void(const int*, const double*, int, const double*, int, double*, int);
using D12 = void(const int*, const double*, double*, double*);
using D12Idx = void(const int*, const double*, int, double*, int, double*, int);
using DX = D2;
using DXIdx = void(const int*, const double*, int, const double*, double*, int);
using Z1 = void(const int*, const Z*, Z*);
using Z1Idx = void(const int*, const Z*, int, Z*, int);
using Z2 = void(const int*, const Z*, const Z*, Z*);
using Z2Idx = void(const int*, const Z*, int, const Z*, int, Z*, int);
using ZX = Z2;
using ZXIdx = void(const int*, const Z*, int, const Z*, Z*, int);

#define ZT_DECLARED(EXPORT, SHAPE)                                                            \
    static_assert(std::is_same_v<decltype(EXPORT), SHAPE>, #EXPORT " in zvl.h has another shape"); \
    static_assert(std::is_same_v<decltype(EXPORT##_Idx), SHAPE##Idx>, #EXPORT "_Idx in zvl.h has another shape");
#define ZT_D1(EXPORT, ...) ZT_DECLARED(EXPORT, D1)
#define ZT_D2(EXPORT, ...) ZT_DECLARED(EXPORT, D2)
#define ZT_D12(EXPORT, ...) ZT_DECLARED(EXPORT, D12)
#define ZT_DX(EXPORT, ...) ZT_DECLARED(EXPORT, DX)
#define ZT_Z1(EXPORT, ...) ZT_DECLARED(EXPORT, Z1)
#define ZT_Z2(EXPORT, ...) ZT_DECLARED(EXPORT, Z2)
#define ZT_ZX(EXPORT, ...) ZT_DECLARED(EXPORT, ZX)
ZVL_FUNCTIONS(ZT_D1, ZT_D2, ZT_D12, ZT_DX, ZT_Z1, ZT_Z2, ZT_ZX, ZT_D1, ZT_D12)

std::set<std::string> listed() {
    std::ifstream in(ZVL_EXPORT_LIST);
    std::set<std::string> names;
    for (std::string line; std::getline(in, line);)
        if (!line.empty() && line[0] != '#') names.insert(line.substr(0, line.find_last_not_of("\r \t") + 1));
    return names;
}

std::set<std::string> from_table() {
    std::set<std::string> names = {"ZVLGETMODE",          "ZVLSETMODE",
                                   "ZEL_Get_Max_Threads", "ZEL_Set_Num_Threads",
                                   "ZEL_Domain_Get_Max_Threads", "ZEL_Domain_Set_Num_Threads",
                                   "ZEL_Get_Dynamic",     "ZEL_Set_Dynamic"};
#define ZT_NAMES(EXPORT, ...) names.insert(#EXPORT), names.insert(#EXPORT "_Idx");
    ZVL_FUNCTIONS(ZT_NAMES, ZT_NAMES, ZT_NAMES, ZT_NAMES, ZT_NAMES, ZT_NAMES, ZT_NAMES, ZT_NAMES,
                  ZT_NAMES)
#undef ZT_NAMES
    return names;
}

TEST(ExportList, IsTheTable) {
    const std::set<std::string> list = listed(), table = from_table();
    ASSERT_FALSE(list.empty()) << ZVL_EXPORT_LIST;
    for (const std::string& n : table) EXPECT_TRUE(list.count(n)) << n << " is in the table, not in the export list";
    for (const std::string& n : list) EXPECT_TRUE(table.count(n)) << n << " is in the export list, not in the table";
}

// Every function of the library is in the table: the names it gives are
// as many as the product exports.
TEST(ExportList, EveryFunction) { EXPECT_EQ(from_table().size(), static_cast<size_t>(ZVL_EXPORT_COUNT)); }

// Ids are 18 times the place in their table's order (checked at compile
// time): the real and complex orders number apart.
TEST(FunctionTable, IdsByPlace) {
    using namespace zvl::table;
    EXPECT_EQ(place(kRealOrder, "Inv"), 0);
    EXPECT_EQ(place(kComplexOrder, "Sqrt"), 0);
    EXPECT_EQ(18 * place(kRealOrder, "SinCos"), 234);
    EXPECT_EQ(18 * place(kComplexOrder, "Exp"), 54);
    EXPECT_EQ(18 * place(kRealOrder, "ErfInv"), 486);
    EXPECT_EQ(18 * place(kComplexOrder, "Atanh"), 306);
    EXPECT_TRUE(real_id_ok(144, "Exp"));
    EXPECT_FALSE(real_id_ok(146, "Exp"));
    EXPECT_FALSE(complex_id_ok(144, "Exp"));
}

}  // namespace
