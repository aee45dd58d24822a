/* zvl.h carries the version of the build it came with. */
#include <stdio.h>
#include <string.h>

#include <zvl.h>

#if ZVL_VERSION_MAJOR != EXPECT_MAJOR || ZVL_VERSION_MINOR != EXPECT_MINOR || \
    ZVL_VERSION_PATCH != EXPECT_PATCH
#error "zvl.h does not carry the project's version"
#endif
#if ZVL_VERSION != EXPECT_MAJOR * 10000 + EXPECT_MINOR * 100 + EXPECT_PATCH
#error "ZVL_VERSION does not follow its parts"
#endif

int main(void) {
    printf("zvl %s\n", ZVL_VERSION_STRING);
    return strcmp(ZVL_VERSION_STRING, EXPECT_STRING) != 0;
}
