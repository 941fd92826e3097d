/*
 * Loads a logo into the printer; FILE is a BMP file of one bit per pixel, in black and white.
 *
 *     load_logo ADDRESS FILE
 *
 * It ends with 0, or with 1 when the logo was not loaded.
 */
#include "telvofm.h"

#include <stdio.h>

enum
{
    device = 1
};

static int load(const char* file)
{
    int code = prepareGraphicHeader(1, file); /* keeps it as picture 1 */
    if (code == 0) {
        code = loadGHNV(device, 1, 5, 0, 0, 0, 0, 0, 0); /* one picture, five units from the left */
    }
    return code;
}

int main(int count, char** arguments)
{
    if (count != 3) {
        fputs("usage: load_logo ADDRESS FILE\n", stderr);
        return 1;
    }
    int code = openFM(arguments[1]);
    if (code == 0) {
        code = load(arguments[2]);
    }
    closeFM(); /* also after an open that has failed */
    if (code != 0) {
        fprintf(stderr, "the logo is not loaded: code %d\n", code);
    }
    return code != 0;
}
