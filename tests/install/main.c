/* Uses an installed Pixora from C: the headers, the library, the mode
   setter and one filter. Exits non-zero on any wrong result. */
#include <pixora.h>

#include <stdio.h>
#include <string.h>

#define W 8
#define H 8

int main(void) {
    uint8_t src[W * H], dst[W * H];
    int failures = 0;

    char version[8] = {0};

    if (pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE) != 0) {
        printf("pixora install check: the mode setter refused PIXORA_OP_CPU_PERFORMANCE\n");
        ++failures;
    }
    pxrGetVersion(version, sizeof version);
    if (strcmp(version, "1.7.1") != 0) {
        printf("pixora install check: version \"%s\"\n", version);
        ++failures;
    }

    /* An impulse of 160 at (3, 3): the 3x3 Gaussian spreads it as
       [1 2 1] x [1 2 1] / 16, so 40 at the centre, 20 beside it, 10 diagonally. */
    memset(src, 0, sizeof src);
    memset(dst, 0xAB, sizeof dst);
    src[3 * W + 3] = 160;
    pxrFilterGaussian3x3u8_v2(src, W, H, W, dst, W, 1);
    if (dst[3 * W + 3] != 40 || dst[3 * W + 4] != 20 || dst[2 * W + 3] != 20 || dst[2 * W + 2] != 10 ||
        dst[0] != 0 || dst[5 * W + 5] != 0) {
        printf("pixora install check: the 3x3 Gaussian gave %u %u %u %u\n", dst[3 * W + 3], dst[3 * W + 4],
               dst[2 * W + 3], dst[2 * W + 2]);
        ++failures;
    }

    /* A bad argument is refused and the output left alone. */
    memset(dst, 0xAB, sizeof dst);
    if (pxrFilterGaussian3x3u8_v3(src, W, H, W, dst, W, (pxrBorderType)3, 0) != PIXORA_STATUS_BAD_PARAM ||
        dst[0] != 0xAB) {
        printf("pixora install check: border type 3 was not refused\n");
        ++failures;
    }

    printf("pixora install check: %s\n", failures ? "FAILED" : "ok");
    return failures ? 1 : 0;
}
