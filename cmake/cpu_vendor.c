/* Prints the vendor identification of the processor it runs on: the twelve
 * characters of cpuid leaf 0, EBX, EDX, ECX in that order. Built and run on
 * the machine that configures the build (cmake/zvl_cpu_vendor.cmake). */
#include <cpuid.h>
#include <stdio.h>
#include <string.h>

int main(void) {
    unsigned int eax, regs[3];
    char id[13];
    if (!__get_cpuid(0, &eax, &regs[0], &regs[2], &regs[1])) return 1;
    memcpy(id, regs, 12);
    id[12] = '\0';
    printf("%s", id);
    return 0;
}
