// The checked-in tables are what their generator prints today, byte for
// byte: rerun it for each table and compare.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

namespace {

std::string run(const std::string& cmd) {
    std::string out;
    FILE* p = popen(cmd.c_str(), "r");
    if (!p) return out;
    char buf[4096];
    size_t got;
    while ((got = fread(buf, 1, sizeof buf, p)) > 0) out.append(buf, got);
    pclose(p);
    return out;
}

std::string file(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

class PowTables : public testing::TestWithParam<const char*> {};

TEST_P(PowTables, RegeneratesByteForByte) {
    const std::string table = GetParam();
    const std::string checked_in = file(std::string(ZVL_POW_TABLES_DIR) + "/pow_" + table + ".inc");
    ASSERT_FALSE(checked_in.empty());
    EXPECT_TRUE(run(std::string(ZVL_POW_TABLES_GEN) + " " + table) == checked_in)
        << "kernels/explog/pow/pow_" << table << ".inc differs from the generator's output";
}

INSTANTIATE_TEST_SUITE_P(All, PowTables, testing::Values("r", "log2", "exp2", "exp2048"));

}  // namespace
