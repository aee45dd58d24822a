// libFuzzer target for the environment the library reads: ZEL_NUM_THREADS,
// ZEL_DOMAIN_NUM_THREADS, ZEL_DYNAMIC, OMP_NUM_THREADS, the two MPI
// variables and ZVL_CPU_TYPE. An input holds their values in the order of
// kVariables, separated by NUL bytes; a variable the input does not reach
// is unset.
//
// Each case runs twice. Here, for the coverage that steers libFuzzer, the
// thread settings go back to their state before first use, the variables
// are read again, and the results are held to the parsing rules and the
// thread-count bounds. Then the case runs in a fresh process: zvl_env_probe,
// started with these variables, meets them at its first call as a user's
// program would, forks what the library decided and checks what it
// computes. A probe that fails or dies fails the case.
//
// Not probed: a ZVL_CPU_TYPE whose first byte is below the digit 0 (but for
// '/', which reads as no override) or has the high bit set, which leaves the
// process without kernels and is fatal by design; a cpu type this processor
// cannot run; and an OMP_NUM_THREADS under which the OpenMP runtime alone
// does not start (zvl_omp_probe tells).
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "base/cpu_type.h"
#include "tests/common/rows.h"
#include "threading/settings.h"
#include "threading/topology.h"

extern char** environ;

