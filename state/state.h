// Per-thread state and error service: the thread context, the mode and
// status services, the error pipeline, the message printer and load-time
// work.
//
// The services exist once per cpu type (Services<0> .. Services<5>): the
// kernels of a cpu type call their own copy directly. Code that is not tied to
// a cpu type goes through the dispatchers below, which bind the live copy on
// first use.
#pragma once

#include <cstddef>
#include <cstdint>

#include "zvl.h"

namespace zvl {

// The per-thread record. Allocated as a 32-byte block from the private heap
// in a loaded library; plain thread-local variables in a program.
struct ThreadContext {
    uint32_t mode;
    int32_t status;
    ZVLErrorCallback callback;
    const void* array_base;  // deliberately left unwritten at creation
};

constexpr uint32_t kModeDefault = 0x1A02;
constexpr uint32_t kAccuracyMask = 0xF;
constexpr uint32_t kErrorActionMask = 0xFF00;
constexpr uint32_t kFpMask = 0x30000;
constexpr uint32_t kCallbackBit = 0x1000;

template <int Cpu>
struct Services {
    // The calling thread's context as this copy reaches it.
    static ThreadContext* context();

    static uint32_t get_mode();
    static uint32_t set_mode(uint32_t mode);
    static int32_t get_status();
    static int32_t set_status(int32_t status);
    static int32_t clear_status();
    static ZVLErrorCallback get_callback();
    static ZVLErrorCallback set_callback(ZVLErrorCallback f);
    static ZVLErrorCallback clear_callback();
    static const void* set_array_base(const void* base);

    // Reports one exceptional element. The kernel has stored its result to
    // r1[index] (and r2[index]) before the call and takes what the element
    // holds afterwards. One-input kernels pass a1 == a2, one-output kernels
    // r1 == r2. Returns the callback's value when it stopped the handling.
    static int32_t error_pipeline(int32_t status, int32_t index, const double* a1,
                                  const double* a2, double* r1, double* r2,
                                  const char* name);
};

extern template struct Services<0>;
extern template struct Services<1>;
extern template struct Services<2>;
extern template struct Services<3>;
extern template struct Services<4>;
extern template struct Services<5>;

// Dispatchers: the live cpu type's copy of each service.
uint32_t get_mode();
uint32_t set_mode(uint32_t mode);
int32_t get_status();
int32_t set_status(int32_t status);
int32_t clear_status();
ZVLErrorCallback get_callback();
ZVLErrorCallback set_callback(ZVLErrorCallback f);
ZVLErrorCallback clear_callback();
const void* set_array_base(const void* base);

// The context of the calling thread in the library case; terminates the
// process (message 760, exit code 1) when none can be had.
ThreadContext* library_context();

// 1 for the library case, 0 for the program case; cached.
int module_kind();

// Message printer: severity is 0 or 1 and selects nothing; id 0 prints a
// line feed only; count > 0 formats the text with the arguments.
void print_message(int32_t severity, uint32_t id, int32_t count, ...);

// The front-ends' reporter: name need not be terminated, info is the bad
// argument's position (or one of the special values 1000, 1001, 1079, <= 0).
void report_parameter_error(const char* name, const int32_t* info, int32_t len);

// Load-time work, called by the platform's attach and detach hooks. A
// platform that has already cleared the slot when it reports a thread's end
// (a POSIX key's destructor) passes the context it held as `block`.
void process_attach();
void thread_detach(void* block = nullptr);
void process_detach();

// The four allocator slots the attach hook fills: allocate, allocate zeroed,
// reallocate, release.
struct AllocatorSlots {
    void* (*allocate)(size_t);
    void* (*allocate_zeroed)(size_t, size_t);
    void* (*reallocate)(void*, size_t);
    void (*release)(void*);
};
extern AllocatorSlots allocator_slots;

}  // namespace zvl
