// The message printer and the front-ends' parameter-error reporter.
//
// Texts come from the localized catalogue when one is installed (tried once
// per process, at the first message) and from the built-in table otherwise.
// A catalogue text serves only when its conversions are the built-in text's,
// since the final text is used as a format once more. Output goes to
// standard output, flushed after each message.
//
// No lock: the catalogue flags are the only process-wide state, and each
// call formats into buffers on its own stack, so a text is never rewritten
// by another thread while it serves as a format. Concurrent messages can
// still interleave on the stream, line by line.
#include <array>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/os.h"
#include "state/state.h"

namespace zvl {
namespace {

constexpr uint32_t kTableSize = 1080;
constexpr int kLineBuffer = 512;

struct Message {
    uint32_t id;
    const char* text;
};

constexpr const char* kNoMemory = "ZEL INTERNAL ERROR: Not enough work memory in function %s";

// The reachable entries of the table; ids in between have no text here.
constexpr Message kMessages[] = {
    {0, "\n"},
    {6, "ZEL ERROR: Parameter %d was incorrect on entry to %s"},
    {7, "ZEL INTERNAL ERROR: Condition %d detected in function %s"},
    {8, kNoMemory},
    {9, "ZEL ERROR: Incompatible optional parameters on entry to %s"},
    {735, "Error (ZVL_STATUS_BADSIZE) in %s: array size %d is not positive."},
    {736, "Error (ZVL_STATUS_BADMEM) in %s: NULL pointer is passed."},
    {737, "Error (ZVL_STATUS_ERRDOM) in %s: argument is out of domain."},
    {738, "Error (ZVL_STATUS_SING) in %s: argument caused singularity."},
    {739, "Error (ZVL_STATUS_OVERFLOW) in %s: argument caused overflow."},
    {740, "Error (ZVL_STATUS_UNDERFLOW) in %s: argument caused underflow."},
    {741, "Unknown error in %s."},
    {742, "a(%d)=%g"},
    {743, "r(%d)=%g"},
    {744, "a(%d)=%g"},
    {745, "y(%d)=%g"},
    {746, "z(%d)=%g"},
    {747, "a(%d)=%g"},
    {748, "b(%d)=%g"},
    {749, "y(%d)=%g"},
    {750, "a(%d)=%g"},
    {751, "b(%d)=%g"},
    {752, "y(%d)=%g"},
    {753, "z(%d)=%g"},
    {760, "ZEL FATAL ERROR: memory allocation error."},
    {1079, kNoMemory},
};

constexpr std::array<const char*, kTableSize> make_table() {
    std::array<const char*, kTableSize> t{};
    for (const Message& m : kMessages) t[m.id] = m.text;
    return t;
}
constexpr std::array<const char*, kTableSize> kTable = make_table();

std::atomic<bool> g_first_use{true};
std::atomic<bool> g_no_catalog{true};
std::atomic<void*> g_catalog{nullptr};

// The buffers one message is built in.
struct Buffers {
    char catalog[4096];  // the catalogue's text as it came
    char line[kLineBuffer];  // ... without its CR LF
    char format[1024];  // the formatted message
};

const char* built_in(uint32_t id) {
    const char* t = id < kTableSize ? kTable[id] : nullptr;
    return t ? t : "";
}

// The kind of argument the next conversion in p takes, moving p past it: 'd'
// an int, 's' a string, 'g' a double, '%' none (a percent sign), 0 at the end
// of the text, and '?' for what no built-in text holds (an argument width, a
// length modifier, %n, %p, positions ...). Flags, a width and a precision in
// digits are allowed.
char next_conversion(const char*& p) {
    while (*p != '\0' && *p != '%') ++p;
    if (*p == '\0') return 0;
    ++p;
    while (*p != '\0' && std::strchr("-+ #0123456789.", *p) != nullptr) ++p;
    const char c = *p;
    if (c != '\0') ++p;
    switch (c) {
        case 'd': case 'i': return 'd';
        case 's': return 's';
        case 'e': case 'E': case 'f': case 'F': case 'g': case 'G': case 'a': case 'A': return 'g';
        case '%': return '%';
        default: return '?';
    }
}

// Whether text takes the arguments of model, in the same order. The built-in
// texts hold no percent sign of their own, so a catalogue text with one is
// refused: formatted once, it would leave a conversion for the final print.
bool same_conversions(const char* text, const char* model) {
    for (;;) {
        const char k = next_conversion(text);
        if (k == '?' || k != next_conversion(model)) return false;
        if (k == 0) return true;
    }
}

// The catalogue's text for id, or the built-in one. A catalogue text that
// ends in carriage return and line feed loses them.
const char* message_text(uint32_t id, Buffers& b) {
    const char* text = built_in(id);
    if (g_no_catalog.load(std::memory_order_acquire)) return text;
    void* catalog = g_catalog.load(std::memory_order_relaxed);
    const int32_t len = os::catalog_text(catalog, id, b.catalog, sizeof b.catalog);
    if (len <= 0) return text;
    const char* found = b.catalog;
    if (len > 1 && b.catalog[len - 2] == '\r' && b.catalog[len - 1] == '\n') {
        size_t keep = static_cast<size_t>(len - 2);
        if (keep > kLineBuffer - 1) keep = kLineBuffer - 1;
        std::memcpy(b.line, b.catalog, keep);
        b.line[keep] = '\0';
        found = b.line;
    }
    return same_conversions(found, text) ? found : text;
}

}  // namespace

void print_message(int32_t severity, uint32_t id, int32_t count, ...) {
    (void)severity;  // 0 from the reporter, 1 from the others; both alike
    if (id == 0) {
        std::fputs("\n", stdout);
        return;
    }
    // One thread looks for the catalogue; the others meanwhile print the
    // built-in texts.
    if (g_first_use.exchange(false, std::memory_order_relaxed)) {
        if (void* catalog = os::catalog_open()) {
            g_catalog.store(catalog, std::memory_order_relaxed);
            g_no_catalog.store(false, std::memory_order_release);
        }
    }
    Buffers b;
    const char* text = message_text(id, b);
    if (count > 0) {
        va_list args;
        va_start(args, count);
        std::vsnprintf(b.format, sizeof b.format, text, args);
        va_end(args);
        text = b.format;
    }
    const int32_t len = static_cast<int32_t>(std::strlen(text)) - 1;
    if (len > kLineBuffer) {
        std::printf("\nZEL INTERNAL ERROR: message buffer overflow.");
        std::fflush(nullptr);
        std::printf("\n       Message N %d   Lenght: %d   Buffer size: %d\n",
                    static_cast<int>(id), len, kLineBuffer);
        std::fflush(nullptr);
        std::exit(8);
    }
    // The final text is used as a format once more, with no arguments: only
    // names and numbers go into these texts, and a catalogue text has no
    // conversion the built-in one lacks, so it holds none.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
    std::printf(text);
#pragma GCC diagnostic pop
    std::fputs("\n", stdout);
    std::fflush(nullptr);
}

void report_parameter_error(const char* name, const int32_t* info, int32_t len) {
    char cut[21];
    int32_t k = 0;
    while (k < len && k < 20 && name[k] != '\0') {
        cut[k] = name[k];
        ++k;
    }
    cut[k] = '\0';
    print_message(0, 0, 0);
    const int32_t v = *info;
    if (v == 1000)
        print_message(0, 8, 1, cut);
    else if (v == 1001)
        print_message(0, 9, 1, cut);
    else if (v == 1079)
        print_message(0, 1079, 1, cut);
    else if (v > 0)
        print_message(0, 6, 2, v, cut);
    else
        print_message(0, 7, 2, -v, cut);
}

}  // namespace zvl
