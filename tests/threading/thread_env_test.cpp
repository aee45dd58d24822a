// Reading the thread environment. The environment is read once per
// process, so each case runs in a child process of its own: it sets the
// variables, makes the first query and prints the settings, which must
// match the case's expectation.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include "threading/settings.h"
#include "zvl.h"

namespace {

const char* const kVariables[] = {"ZEL_NUM_THREADS", "ZEL_DOMAIN_NUM_THREADS", "ZEL_DYNAMIC",
                                  "OMP_NUM_THREADS", "Z_MPI_NUMBER_OF_MPI_PROCESSES_PER_NODE",
                                  "Z_MPI_THREAD_LEVEL"};

struct EnvCase {
    const char* name;
    std::vector<std::pair<const char*, std::string>> env;
    // "threads <ZEL_ALL> <ZEL_BLAS> <ZEL_FFT> <ZEL_ZVL> dynamic <d> omp <o>
    // mpi <procs> <level>;"
    const char* expected;
    void (*before)() = nullptr;  // calls made before the first query
};

std::ostream& operator<<(std::ostream& os, const EnvCase& c) { return os << c.name; }

void read_and_print(const EnvCase& c) {
    for (const char* v : kVariables) unsetenv(v);
    for (const auto& [name, value] : c.env) setenv(name, value.c_str(), 1);
    if (c.before) c.before();
    ZEL_Get_Dynamic();
    const zvl::ThreadSettings& t = zvl::thread_settings;
    std::fprintf(stderr, "threads %d %d %d %d dynamic %d omp %d mpi %d %d;\n",
                 int{t.domain_threads[0]}, int{t.domain_threads[1]}, int{t.domain_threads[2]},
                 int{t.domain_threads[3]}, int{t.dynamic}, int{t.omp_threads_env},
                 int{t.mpi_procs_per_node}, int{t.mpi_thread_level});
    _exit(0);
}

class ThreadEnvironment : public testing::TestWithParam<EnvCase> {};

TEST_P(ThreadEnvironment, Settings) {
    EXPECT_EXIT(read_and_print(GetParam()), testing::ExitedWithCode(0), GetParam().expected);
}

const std::string k255Digits = std::string(254, '0') + "7";
const std::string k256Digits = std::string(255, '0') + "7";

INSTANTIATE_TEST_SUITE_P(
    Threading, ThreadEnvironment,
    testing::Values(
        EnvCase{"Nothing", {}, "threads -1 -1 -1 -1 dynamic 1 omp -1 mpi -1 -1;"},
        // ZEL_NUM_THREADS: all digits a count, 0 nothing, anything else 1.
        EnvCase{"NumThreads", {{"ZEL_NUM_THREADS", "12"}}, "threads 12 -1 -1 -1 dynamic 1"},
        EnvCase{"NumThreadsLetters", {{"ZEL_NUM_THREADS", "abc"}}, "threads 1 -1 -1 -1 "},
        EnvCase{"NumThreadsZero", {{"ZEL_NUM_THREADS", "0"}}, "threads -1 -1 -1 -1 "},
        EnvCase{"NumThreadsLeadingBlank", {{"ZEL_NUM_THREADS", " 4"}}, "threads 1 -1 -1 -1 "},
        EnvCase{"NumThreadsTrailingBlank", {{"ZEL_NUM_THREADS", "4 "}}, "threads 1 -1 -1 -1 "},
        EnvCase{"NumThreads255Characters", {{"ZEL_NUM_THREADS", k255Digits}}, "threads 7 -1 "},
        EnvCase{"NumThreads256CharactersIsUnset", {{"ZEL_NUM_THREADS", k256Digits}},
                "threads -1 -1 "},
        // ZEL_DOMAIN_NUM_THREADS pairs.
        EnvCase{"DomainPairs", {{"ZEL_DOMAIN_NUM_THREADS", "ZEL_ALL=2, ZEL_ZVL=3"}},
                "threads 2 -1 -1 3 "},
        EnvCase{"DomainBareKeyIsOne", {{"ZEL_DOMAIN_NUM_THREADS", "ZEL_ZVL"}},
                "threads -1 -1 -1 1 "},
        EnvCase{"DomainBareNumberSetsNothing", {{"ZEL_DOMAIN_NUM_THREADS", "4"}},
                "threads -1 -1 -1 -1 "},
        EnvCase{"DomainFirstPairWins", {{"ZEL_DOMAIN_NUM_THREADS", "ZEL_ZVL=2,ZEL_ZVL=8"}},
                "threads -1 -1 -1 2 "},
        EnvCase{"DomainKeysAreCaseSensitive", {{"ZEL_DOMAIN_NUM_THREADS", "zel_zvl=2"}},
                "threads -1 -1 -1 -1 "},
        EnvCase{"DomainSemicolonStaysInKey", {{"ZEL_DOMAIN_NUM_THREADS", "ZEL_ALL;ZEL_BLAS=3"}},
                "threads -1 -1 -1 -1 "},
        EnvCase{"DomainBlankSeparatesKeyAndValue", {{"ZEL_DOMAIN_NUM_THREADS", "ZEL_ALL 4"}},
                "threads 4 -1 -1 -1 "},
        EnvCase{"DomainSeparatorsAndOddValues",
                {{"ZEL_DOMAIN_NUM_THREADS", "ZEL_BLAS=x2;ZEL_FFT==5:\"ZEL_ZVL=\""}},
                "threads -1 1 5 1 "},
        EnvCase{"DomainZeroCountSetsNothing", {{"ZEL_DOMAIN_NUM_THREADS", "ZEL_ALL=0,ZEL_ALL=3"}},
                "threads 3 -1 -1 -1 "},
        EnvCase{"NumThreadsWinsOverAllPair",
                {{"ZEL_NUM_THREADS", "6"}, {"ZEL_DOMAIN_NUM_THREADS", "ZEL_ALL=2,ZEL_FFT=2"}},
                "threads 6 -1 2 -1 "},
        // ZEL_DYNAMIC: only FALSE or false, blanks and quotes aside, turn it off.
        EnvCase{"DynamicMixedCaseStaysOn", {{"ZEL_DYNAMIC", "False"}}, "dynamic 1 "},
        EnvCase{"DynamicQuotedFalse", {{"ZEL_DYNAMIC", "'false'"}}, "dynamic 0 "},
        EnvCase{"DynamicUpperCase", {{"ZEL_DYNAMIC", " \"FALSE\" x"}}, "dynamic 0 "},
        EnvCase{"DynamicZeroStaysOn", {{"ZEL_DYNAMIC", "0"}}, "dynamic 1 "},
        EnvCase{"DynamicLongerWordStaysOn", {{"ZEL_DYNAMIC", "falsely"}}, "dynamic 1 "},
        // OMP_NUM_THREADS: only its being positive is used.
        EnvCase{"OmpCount", {{"OMP_NUM_THREADS", "3"}}, "omp 3 "},
        EnvCase{"OmpZero", {{"OMP_NUM_THREADS", "0"}}, "omp -1 "},
        EnvCase{"OmpList", {{"OMP_NUM_THREADS", "4,2"}}, "omp 1 "},
        // The MPI pair: a bad process count is ignored, a bad level is 0.
        EnvCase{"MpiPair",
                {{"Z_MPI_NUMBER_OF_MPI_PROCESSES_PER_NODE", "4"}, {"Z_MPI_THREAD_LEVEL", "2"}},
                "mpi 4 2;"},
        EnvCase{"MpiBadValues",
                {{"Z_MPI_NUMBER_OF_MPI_PROCESSES_PER_NODE", "4x"}, {"Z_MPI_THREAD_LEVEL", "x"}},
                "mpi -1 0;"},
        EnvCase{"MpiZeroAndHighLevel",
                {{"Z_MPI_NUMBER_OF_MPI_PROCESSES_PER_NODE", "0"}, {"Z_MPI_THREAD_LEVEL", "4"}},
                "mpi -1 0;"},
        // Calls before the first query win over the environment.
        EnvCase{"SetDynamicBeforeFirstUse", {{"ZEL_DYNAMIC", "false"}}, "dynamic 1 ",
                [] { ZEL_Set_Dynamic(7); }},
        EnvCase{"SetNumThreadsBeforeFirstUse", {{"ZEL_NUM_THREADS", "3"}}, "threads 5 -1 ",
                [] { ZEL_Set_Num_Threads(5); }},
        EnvCase{"DomainZeroShieldsFromEnvironment", {{"ZEL_DOMAIN_NUM_THREADS", "ZEL_ZVL=4"}},
                "threads -1 -1 -1 0 ", [] { ZEL_Domain_Set_Num_Threads(0, ZEL_ZVL); }}),
    [](const testing::TestParamInfo<EnvCase>& info) { return std::string(info.param.name); });

}  // namespace
