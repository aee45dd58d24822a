// The error pipeline: what happens to one exceptional element a kernel
// reports. In order: the status is stored; the ignore action stops there;
// the record is filled (index rebased by the array base, kernel name, the
// element's values); the callback may replace the results or take over;
// then errno, the printed message and value lines, and the raised
// exception, each as the mode word asks at that moment; last the record's
// results are written back, second result first.
#include <cerrno>
#include <cstddef>
#include <cstring>

#include "base/bits.h"
#include "platform/os.h"
#include "state/state.h"

namespace zvl {
namespace {

int errno_of(int32_t status) {
    switch (status) {
        case -2: return 13;
        case -1: return 22;
        case 0: return 0;
        case 1: return 33;
        case 2:
        case 3:
        case 4: return 34;
        default: return 14;
    }
}

uint32_t message_of(int32_t status) {
    switch (status) {
        case -2: return 736;
        case -1: return 735;
        case 1: return 737;
        case 2: return 738;
        case 3: return 739;
        case 4: return 740;
        default: return 741;
    }
}

// Copies up to 64 characters of the name and a NUL after them. A name of
// exactly 64 characters puts its NUL on the first byte of name_len, which
// the count then overwrites.
void copy_name(ZVLErrorRecord& rec, const char* name) {
    int32_t len = 0;
    while (len < 64 && name[len] != '\0') ++len;
    unsigned char* base = reinterpret_cast<unsigned char*>(&rec) + offsetof(ZVLErrorRecord, name);
    std::memcpy(base, name, static_cast<size_t>(len));
    base[len] = 0;
    rec.name_len = len;
}

void print_status(const ZVLErrorRecord& rec) {
    os::touch_error_stream();
    if (rec.status == 0) return;  // no message for "no error"
    if (rec.status == -1)
        print_message(1, 735, 2, rec.name, rec.index);
    else
        print_message(1, message_of(rec.status), 1, rec.name);
    if (rec.status == -1 || rec.status == -2) return;
    // A NaN is unequal to itself, so a NaN argument counts as two inputs.
    const bool one_in = rec.a1 == rec.a2 || rec.a2 == 0.0;
    const bool one_out = rec.r1 == rec.r2 || rec.r2 == 0.0;
    const uint32_t first = one_in ? (one_out ? 742 : 744) : (one_out ? 747 : 750);
    const double values[4] = {rec.a1, rec.a2, rec.r1, rec.r2};
    const bool shown[4] = {true, !one_in, true, !one_out};
    uint32_t id = first;
    for (int k = 0; k < 4; ++k)
        if (shown[k]) print_message(1, id++, 2, rec.index, values[k]);
}

void raise_exception(int32_t status) {
    volatile double x, y;
    switch (status) {
        case 1: x = 0.0; y = 0.0; break;
        case 2: x = 1.0; y = 0.0; break;
        case 3: x = y = Fp64::max_finite; break;
        case 4: x = y = from_bits(0x0010000000000001); break;  // one unit above the smallest normal
        default: return;
    }
    volatile double scratch = status <= 2 ? x / y : x * y;
    (void)scratch;
}

}  // namespace

template <int Cpu>
int32_t Services<Cpu>::error_pipeline(int32_t status, int32_t index, const double* a1,
                                      const double* a2, double* r1, double* r2,
                                      const char* name) {
    ThreadContext* c = context();
    c->status = status;
    if ((get_mode() & kErrorActionMask) == 0x100) return 0;

    ZVLErrorRecord rec;
    rec.status = status;
    rec.index = index;
    if (const void* base = c->array_base) {
        const intptr_t bytes = reinterpret_cast<intptr_t>(a1) - reinterpret_cast<intptr_t>(base);
        rec.index += static_cast<int32_t>(bytes >> 3);
    }
    copy_name(rec, name);
    const bool has_values = static_cast<uint32_t>(status) < 0xFFFFFFFEu;
    if (has_values) {
        rec.a1 = a1[index];
        rec.a2 = a2[index];
        rec.r1 = r1[index];
        rec.r2 = r2[index];
    }

    if ((get_mode() & 0xF000) && c->callback != nullptr) {
        const int32_t rc = c->callback(&rec);
        if (rc != 0) return rc;
    }

    if (get_mode() & 0xF00) {
        if (get_mode() & 0x200) errno = errno_of(status);
        if (get_mode() & 0x400) print_status(rec);
        if (get_mode() & 0x800) raise_exception(status);
    }

    if (!has_values) return 0;
    r2[index] = rec.r2;
    r1[index] = rec.r1;
    return 0;
}

template int32_t Services<0>::error_pipeline(int32_t, int32_t, const double*, const double*, double*, double*, const char*);
template int32_t Services<1>::error_pipeline(int32_t, int32_t, const double*, const double*, double*, double*, const char*);
template int32_t Services<2>::error_pipeline(int32_t, int32_t, const double*, const double*, double*, double*, const char*);
template int32_t Services<3>::error_pipeline(int32_t, int32_t, const double*, const double*, double*, double*, const char*);
template int32_t Services<4>::error_pipeline(int32_t, int32_t, const double*, const double*, double*, double*, const char*);
template int32_t Services<5>::error_pipeline(int32_t, int32_t, const double*, const double*, double*, double*, const char*);

}  // namespace zvl