namespace {

const char* const kVariables[] = {
    "ZEL_NUM_THREADS", "ZEL_DOMAIN_NUM_THREADS", "ZEL_DYNAMIC", "OMP_NUM_THREADS",
    "ZVL_CPU_TYPE", "Z_MPI_NUMBER_OF_MPI_PROCESSES_PER_NODE", "Z_MPI_THREAD_LEVEL",
};
constexpr int kCount = sizeof kVariables / sizeof kVariables[0];
constexpr int kOmpThreads = 3;  // indices in kVariables
constexpr int kCpuType = 4;

struct Case {
    bool set[kCount] = {};
    std::string value[kCount];
};

Case parse(const uint8_t* data, size_t size) {
    Case c;
    int v = 0;
    size_t start = 0;
    for (size_t i = 0; i <= size && v < kCount; ++i) {
        if (i == size || data[i] == 0) {
            c.set[v] = true;
            c.value[v].assign(reinterpret_cast<const char*>(data) + start, i - start);
            ++v;
            start = i + 1;
        }
    }
    return c;
}

[[noreturn]] void fail(const char* what, const Case& c) {
    std::fprintf(stderr, "env fuzz: %s\n", what);
    for (int v = 0; v < kCount; ++v)
        if (c.set[v]) std::fprintf(stderr, "  %s=[%s]\n", kVariables[v], c.value[v].c_str());
    std::abort();
}

// A machine whose affinity cannot be read: the core count stays 1, and no
// walk moves this process between processors on every case.
bool no_affinity(uint64_t*, uint64_t*) { return false; }
const zvl::TopologyOps kNoAffinity = {
    zvl::kSystemTopology.cpuid, no_affinity, zvl::kSystemTopology.set_process_affinity,
    zvl::kSystemTopology.set_thread_affinity, zvl::kSystemTopology.yield,
    zvl::kSystemTopology.num_procs};

void reset_settings() {
    zvl::ThreadSettings& t = zvl::thread_settings;
    t.env_pending = 1;
    for (auto& d : t.domain_threads) d = -1;
    t.dynamic = -1;
    t.omp_threads_env = -1;
    t.mpi_procs_per_node = -1;
    t.mpi_thread_level = -1;
    t.physical_cores = 1;
    t.logical_processors = 1;
    t.thread_cap_override = -1;
}

// What the library sees of a value: unset when empty or 256 characters or
// more (a NUL inside cannot occur in the environment).
bool seen(const Case& c, int v) { return c.set[v] && !c.value[v].empty() && c.value[v].size() < 256; }

// ZEL_NUM_THREADS by its rule: all digits, that number (saturated; 0 sets
// nothing); anything else, 1.
int32_t expected_all_threads(const Case& c) {
    if (!seen(c, 0)) return -1;
    int64_t v = 0;
    for (const char ch : c.value[0]) {
        if (ch < '0' || ch > '9') return 1;
        v = v * 10 + (ch - '0');
        if (v > INT32_MAX) v = INT32_MAX;
    }
    return v == 0 ? -1 : static_cast<int32_t>(v);
}

void check_in_process(const Case& c) {
    for (int v = 0; v < kCount; ++v) {
        if (c.set[v])
            setenv(kVariables[v], c.value[v].c_str(), 1);
        else
            unsetenv(kVariables[v]);
    }
    reset_settings();
    zvl::topology_ops = &kNoAffinity;
    zvl::ensure_thread_environment();

    const zvl::ThreadSettings& t = zvl::thread_settings;
    // ZEL_NUM_THREADS is read first, so a ZEL_ALL pair cannot come before it.
    const int32_t all = expected_all_threads(c);
    if (all != -1 && t.domain_threads[0] != all) fail("ZEL_NUM_THREADS against its rule", c);
    for (const auto& d : t.domain_threads)
        if (d != -1 && d < 1) fail("a domain count below 1", c);
    if (t.dynamic != 0 && t.dynamic != 1) fail("dynamic neither 0 nor 1", c);
    if (t.omp_threads_env != -1 && t.omp_threads_env < 1) fail("OMP_NUM_THREADS below 1", c);
    if (t.mpi_procs_per_node != -1 && t.mpi_procs_per_node < 1) fail("MPI processes below 1", c);
    if (t.mpi_thread_level < -1 || t.mpi_thread_level > 3) fail("MPI level out of range", c);
    for (int d = -1; d <= 4; ++d) {
        const int32_t n = zvl::decide_thread_count(d);
        if (n < 1 || n > zvl::kMaxTeam) fail("thread count out of range", c);
    }

    // The cpu type override: the first byte less the digit 0, if at most 5.
    const std::string& cpu = c.value[kCpuType];
    const uint32_t len = seen(c, kCpuType) ? static_cast<uint32_t>(cpu.size()) : 0;
    const int32_t want = len == 0 ? -1 : static_cast<int8_t>(cpu[0]) - '0';
    if (zvl::cpu_override(cpu.c_str(), len) != (want > 5 ? -1 : want))
        fail("ZVL_CPU_TYPE against its rule", c);
}

// Whether the probe can run the case: not when the cpu type override is
// fatal by design or names a type this processor lacks. The library reads
// the override into 32 bytes; a longer value is no override.
bool probed(const Case& c) {
    if (!c.set[kCpuType] || c.value[kCpuType].empty() || c.value[kCpuType].size() >= 32)
        return true;
    // '/' gives -1, which reads as no override.
    const int32_t type = static_cast<int8_t>(c.value[kCpuType][0]) - '0';
    if (type < -1) return false;
    return type < 0 || type > 5 || zvl_test::cpu_runs(type);
}

// The environment of a process for the case: this one's, with the case's
// variables in place of any of ours.
std::vector<std::string> environment(const Case& c) {
    std::vector<std::string> env;
    for (char** e = environ; *e != nullptr; ++e) {
        bool ours = false;
        for (const char* v : kVariables) {
            const size_t k = std::strlen(v);
            ours = ours || (std::strncmp(*e, v, k) == 0 && (*e)[k] == '=');
        }
        if (!ours) env.emplace_back(*e);
    }
    for (int v = 0; v < kCount; ++v)
        if (c.set[v]) env.push_back(std::string(kVariables[v]) + "=" + c.value[v]);
    return env;
}

enum class Outcome { Passed, Failed, Died, Hung };

// Runs `program` under the case's environment for at most `seconds`;
// `quiet` sends its output to /dev/null.
Outcome run(const char* program, const Case& c, int seconds, bool quiet) {
    std::vector<std::string> env = environment(c);
    std::vector<char*> envp;
    for (std::string& s : env) envp.push_back(s.data());
    envp.push_back(nullptr);
    std::string path = program;
    char* argv[] = {path.data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (quiet) {
        posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_adddup2(&actions, 1, 2);
    }
    pid_t pid;
    const int started = posix_spawn(&pid, program, &actions, nullptr, argv, envp.data());
    posix_spawn_file_actions_destroy(&actions);
    if (started != 0) fail("cannot start a probe", c);
    int status = 0;
    for (int waited = 0; waitpid(pid, &status, WNOHANG) == 0; waited += 10) {
        if (waited >= seconds * 1000) {
            kill(pid, SIGKILL);
            waitpid(pid, &status, 0);
            return Outcome::Hung;
        }
        usleep(10000);
    }
    if (WIFSIGNALED(status)) return Outcome::Died;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? Outcome::Passed : Outcome::Failed;
}

// A list of counts from 1 to 999999, such as 4 or 4,2, which the runtime
// takes as every runtime does.
bool plain_counts(const std::string& v) {
    size_t start = 0;
    for (;;) {
        const size_t end = std::min(v.find(',', start), v.size());
        if (end == start || end - start > 6 || v[start] == '0') return false;
        for (size_t i = start; i < end; ++i)
            if (v[i] < '0' || v[i] > '9') return false;
        if (end == v.size()) return true;
        start = end + 1;
    }
}

// Anything else is tried on the runtime alone first.
bool runtime_starts(const Case& c) {
    if (!c.set[kOmpThreads] || plain_counts(c.value[kOmpThreads])) return true;
    return run(ZVL_OMP_PROBE, c, 2, true) == Outcome::Passed;
}

void run_probe(const Case& c) {
    switch (run(ZVL_ENV_PROBE, c, 120, false)) {
        case Outcome::Passed: return;
        case Outcome::Failed: fail("the probe failed", c);
        case Outcome::Died: fail("the probe died of a signal", c);
        case Outcome::Hung: fail("the probe hung", c);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const Case c = parse(data, size);
    check_in_process(c);
    if (probed(c) && runtime_starts(c)) run_probe(c);
    return 0;
}
