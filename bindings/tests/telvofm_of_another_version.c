/*
 * The library with another version of its interface, for the tests of what a layer says then: all but the
 * version is the library's own, which is found behind this.
 */
#include "telvofm.h"

int getVersion(void)
{
    return 105;
}
